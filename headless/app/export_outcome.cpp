// SPDX-License-Identifier: MIT
#include "headless/app/export_outcome.h"

#include <algorithm>
#include <string_view>

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "headless/runtime/files.h"

namespace headless {

namespace {

constexpr std::string_view SAVED = "Saved scene to: ";
constexpr std::string_view FAILED = "Export failed:";
constexpr std::string_view UNQUOTABLE = "The renderer can't be started: ";
constexpr std::string_view FRAME = "_frame";
#ifdef _WIN32
constexpr bool HAS_REGISTRY = true;
#else
constexpr bool HAS_REGISTRY = false;
#endif
constexpr const char* RENDERER_KEYS = "Software\\Tessaly Works\\";

/// The path in a console line. The plug-in puts a backslash before the file's name on every platform.
std::string pathOf(std::string text) {
    const size_t backslash = text.rfind('\\');
    if (backslash != std::string::npos && !files::isFile(Quenza::nativePath(text))) {
        text[backslash] = static_cast<char>(std::filesystem::path::preferred_separator);
    }
    return text;
}

std::string oneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// The plug-in puts a period behind the reason of a failure, whether or not it has one.
std::string withOnePeriod(std::string text) {
    if (text.ends_with("..")) {
        text.pop_back();
    }
    return text;
}

bool tellsOfNoStart(const std::string& line) {
    return line.starts_with(UNQUOTABLE);
}

/// The places that tell the plug-in where the renderer lies, and what the registry says.
std::string rendererPlaces() {
    const std::filesystem::path appData =
        Quenza::nativePath(Quenza::PlatformUtils::getAppDataDirectory().view());
    std::string places = "InstallDirectory of ";
    for (const char* const edition : {"Quenza Renderer", "Quenza RT"}) {
        const std::string key = std::string(RENDERER_KEYS) + edition;
        const std::string folder =
            Quenza::PlatformUtils::readRegistryText(key, "InstallDirectory").toStdString();
        places += HAS_REGISTRY ? "HKEY_CURRENT_USER\\" + key : "[" + key + "]";
        places += folder.empty() ? " (not set), " : " (\"" + folder + "\"), ";
    }
    if (!HAS_REGISTRY) {
        places.replace(places.size() - 2, 2, " in " + Quenza::utf8Path(appData / "registry.ini") + ", ");
    }
    return places + "and by " + Quenza::utf8Path(appData / "Quenza for Cinema 4D" / "cquenzaSettings.cfg");
}

std::string notOpenedReason(std::span<const Interaction> interactions) {
    const auto cancelled = std::ranges::find_if(interactions, [](const Interaction& interaction) {
        return interaction.kind == Interaction::Kind::fileSelection && !interaction.answer;
    });
    if (cancelled == interactions.end()) {
        return "The export did not begin: the plug-in's dialog did not open";
    }
    return "The export did not begin: the plug-in found no renderer and asked \"" + cancelled->text +
           "\" It was looked for by " + rendererPlaces() +
           ". Answer with --answer-file FOLDER, or install the renderer";
}

/// The queue lies beside the scenes, under their name without the frame number.
std::string queueBeside(const std::string& scene) {
    std::filesystem::path path = Quenza::nativePath(scene);
    const std::string stem = Quenza::utf8Path(path.stem());
    const size_t frame = stem.rfind(FRAME);
    if (frame == std::string::npos) {
        return "";
    }
    path.replace_filename(Quenza::nativePath(stem.substr(0, frame) + ".qzq"));
    return files::isFile(path) ? Quenza::utf8Path(path) : "";
}

} // namespace

ExportOutcome judgeExport(bool opened, std::span<const std::string> lines,
                          std::span<const Interaction> interactions) {
    ExportOutcome outcome;
    for (const Interaction& interaction : interactions) {
        if (interaction.kind == Interaction::Kind::message && interaction.text.starts_with(FAILED)) {
            outcome.failure = withOnePeriod(oneLine(interaction.text));
            return outcome;
        }
    }
    if (!opened) {
        outcome.failure = notOpenedReason(interactions);
        return outcome;
    }
    for (const std::string& line : lines) {
        if (!line.starts_with(SAVED)) {
            continue;
        }
        outcome.scenes.push_back(pathOf(line.substr(SAVED.size())));
        if (!files::isFile(Quenza::nativePath(outcome.scenes.back()))) {
            outcome.failure = "The plug-in wrote no scene to " + outcome.scenes.back();
            return outcome;
        }
    }
    if (outcome.scenes.empty()) {
        outcome.failure = "The plug-in wrote no scene: the document has no object, or no frame to export";
        return outcome;
    }
    outcome.queue = queueBeside(outcome.scenes.back());
    if (const auto line = std::ranges::find_if(lines, tellsOfNoStart); line != lines.end()) {
        outcome.failure = "Exported, but not rendered: " + *line;
    }
    return outcome;
}

std::string summary(const ExportOutcome& outcome) {
    if (outcome.scenes.size() == 1) {
        return "Scene: " + outcome.scenes.front();
    }
    std::string text = "Scenes: " + std::to_string(outcome.scenes.size()) + ", from " +
                       outcome.scenes.front() + " to " + outcome.scenes.back();
    return outcome.queue.empty() ? text : text + "\nQueue: " + outcome.queue;
}

} // namespace headless
