// SPDX-License-Identifier: MIT
#include "headless/app/output_folder.h"

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "headless/runtime/files.h"
#include "headless/runtime/host_error.h"

namespace headless {

namespace system = Quenza::PlatformUtils;

OutputFolder::OutputFolder(const std::filesystem::path& folder) {
    // A drive has no folder above it.
    for (std::filesystem::path missing = folder;
         missing.has_relative_path() &&
         system::pathKind(Quenza::utf8Path(missing)) == system::PathKind::MISSING;
         missing = missing.parent_path()) {
        made_.push_back(missing);
    }
    if (const std::string reason = files::makeFolders(folder); !reason.empty()) {
        removeEmpty();
        throw HostError("The folder " + Quenza::utf8Path(folder) + " can't be made: " + reason);
    }
}

OutputFolder::~OutputFolder() {
    removeEmpty();
}

void OutputFolder::removeEmpty() const {
    for (const std::filesystem::path& folder : made_) {
        // Fails for one that holds something.
        system::removeDirectory(Quenza::utf8Path(folder));
    }
}

} // namespace headless
