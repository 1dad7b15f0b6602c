// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

namespace Quenza {

/// A material of one of the renderer's plug-ins.
class PluginMaterial : public Material {
public:
    static constexpr u32 TYPE = 11;

    PluginMaterial() : Material(KIND) {}

    i32 layer = 0;
    String plugin_name;
    String material_name;

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "plugin", "PluginMaterial"};
};

} // namespace Quenza
