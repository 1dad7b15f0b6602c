// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Puts materials of the plug-in in the place of the document's standard ones. Those stay, on a layer of
/// their own.
class ConvertMaterialsCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
};
