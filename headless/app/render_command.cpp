// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "headless/app/export_outcome.h"
#include "headless/app/export_settings.h"
#include "headless/app/texture_report.h"
#include "headless/app/time_text.h"
#include "headless/model/warnings.h"

namespace headless {

namespace {

constexpr int32_t RENDER_WITH_QUENZA = 1023920;

/// Where the export will lie; the quick render folder where only the document knows.
std::string exportFolder(const Arguments& arguments) {
    if (const std::optional<std::string> file = arguments.value("--to")) {
        return folderOf(*file);
    }
    const std::filesystem::path appData =
        Quenza::nativePath(Quenza::PlatformUtils::getAppDataDirectory().view());
    return Quenza::utf8Path(appData / "Quenza for Cinema 4D" / "quickrender");
}

/// The folder that the export needs, to be kept until its end.
std::optional<OutputFolder> applyArguments(Host& host, const Arguments& arguments) {
    Document& document = *host.document();
    std::optional<OutputFolder> folder;
    if (arguments.value("--frame") && arguments.value("--frames")) {
        throw UsageError("--frame and --frames exclude each other");
    }
    if (const std::optional<std::string> frame = arguments.value("--frame")) {
        exportFrame(document, parseFrame(*frame));
    }
    if (const std::optional<std::string> file = arguments.value("--to")) {
        folder.emplace(exportTo(requireRenderSettings(document), *file));
    }
    if (const std::optional<std::string> frames = arguments.value("--frames")) {
        exportFrames(document, requireRenderSettings(document), parseFrameRange(*frames));
    }
    applyRenderSettings(host, arguments.values("--set"));
    if (const std::optional<std::string> seconds = arguments.value("--cancel-after")) {
        host.user().addDialogActions({{parseTime(*seconds), UserAction::Kind::close, 0, GeData()}});
    }
    return folder;
}

} // namespace

ExitStatus renderCommand(Host& host, const Arguments& arguments) {
    openDocumentFile(host, arguments.operands.front(), exportFolder(arguments));
    const std::optional<OutputFolder> folder = applyArguments(host, arguments);
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
