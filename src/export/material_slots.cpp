// SPDX-License-Identifier: MIT
#include "export/material_slots.h"

#include "export/texture_tags.h"
#include "host/ids.h"
#include "host/material.h"
#include "shared/export_context.h"

#include <algorithm>

std::vector<MaterialSlot> listMaterialSlots(const PolygonObject* object) {
    std::vector<MaterialSlot> slots;
    BaseSelect covered;
    for (BaseTag* tag = object->GetFirstTag(); tag; tag = tag->GetNext()) {
        if (tag->GetType() != Tpolygonselection) {
            continue;
        }
        const BaseSelect& selection = *static_cast<SelectionTag*>(tag)->GetBaseSelect();
        if (selection.GetCount() > 0) {
            slots.push_back({findTextureTag(object, tag), selection});
        }
        covered.Merge(selection);
    }
    const int32_t last = object->GetPolygonCount() - 1;
    if (covered.GetCount() == 0) {
        covered.SelectAll(0, last);
    } else {
        covered.ToggleAll(0, last);
    }
    // Selections can outlive polygons: what they hold beyond the last one is nothing to give a slot for.
    int32_t from = 0;
    int32_t to = 0;
    if (covered.GetRange(0, &from, &to) && from <= last) {
        slots.push_back({findTextureTag(object, nullptr), covered});
    }
    return slots;
}

std::vector<TextureTag*> listObjectMaterials(const std::vector<MaterialSlot>& slots) {
    std::vector<TextureTag*> tags;
    for (const MaterialSlot& slot : slots) {
        if (slot.tag && std::find(tags.begin(), tags.end(), slot.tag) == tags.end()) {
            tags.push_back(slot.tag);
        }
    }
    return tags;
}

PolygonRuns polygonRuns(const std::vector<MaterialSlot>& slots, int32_t polygonCount) {
    PolygonRuns runs;
    if (slots.size() == 1) {
        // The usual mesh needs no bits.
        int32_t from = 0;
        int32_t to = 0;
        for (int32_t n = 0; slots[0].polygons.GetRange(n, &from, &to) && from < polygonCount; ++n) {
            runs.push_back({from, std::min(to + 1, polygonCount), 0});
        }
        return runs;
    }
    std::vector<bool> done(static_cast<size_t>(std::max(polygonCount, 0)));
    for (uint32_t slot = 0; slot < slots.size(); ++slot) {
        int32_t from = 0;
        int32_t to = 0;
        for (int32_t n = 0; slots[slot].polygons.GetRange(n, &from, &to) && from < polygonCount; ++n) {
            for (int32_t i = from; i <= std::min(to, polygonCount - 1); ++i) {
                if (done[static_cast<size_t>(i)]) {
                    continue;
                }
                done[static_cast<size_t>(i)] = true;
                if (!runs.empty() && runs.back().to == i && runs.back().slot == slot) {
                    ++runs.back().to;
                } else {
                    runs.push_back({i, i + 1, slot});
                }
            }
        }
    }
    return runs;
}

std::vector<Quenza::SceneNodeUID> listSlotMaterials(const ExportContext& context,
                                                    const std::vector<MaterialSlot>& slots,
                                                    bool useLightMaterial) {
    std::vector<Quenza::SceneNodeUID> materials;
    for (const MaterialSlot& slot : slots) {
        Quenza::SceneNodeUID uid = useLightMaterial ? context.lightMaterialUID : context.defaultMaterialUID;
        BaseMaterial* const material = slot.tag && !useLightMaterial ? slot.tag->GetMaterial() : nullptr;
        const auto found = context.materialMap.find(material);
        if (material && found != context.materialMap.end() && found->second) {
            uid = found->second->getUID();
        }
        materials.push_back(uid);
    }
    return materials;
}
