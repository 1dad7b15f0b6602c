// SPDX-License-Identifier: MIT
#include "materials/convert_command.h"

#include "host/atomarray.h"
#include "host/dialog.h"
#include "host/document.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/layer.h"
#include "host/material.h"
#include "host/object.h"
#include "host/tag.h"
#include "materials/convert_material.h"
#include "shared/plugin_ids.h"

#include <unordered_map>
#include <vector>

namespace {

using TagsOfMaterial = std::unordered_map<const BaseMaterial*, std::vector<TextureTag*>>;

/// What the artist wants converted; the plug-in's own materials are what they are to become.
std::vector<BaseMaterial*> chooseMaterials(const BaseDocument& document) {
    std::vector<BaseMaterial*> materials;
    const auto add = [&materials](BaseMaterial* material) {
        if (material->GetType() != PLUGINID_MATERIAL) {
            materials.push_back(material);
        }
    };
    AtomArray selected;
    document.GetActiveMaterials(selected);
    if (selected.GetCount() > 0 && QuestionDialog("Convert only selected materials?")) {
        for (int32_t i = 0; i < selected.GetCount(); ++i) {
            add(static_cast<BaseMaterial*>(selected.GetIndex(i)));
        }
        return materials;
    }
    for (BaseMaterial* material = document.GetFirstMaterial(); material; material = material->GetNext()) {
        add(material);
    }
    return materials;
}

/// The layer that old materials are put on; null in a document without layers.
LayerObject* findOldMaterialsLayer(BaseDocument& document) {
    LayerObject* const root = document.GetLayerObjectRoot();
    if (!root) {
        return nullptr;
    }
    for (LayerObject* layer = root->GetDown(); layer; layer = layer->GetNext()) {
        if (layer->GetName() == String("Old Materials")) {
            return layer;
        }
    }
    LayerObject* const made = LayerObject::Alloc();
    if (made) {
        made->SetName("Old Materials");
        made->InsertUnder(root);
        document.AddUndo(UNDOTYPE_NEW, made);
        made->Message(MSG_UPDATE);
    }
    return made;
}

TagsOfMaterial collectTextureTags(const BaseDocument& document) {
    TagsOfMaterial tags;
    std::vector<BaseObject*> waiting;
    if (BaseObject* const first = document.GetFirstObject()) {
        waiting.push_back(first);
    }
    while (!waiting.empty()) {
        BaseObject* const object = waiting.back();
        waiting.pop_back();
        for (BaseTag* tag = object->GetFirstTag(); tag; tag = tag->GetNext()) {
            if (tag->GetType() == Ttexture) {
                auto* const texture = static_cast<TextureTag*>(tag);
                tags[texture->GetMaterial()].push_back(texture);
            }
        }
        for (BaseObject* const next : {object->GetNext(), object->GetDown()}) {
            if (next) {
                waiting.push_back(next);
            }
        }
    }
    return tags;
}

bool replaceMaterial(BaseDocument& document, BaseMaterial* source, LayerObject* oldMaterials,
                     const TagsOfMaterial& tags) {
    BaseMaterial* const material = BaseMaterial::Alloc(PLUGINID_MATERIAL);
    if (!material) {
        return false;
    }
    document.InsertMaterial(material);
    document.AddUndo(UNDOTYPE_NEW, material);
    material->SetLayerObject(source->GetLayerObject());
    if (oldMaterials) {
        document.AddUndo(UNDOTYPE_CHANGE, source);
        source->SetLayerObject(oldMaterials);
    }
    convertMaterial(material, source);
    material->Message(MSG_UPDATE);
    const auto found = tags.find(source);
    if (found == tags.end()) {
        return true;
    }
    for (TextureTag* const tag : found->second) {
        document.AddUndo(UNDOTYPE_CHANGE, tag);
        tag->SetMaterial(material);
        tag->Message(MSG_UPDATE);
    }
    return true;
}

} // namespace

bool ConvertMaterialsCommand::Execute(BaseDocument* document) {
    if (!document) {
        return false;
    }
    const std::vector<BaseMaterial*> materials = chooseMaterials(*document);
    if (materials.empty()) {
        return true;
    }
    document->StartUndo();
    LayerObject* const oldMaterials = findOldMaterialsLayer(*document);
    const TagsOfMaterial tags = collectTextureTags(*document);
    bool isComplete = true;
    for (auto material = materials.rbegin(); material != materials.rend(); ++material) {
        isComplete &= replaceMaterial(*document, *material, oldMaterials, tags);
    }
    document->EndUndo();
    document->SetChanged();
    EventAdd();
    return isComplete;
}
