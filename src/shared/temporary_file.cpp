// SPDX-License-Identifier: MIT
#include "shared/temporary_file.h"

#include "foundation/platform.h"
#include "host/general.h"
#include "shared/export_context.h"
#include "shared/text.h"

#include <cstdio>

Claim claimTemporaryFile(const Filename& file, ExportContext& context) {
    const Quenza::String path = toSceneString(file);
    // "x": not one that is there.
    std::FILE* const made = Quenza::PlatformUtils::openFile(path, "wbx");
    if (!made) {
        return GeFExist(file) ? Claim::TAKEN : Claim::REFUSED;
    }
    std::fclose(made);
    context.extraFiles->push_back(path);
    return Claim::MADE;
}
