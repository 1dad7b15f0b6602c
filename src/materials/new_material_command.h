// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Adds a material of the plug-in to the document.
class NewMaterialCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
};
