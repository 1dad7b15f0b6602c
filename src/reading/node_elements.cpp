// SPDX-License-Identifier: MIT
#include "reading/node_elements.h"

#include "scene/scene_node.h"

#include <iterator>

namespace Quenza {

const char* nodeElementName(u32 type) {
    static constexpr const char* NAMES[] = {
        "scene",
        "camera",
        "renderer_settings",
        "material",
        "mesh",
        "model2",
        "sphere",
        "medium",
        "tonemapping",
        "rectanglelight",
        "background_settings",
        "metadata",
        "parametric_surface",
        "scatter",
        "section_plane",
    };
    return type < std::size(NAMES) ? NAMES[type] : "unknown";
}

bool isSingleNodeType(u32 type) {
    return type == NODE_CAMERA || type == NODE_RENDER_SETTINGS || type == NODE_TONEMAPPING ||
           type == NODE_BACKGROUND_SETTINGS || type == NODE_METADATA;
}

} // namespace Quenza
