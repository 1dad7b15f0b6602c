// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include <charconv>

#include "foundation/platform.h"
#include "headless/app/export_outcome.h"
#include "headless/app/export_settings.h"
#include "headless/app/parameter_setting.h"
#include "headless/app/texture_report.h"
#include "headless/model/handles.h"
#include "headless/model/warnings.h"

namespace headless {

namespace {

constexpr int32_t RENDER_WITH_QUENZA = 1023920;

std::chrono::milliseconds parseSeconds(const std::string& text) {
    double seconds = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, seconds);
    constexpr double LONGEST = 1e6;
    if (error != std::errc() || stop != end || !(seconds >= 0.0) || seconds > LONGEST) {
        throw UsageError("\"" + text + "\" is no time in seconds");
    }
    return std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000.0));
}

/// Where the export will lie; the quick render folder where only the document knows.
std::string exportFolder(const Arguments& arguments) {
    if (const std::optional<std::string> file = arguments.value("--to")) {
        return folderOf(*file);
    }
    const std::filesystem::path appData =
        platform::pathFromUtf8(Quenza::PlatformUtils::getAppDataDirectory().view());
    return platform::utf8FromPath(appData / "Quenza for Cinema 4D" / "quickrender");
}

void applyArguments(Host& host, const Arguments& arguments) {
    Document& document = *host.document();
    if (arguments.value("--frame") && arguments.value("--frames")) {
        throw UsageError("--frame and --frames exclude each other");
    }
    if (const std::optional<std::string> frame = arguments.value("--frame")) {
        exportFrame(document, parseFrame(*frame));
    }
    if (const std::optional<std::string> file = arguments.value("--to")) {
        exportTo(requireRenderSettings(document), *file);
    }
    if (const std::optional<std::string> frames = arguments.value("--frames")) {
        exportFrames(document, requireRenderSettings(document), parseFrameRange(*frames));
    }
    for (const std::string& setting : arguments.values("--set")) {
        VideoPost& settings = requireRenderSettings(document);
        const resources::Description* const description = host.descriptionOf(RENDER_SETTINGS);
        if (!description) {
            throw HostError("The parameters of the render settings can't be looked up");
        }
        applySetting(*toHost(&settings), *description, setting);
    }
    if (const std::optional<std::string> seconds = arguments.value("--cancel-after")) {
        host.user().addDialogActions({{parseSeconds(*seconds), UserAction::Kind::close, 0, GeData()}});
    }
}

} // namespace

ExitStatus renderCommand(Host& host, const Arguments& arguments) {
    openDocumentFile(host, arguments.operands.front(), exportFolder(arguments));
    applyArguments(host, arguments);
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    const size_t linesBefore = host.console().lines().size();
    const size_t interactionsBefore = host.user().interactions().size();
    const TextureWarningsHeld untilTheSummary;
    const bool opened = host.executeCommand(RENDER_WITH_QUENZA);
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    const std::vector<std::string> lines = host.console().lines();
    const ExportOutcome outcome =
        judgeExport(opened, std::span(lines).subspan(linesBefore),
                    std::span(host.user().interactions()).subspan(interactionsBefore));
    if (outcome.failure) {
        throw HostError(*outcome.failure);
    }
    for (const std::string& fault : textureFaults(*host.document())) {
        host.errors().print(fault);
    }
    std::puts(summary(outcome).c_str());
    return ExitStatus::done;
}

} // namespace headless
