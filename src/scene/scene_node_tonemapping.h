// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node.h"

namespace Quenza {

/// How the renderer's linear image becomes a display image. A scene has at most one. The values of all
/// methods stay in the node, whichever is chosen.
///
/// The node changes while a scene renders: whoever changes it holds the root's mutex, sets `flags` to 1 and
/// calls markChanged().
class SceneNodeTonemapping : public SceneNode {
public:
    /// Values of `tonemap_type`; any other chooses no method.
    enum TonemapType : u32 {
        LINEAR = 1000,
        REINHARD = 1001,
        CAMERA = 1002,
    };

    u32 getType() const override { return NODE_TONEMAPPING; }
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;

    double scale = 1.0; ///< Linear.
    double pre_scale = 4.0;
    double post_scale = 1.0;
    double burn = 6.0;
    /// Relative to the renderer's folder, so it is no dependency of the scene.
    String response_function_path = "data/camera_response_functions/dscs315.txt";
    double film_iso = 200.0;
    double ev_adjust = 0; ///< Stops.
    u32 tonemap_type = LINEAR;
};

} // namespace Quenza
