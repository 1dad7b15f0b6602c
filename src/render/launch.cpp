// SPDX-License-Identifier: MIT
#include "render/launch.h"

#include "foundation/platform.h"
#include "host/general.h"
#include "render/renderer_location.h"
#include "shared/text.h"

#include <cmath>

namespace {

String quoted(const Filename& path) {
    return String("\"") + path.GetString() + "\"";
}

} // namespace

int32_t randomSeed() {
    Random random;
    random.Init(GeGetMilliSeconds());
    const double part = random.Get01();
    return static_cast<int32_t>(static_cast<uint32_t>(std::floor(part * GeGetMilliSeconds())));
}

String buildLaunchArguments(const Filename& sceneFile, const LaunchOptions& options, int32_t seed) {
    String arguments = String(" -seed ") + LongToString(seed);
    if (options.lowPriority) {
        arguments += " --thread_priority belownormal";
    }
    if (options.network) {
        arguments += String(" -n wm -p ") + LongToString(options.port);
    }
    if (options.outputFile.Content()) {
        static constexpr struct {
            const char* option;
            const char* tail;
        } OUTPUTS[] = {{" -o ", ".png"},
                       {" -qzio ", ".qzi"},
                       {" -uexro ", "_untonemapped.exr"},
                       {" -texro ", "_tonemapped.exr"}};
        Filename stem = options.outputFile.GetDirectory() + options.outputFile.GetFile();
        stem.ClearSuffix();
        for (const auto& output : OUTPUTS) {
            arguments += String(output.option) + quoted(Filename(stem.GetString() + output.tail));
        }
    }
    return arguments + " " + quoted(sceneFile);
}

bool launchQuenza(const Filename& sceneFile, const LaunchOptions& options) {
    GePrint("Launching Quenza...");
    for (const Filename& path : {sceneFile, options.outputFile}) {
        // The renderer's line puts paths in quotes and has no way to write one within.
        if (path.GetUtf8().find('"') != std::string::npos) {
            GePrint(String("The renderer can't be started: the path \"") + path.GetString() +
                    "\" holds a quotation mark.");
            return false;
        }
    }
    Filename executable;
    if (!findRenderer(executable, options.console)) {
        return false;
    }
    return createProcess(executable, buildLaunchArguments(sceneFile, options, randomSeed()),
                         options.lowPriority);
}

bool openSceneInRenderer(const Filename& sceneFile) {
    return findOrChooseRenderer() && launchQuenza(sceneFile, LaunchOptions());
}

bool createProcess(const Filename& executable, const String& arguments, bool lowPriority) {
    // Only the platform's own separator counts: on Windows a path with forward slashes is taken whole.
    const std::string& path = executable.GetUtf8();
    String line(path.substr(path.rfind(Filename::separator) + 1));
    if (arguments.Content() && arguments.GetUtf8().front() != ' ') {
        line += " ";
    }
    line += arguments;
    return Quenza::PlatformUtils::createProcess(toSceneString(executable), toSceneString(line), lowPriority);
}
