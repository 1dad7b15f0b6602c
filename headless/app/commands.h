// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/arguments.h"
#include "headless/runtime/host.h"

namespace headless {

/// What a command ends with, as the process's exit status.
enum class ExitStatus { done = 0, failed = 1, usage = 2, interrupted = 130 };

// The commands, on a host with the plug-in loaded. They write to the process's streams and give `done`, or
// `interrupted` after Ctrl-C. Failures are thrown: UsageError, HostError, DocumentError.
ExitStatus openCommand(Host& host, const Arguments& arguments);
ExitStatus renderCommand(Host& host, const Arguments& arguments);
ExitStatus pictureCommand(Host& host, const Arguments& arguments);
ExitStatus listCommand(Host& host, const Arguments& arguments);
ExitStatus convertMaterialsCommand(Host& host, const Arguments& arguments);
ExitStatus bakeMaterialCommand(Host& host, const Arguments& arguments);
ExitStatus importMaterialsCommand(Host& host, const Arguments& arguments);
ExitStatus realtimeCommand(Host& host, const Arguments& arguments);
ExitStatus previewMaterialsCommand(Host& host, const Arguments& arguments);

/// What --save names. Throws UsageError without it.
std::string saveTarget(const Arguments& arguments);
/// Reads a document or model and makes it the active one, with the unit preference that it wants; gives that.
/// What a model holds that can't be taken over is told as errors. Images from inside models are written below
/// `textureFolder`, or left out when that is "".
std::optional<int32_t> openDocumentFile(Host& host, const std::string& file,
                                        const std::string& textureFolder = "");
/// The folder that a file lies in, as a full path.
std::string folderOf(const std::string& file);

} // namespace headless
