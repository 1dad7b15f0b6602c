// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Bakes the material of the selected texture tag as its object shows it, in a dialog.
class BakeCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    /// Grey unless one texture tag with a material of the plug-in, on a polygon object, is selected.
    int32_t GetState(BaseDocument* document) override;
};

/// Gives the object of the selected texture tag the texture coordinates that a bake needs.
class BakeUVWCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    int32_t GetState(BaseDocument* document) override;
};
