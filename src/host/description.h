// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/descid.h"

/// Properties of a parameter in a description.
enum DescriptionProperty : int32_t {
    DESC_NAME = 1,
    DESC_MIN = 3,
    DESC_MAX = 4,
    DESC_STEP = 8,
    DESC_DEFAULT = 11,
    /// Not shown.
    DESC_HIDE = 15,
    /// Container of the choices of a cycle: number to label.
    DESC_CYCLE = 18,
    DESC_MINSLIDER = 20,
    DESC_MAXSLIDER = 21,
    /// A DescriptionUnit.
    DESC_UNIT = 22,
    /// A DescriptionGui.
    DESC_CUSTOMGUI = 23,
};

enum DescriptionUnit : int32_t { DESC_UNIT_REAL = 1, DESC_UNIT_PERCENT = 2 };

enum DescriptionGui : int32_t { CUSTOMGUI_REAL = 1, CUSTOMGUI_REALSLIDER = 2 };

/// What kind of value a dynamic parameter holds.
enum DescriptionType : int32_t {
    DTYPE_GROUP = 1,
    DTYPE_SEPARATOR = 2,
    DTYPE_BOOL = 3,
    DTYPE_LONG = 4,
    DTYPE_REAL = 5,
    DTYPE_COLOR = 6,
    DTYPE_STRING = 7,
    DTYPE_FILENAME = 8,
    /// A link to a shader.
    DTYPE_TEXTURE = 9,
    /// A link to any node.
    DTYPE_BASELISTLINK = 10,
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

    /// Adds a parameter, or replaces the one of that number. `properties` are copied; `group` holds it, 0 the
    /// top.
    bool SetParameter(const DescID& id, int32_t dataType, const BaseContainer& properties,
                      const DescID& group);

    /// Sets the host's hide flag of a parameter; an unknown number is ignored.
    void Hide(const DescID& id, bool hidden);
};
