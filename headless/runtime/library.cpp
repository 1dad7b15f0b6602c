// SPDX-License-Identifier: MIT
#include "headless/runtime/library.h"

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "headless/runtime/host_error.h"

namespace headless {

Library::Library(const std::filesystem::path& file) {
    Quenza::String reason;
    handle_ = Quenza::PlatformUtils::loadLibrary(Quenza::utf8Path(file), reason);
    if (!handle_) {
        throw HostError(Quenza::utf8Path(file) + " can't be loaded: " + reason.toStdString());
    }
}

Library::~Library() {
    Quenza::PlatformUtils::freeLibrary(handle_);
}

void* Library::find(const char* name) const {
    return Quenza::PlatformUtils::librarySymbol(handle_, name);
}

} // namespace headless
