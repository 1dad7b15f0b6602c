// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

namespace Quenza {

/// Marks an opening through which light of the background comes in.
class ExitPortalMaterial : public Material {
public:
    static constexpr u32 TYPE = 8;

    ExitPortalMaterial() : Material(KIND) {}

private:
    static constexpr Kind KIND{TYPE, "exit_portal", "ExitPortalMaterial"};
};

} // namespace Quenza
