// SPDX-License-Identifier: MIT
#include "materials/preview_clones.h"

#include "host/document.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/material_kinds.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <ranges>
#include <unordered_map>
#include <vector>

namespace {

constexpr int32_t ANY_KIND = 0;

struct PreviewLink {
    /// MAT_KIND_..., or ANY_KIND.
    int32_t kind;
    MaterialLink link;
};

/// In the order in which materials are cloned. It is wider than the links of references: a switched-on medium
/// counts whatever the kind.
constexpr PreviewLink PREVIEW_LINKS[] = {
    {MAT_KIND_BLEND, {MAT_BLEND_MATERIAL_A}},
    {MAT_KIND_BLEND, {MAT_BLEND_MATERIAL_B}},
    {ANY_KIND, {MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED}},
    {MAT_KIND_COATING, {MAT_COATING_SUBSTRATE}},
    {MAT_KIND_DOUBLE_SIDED_THIN, {MAT_THIN_FRONT}},
    {MAT_KIND_DOUBLE_SIDED_THIN, {MAT_THIN_BACK}},
    {MAT_KIND_SPECULAR, {MAT_MEDIUM_SOURCE}},
    {MAT_KIND_GLOSSY_TRANSPARENT, {MAT_MEDIUM_SOURCE}},
    // As the export reads it: on unless it was switched off.
    {MAT_KIND_DIFFUSE_TRANSMITTER, {MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, true}},
    {ANY_KIND, {MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED}},
};

std::vector<const BaseMaterial*> lookOf(const BaseMaterial& material) {
    std::vector<const BaseMaterial*> linked;
    const BaseContainer* const data = material.GetDataInstance();
    if (material.GetType() != PLUGINID_MATERIAL || !data) {
        return linked;
    }
    const int32_t kind = data->GetLong(MAT_KIND, MAT_KIND_DIFFUSE);
    for (const PreviewLink& entry : PREVIEW_LINKS) {
        if ((entry.kind != ANY_KIND && entry.kind != kind) || !entry.link.counts(*data)) {
            continue;
        }
        if (const BaseList2D* const target = data->GetLink(entry.link.link, material.GetDocument(), Mbase)) {
            linked.push_back(static_cast<const BaseMaterial*>(target));
        }
    }
    return linked;
}

using Clones = std::unordered_map<const BaseList2D*, BaseMaterial*>;

void leadToClones(const Clones& clones) {
    for (const auto& [original, clone] : clones) {
        BaseContainer* const data =
            clone->GetType() == PLUGINID_MATERIAL ? clone->GetDataInstance() : nullptr;
        if (!data) {
            continue;
        }
        for (const int32_t link : materialLinks()) {
            const auto target = clones.find(data->GetLink(link, nullptr));
            if (target != clones.end()) {
                data->SetLink(link, target->second);
            }
        }
    }
}

} // namespace

BaseMaterial* cloneIntoPreview(const BaseMaterial& material, BaseDocument& stage) {
    Clones clones;
    BaseMaterial* last = nullptr;
    std::vector<const BaseMaterial*> waiting{&material};
    while (!waiting.empty()) {
        const BaseMaterial* const original = waiting.back();
        waiting.pop_back();
        if (clones.contains(original)) {
            continue;
        }
        auto* const clone = static_cast<BaseMaterial*>(original->GetClone());
        if (!clone) {
            continue;
        }
        stage.InsertMaterial(clone, last);
        last = clone;
        clones.emplace(original, clone);
        const std::vector<const BaseMaterial*> look = lookOf(*original);
        waiting.insert(waiting.end(), look.rbegin(), look.rend());
    }
    leadToClones(clones);
    const auto own = clones.find(&material);
    return own != clones.end() ? own->second : nullptr;
}
