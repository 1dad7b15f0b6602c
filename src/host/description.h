// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/descid.h"

/// Properties of a parameter in a description.
enum DescriptionProperty : int32_t {
    DESC_NAME = 1,
    DESC_MIN = 3,
    DESC_MAX = 4,
    DESC_DEFAULT = 11,
    /// Not shown.
    DESC_HIDE = 15,
    /// Container of the choices of a cycle: number to label.
    DESC_CYCLE = 18,
};

enum DescriptionFlags : int32_t {
    DESCFLAGS_DESC_LOADED = 1,
};

/// What the attribute manager shows of a node: its parameters with their properties. Opaque, the host's.
class Description {
public:
    Description() = delete;

    /// Loads the description resource that a plug-in was registered with.
    bool LoadDescription(int32_t pluginId);
    /// The live properties of a parameter, null when the description has none of that number.
    BaseContainer* GetParameterI(const DescID& id);

    /// Sets the host's hide flag of a parameter; an unknown number is ignored.
    void Hide(const DescID& id, bool hidden);
};
