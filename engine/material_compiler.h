// SPDX-License-Identifier: MIT
#pragma once

#include "engine/image_cache.h"
#include "engine/medium_compiler.h"
#include "engine/notices.h"
#include "engine/phong_shader.h"
#include "engine/plain_shader.h"
#include "engine/surface_shader.h"
#include "engine/texturing.h"
#include "scene/material.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/sum_material.h"
#include "scene/materials/surface_material.h"
#include "scene/scene_node_material.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace engine {

/// Makes shaders of materials; owns them. What the engine doesn't know becomes a neutral grey, and is told.
class MaterialCompiler {
public:
    /// Measured metals are looked for below `data_folder`, the renderer's own.
    MaterialCompiler(ImageCache& images, const std::string& data_folder, Notices& notices);
    ~MaterialCompiler();

    /// Never null; a null node gives the neutral grey.
    const SurfaceShader* compile(const Quenza::SceneNodeMaterial* node);
    /// For a material without a node of its own.
    const SurfaceShader* compile(const Quenza::Material& material);
    const SurfaceShader* grey() const { return grey_; }
    /// True when any of the materials is meant to emit, be it that it emits nothing just now.
    bool hasEmitters() const { return has_emitters_; }

private:
    SurfaceShader* make(const Quenza::Material& material);
    SurfaceShader* makeSurface(const Quenza::SurfaceMaterial& material);
    SurfaceShader* makeBlend(const Quenza::BlendMaterial& material);
    SurfaceShader* makeSum(const Quenza::SumMaterial& material);
    std::unique_ptr<PlainShader> makePlain(const Quenza::SurfaceMaterial& material,
                                           const InputBuilder& inputs);
    std::unique_ptr<PhongShader> makePhong(const Quenza::PhongMaterial& material, const InputBuilder& inputs);
    const SurfaceShader* reference(const Quenza::Ref<Quenza::SceneNodeMaterial>& node);
    template <class Shader>
    Shader* keep(std::unique_ptr<Shader> shader);

    ImageCache& images_;
    std::string data_folder_;
    Notices& notices_;
    MediumCompiler media_;
    std::vector<std::unique_ptr<SurfaceShader>> shaders_;
    std::map<const Quenza::Material*, const SurfaceShader*> known_; ///< Null while being made.
    const SurfaceShader* grey_ = nullptr;
    int depth_ = 0;
    bool has_emitters_ = false;
};

} // namespace engine
