// SPDX-License-Identifier: MIT
#pragma once

#include "engine/medium.h"
#include "engine/notices.h"
#include "scene/scene_node_medium.h"

#include <map>
#include <memory>

namespace engine {

/// Makes the media of a scene ready for the tracer; owns them.
class MediumCompiler {
public:
    explicit MediumCompiler(Notices& notices) : notices_(notices) {}

    /// Null for none.
    const InternalMedium* compile(const Quenza::SceneNodeMedium* node);

private:
    InternalMedium make(const Quenza::Medium& medium);
    InternalMedium makeBasic(const Quenza::BasicMedium& medium);
    RGB coefficient(const Quenza::Ref<Quenza::VolumeParam>& param);

    Notices& notices_;
    std::map<const Quenza::SceneNodeMedium*, std::unique_ptr<InternalMedium>> media_;
};

} // namespace engine
