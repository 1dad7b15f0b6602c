// SPDX-License-Identifier: MIT
#include "materials/material_update.h"

#include "host/document.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/material_kinds.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <unordered_map>
#include <unordered_set>

namespace {

/// What the material shows by the links that its kind uses.
std::vector<BaseMaterial*> referencedBy(BaseMaterial& material) {
    std::vector<BaseMaterial*> referenced;
    const BaseContainer* const data = material.GetDataInstance();
    if (material.GetType() != PLUGINID_MATERIAL || !data) {
        return referenced;
    }
    for (const MaterialLink& entry : referenceLinks(data->GetLong(MAT_KIND, MAT_KIND_DIFFUSE))) {
        BaseList2D* const target = data->GetLink(entry.link, material.GetDocument(), Mbase);
        if (target && entry.counts(*data)) {
            referenced.push_back(static_cast<BaseMaterial*>(target));
        }
    }
    return referenced;
}

} // namespace

bool updateMaterial(BaseMaterial* material) {
    BaseContainer* const data = material ? material->GetDataInstance() : nullptr;
    if (!data) {
        return false;
    }
    if (const KindInfo* const kind = kindInfo(data->GetLong(MAT_KIND, MAT_KIND_DIFFUSE))) {
        for (const ForcedFlag& forced : kind->forcedFlags) {
            data->SetBool(forced.flag, forced.isOn);
        }
    }
    return true;
}

bool materialReferences(BaseMaterial* a, BaseMaterial* b) {
    if (!a || !b) {
        return false;
    }
    std::unordered_set<const BaseMaterial*> seen{a};
    std::vector<BaseMaterial*> waiting{a};
    while (!waiting.empty()) {
        BaseMaterial* const material = waiting.back();
        waiting.pop_back();
        for (BaseMaterial* const referenced : referencedBy(*material)) {
            if (referenced == b) {
                return true;
            }
            if (seen.insert(referenced).second) {
                waiting.push_back(referenced);
            }
        }
    }
    return false;
}

std::vector<BaseMaterial*> findReferencing(BaseMaterial* material) {
    std::vector<BaseMaterial*> found;
    const BaseDocument* const document = material ? material->GetDocument() : nullptr;
    if (!document) {
        return found;
    }
    // Asked backwards, so that a change costs one look at each material, however they hang together.
    std::unordered_map<const BaseMaterial*, std::vector<BaseMaterial*>> users;
    for (BaseMaterial* user = document->GetFirstMaterial(); user; user = user->GetNext()) {
        for (const BaseMaterial* const referenced : referencedBy(*user)) {
            users[referenced].push_back(user);
        }
    }
    std::unordered_set<const BaseMaterial*> seen;
    std::vector<const BaseMaterial*> waiting{material};
    while (!waiting.empty()) {
        const BaseMaterial* const referenced = waiting.back();
        waiting.pop_back();
        for (BaseMaterial* const user : users[referenced]) {
            if (seen.insert(user).second) {
                waiting.push_back(user);
            }
        }
    }
    for (BaseMaterial* user = document->GetFirstMaterial(); user; user = user->GetNext()) {
        if (seen.contains(user)) {
            found.push_back(user);
        }
    }
    return found;
}
