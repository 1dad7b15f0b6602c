// SPDX-License-Identifier: MIT
#pragma once

#include "engine/material_shaders.h"
#include "engine/notices.h"
#include "engine/texture_map.h"
#include "scene/material.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"

#include <map>
#include <memory>
#include <vector>

namespace engine {

/// Makes shaders of materials; owns them. What the engine doesn't know becomes a neutral grey, and is told.
class MaterialCompiler {
public:
    MaterialCompiler(ImageCache& images, Notices& notices);
    ~MaterialCompiler();

    /// Never null; a null node gives the neutral grey.
    const SurfaceShader* compile(const Quenza::SceneNodeMaterial* node);
    /// For a material without a node of its own.
    const SurfaceShader* compile(const Quenza::Material& material);
    const SurfaceShader* grey() const { return grey_; }
    /// True when any of the materials is meant to emit, be it that it emits nothing just now.
    bool hasEmitters() const { return has_emitters_; }

private:
    const SurfaceShader* make(const Quenza::Material& material);
    const SurfaceShader* reference(const Quenza::Ref<Quenza::SceneNodeMaterial>& node);
    const InternalMedium* compileMedium(const Quenza::SceneNodeMedium* node);
    template <class Shader>
    Shader& keep(std::unique_ptr<Shader> shader);

    ImageCache& images_;
    Notices& notices_;
    std::vector<std::unique_ptr<SurfaceShader>> shaders_;
    std::map<const Quenza::Material*, const SurfaceShader*> known_; ///< Null while being made.
    std::map<const Quenza::SceneNodeMedium*, std::unique_ptr<InternalMedium>> media_;
    const SurfaceShader* grey_ = nullptr;
    int depth_ = 0;
    bool has_emitters_ = false;
};

} // namespace engine
