// SPDX-License-Identifier: MIT
#include "headless/resources/host_bases.h"

namespace headless::resources {

namespace {

constexpr HostBase hostBases[] = {
    {"Tbase", "ID_TAGPROPERTIES", 440000001, "Tag Properties"},
    {"Texpression", "ID_TAGPROPERTIES", 440000001, "Tag Properties"},
    {"Obase", "ID_OBJECTPROPERTIES", 440000002, "Object Properties"},
    {"Mbase", "ID_MATERIALPROPERTIES", 440000003, "Material Properties"},
    {"Xbase", "ID_SHADERPROPERTIES", 440000004, "Shader Properties"},
    {"Mpreview", "", 0, ""},
    {"VPbase", "", 0, ""},
};

} // namespace

const HostBase* findHostBase(std::string_view name) {
    for (const HostBase& base : hostBases)
        if (base.name == name)
            return &base;
    return nullptr;
}

} // namespace headless::resources
