// SPDX-License-Identifier: MIT
#include "reading/texture_uses.h"

#include "scene/displacement_param.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

namespace Quenza {

namespace {

class TextureWalk : public MaterialFields {
public:
    explicit TextureWalk(std::vector<TextureUse>& uses) : uses_(uses) {}

    void parameter(const char* element, Ref<WavelengthDependentParam>& param) override {
        note<TextureWavelengthDependentParam>(element, param);
    }
    void parameter(const char* element, Ref<WavelengthIndependentParam>& param) override {
        note<TextureWavelengthIndependentParam>(element, param);
    }
    void parameter(const char* element, Ref<DisplacementParam>& param) override {
        note<TextureDisplacementParam>(element, param);
    }
    void parameter(const char* element, Ref<Vec3Param>& param) override {
        note<TextureVec3Param>(element, param);
    }

private:
    template <class TextureParam, class Family>
    void note(const char* element, const Ref<Family>& param) {
        const auto* const texture = dynamic_cast<const TextureParam*>(param.getPointer());
        if (!texture || texture->texture_index < 0 || u64(texture->texture_index) >= uses_.size())
            return;
        std::string& channels = uses_[u64(texture->texture_index)].channels;
        channels += (channels.empty() ? "" : ", ") + std::string(element);
    }

    std::vector<TextureUse>& uses_;
};

} // namespace

std::vector<TextureUse> textureUses(Material& material) {
    std::vector<TextureUse> uses;
    for (const Texture& texture : material.textures)
        uses.push_back({texture.path.toStdString(), ""});
    TextureWalk walk(uses);
    material.presentFields(walk);
    return uses;
}

} // namespace Quenza
