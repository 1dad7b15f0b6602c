// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

namespace Quenza {

/// Not there: light passes unchanged.
class NullMaterial : public Material {
public:
    static constexpr u32 TYPE = 3;

    NullMaterial() : Material(KIND) {}

private:
    static constexpr Kind KIND{TYPE, "null_material", "NullMaterial"};
};

} // namespace Quenza
