// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace headless::resources {

/// A description that the host itself brings and a plug-in's description includes. Of each only the page is
/// known here that plug-ins add their entries to; `groupSymbol` is empty when there is none.
struct HostBase {
    std::string_view name;
    std::string_view groupSymbol;
    int32_t groupId;
    std::string_view label;
};

/// Null when the host brings no description of that name. The numbers of the groups are the stand-in's own:
/// no document stores them.
const HostBase* findHostBase(std::string_view name);

} // namespace headless::resources
