// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Reads a material file, or an archive with one, into the document.
class ImportMaterialsCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
};
