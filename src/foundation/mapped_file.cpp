// SPDX-License-Identifier: MIT
#include "foundation/mapped_file.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"

namespace Quenza {

MappedFile::MappedFile(const String& path) {
    if (!PlatformUtils::mapFile(path, bytes_))
        throw FileUtils::FileUtilsExcep("could not open '" + path + "' for reading.");
}

MappedFile::~MappedFile() {
    PlatformUtils::unmapFile(bytes_);
}

} // namespace Quenza
