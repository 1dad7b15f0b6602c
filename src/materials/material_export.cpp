// SPDX-License-Identifier: MIT
#include "materials/material_export.h"

#include "host/ids.h"
#include "host/material.h"
#include "materials/convert_material.h"
#include "materials/material_bodies.h"
#include "scene/materials/null_material.h"
#include "scene/scene_node_material.h"
#include "shared/add_material.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/text.h"

#include <memory>
#include <utility>
#include <vector>

using Quenza::Ref;
using Quenza::SceneNodeMaterial;
using Quenza::SceneNodeRoot;
using Quenza::SceneNodeUID;

namespace {

struct RemoveAndFree {
    void operator()(BaseMaterial* material) const {
        material->Remove();
        BaseMaterial::Free(material);
    }
};
using TemporaryMaterial = std::unique_ptr<BaseMaterial, RemoveAndFree>;

/// A material of the plug-in in the document that looks like `material`; null when it can't be made.
TemporaryMaterial convertTemporarily(BaseMaterial* material, BaseDocument* document) {
    BaseMaterial* const converted = BaseMaterial::Alloc(PLUGINID_MATERIAL);
    if (!converted) {
        return nullptr;
    }
    document->InsertMaterial(converted);
    TemporaryMaterial temporary(converted);
    return convertMaterial(converted, material) ? std::move(temporary) : nullptr;
}

/// A material on its way into the scene, and how far it has come.
struct Task {
    TemporaryMaterial temporary;
    MaterialSource source;
    /// The artist's name, which a mix gives to the blend alone.
    String plainName;
    String name;
    bool isMix = false;
    Ref<SceneNodeMaterial> node;
    /// Those of the body, then in a mix that of the partner.
    std::vector<MaterialReference> references;
    size_t bodyReferenceCount = 0;
    bool hasBody = false;
    /// The scene's materials of the references, as far as they are known.
    std::vector<SceneNodeUID> resolved;
};

/// Exports a material with all that it refers to. Materials refer to each other in chains of any length, so
/// those that wait for others stand on a stack of their own.
class Export {
public:
    Export(SceneNodeRoot& root, ExportContext& context) : root_(root), context_(context) {}

    SceneNodeUID run(BaseMaterial* material) {
        request(material);
        return finish();
    }

    SceneNodeUID run(BaseMaterial* material, const String& name, BaseMaterial* key) {
        begin(nullptr, material, name, key);
        return finish();
    }

private:
    SceneNodeUID finish() {
        while (!tasks_.empty()) {
            advance(tasks_.back());
        }
        return result_;
    }

    /// Leaves the UID of a material in `result_`, unless it has to be exported first.
    void request(BaseMaterial* material) {
        const auto found = context_.materialMap.find(material);
        if (found != context_.materialMap.end() && found->second) {
            setResult(found->second->getUID());
        } else if (material->GetType() == PLUGINID_MATERIAL) {
            begin(nullptr, material, material->GetName(), material);
        } else if (TemporaryMaterial temporary = convertTemporarily(material, context_.document)) {
            BaseMaterial* const converted = temporary.get();
            begin(std::move(temporary), converted, material->GetName(), material);
        } else {
            setResult(SceneNodeUID());
        }
    }

    void setResult(SceneNodeUID uid) {
        result_ = uid;
        if (!tasks_.empty()) {
            tasks_.back().resolved.push_back(uid);
        }
    }

    void begin(TemporaryMaterial temporary, BaseMaterial* material, const String& name, BaseMaterial* key) {
        const BaseContainer& data = *material->GetDataInstance();
        Task task;
        task.temporary = std::move(temporary);
        const int32_t kind = data.GetLong(MAT_KIND, MAT_KIND_DIFFUSE);
        const bool isClay =
            context_.overrideMaterials && !data.GetBool(MAT_SKIP_OVERRIDE) && kind != MAT_KIND_BLEND;
        task.source = {material, key, kind, isClay};
        task.isMix = kind != MAT_KIND_BLEND && data.GetBool(MAT_BLEND_ENABLED);
        task.plainName = name;
        task.name = task.isMix ? name + "_blendA" : name;
        task.references = bodyReferences(task.source);
        task.bodyReferenceCount = task.references.size();
        if (task.isMix) {
            task.references.push_back({MAT_BLEND_MATERIAL_A, true});
        }
        task.node = new SceneNodeMaterial;
        root_.addChild(task.node);
        // From now on the material is known: a circle of references ends here.
        context_.materialMap[key] = task.node;
        tasks_.push_back(std::move(task));
    }

    void advance(Task& task) {
        if (!task.hasBody && task.resolved.size() == task.bodyReferenceCount) {
            addBody(task);
        } else if (task.resolved.size() < task.references.size()) {
            resolveNext(task);
        } else {
            const SceneNodeUID uid = task.isMix ? addMix(task) : task.node->getUID();
            tasks_.pop_back();
            setResult(uid);
        }
    }

    /// May push a task: `task` is not to be used behind it.
    void resolveNext(const Task& task) {
        const MaterialReference& reference = task.references[task.resolved.size()];
        auto* const linked = static_cast<BaseMaterial*>(
            task.source.material->GetDataInstance()->GetLink(reference.link, context_.document, Mbase));
        if (linked) {
            request(linked);
        } else {
            setResult(reference.isNullMaterialWhenEmpty ? context_.nullMaterialUID : SceneNodeUID());
        }
    }

    void addBody(Task& task) {
        task.hasBody = true;
        const Ref<Quenza::Material> body = makeBody(task.source, task.name, task.resolved, root_, context_);
        if (body && !task.isMix) {
            body->shadow_catcher = isShadowCatcher(task);
        }
        const bool isNull = task.source.kind == MAT_KIND_NULL && !task.source.isClay;
        task.node->material = body;
        task.node->setName(isNull ? "nullMat" : toSceneString(task.name));
    }

    SceneNodeUID addMix(const Task& task) {
        const Ref<Quenza::Material> body =
            makeMixBody(task.source, task.plainName, task.node->getUID(), task.resolved.back(), context_);
        body->shadow_catcher = isShadowCatcher(task);
        const Ref<SceneNodeMaterial> node = new SceneNodeMaterial(body);
        node->setName(toSceneString(task.plainName));
        root_.addChild(node);
        context_.materialMap[task.source.key] = node;
        return node->getUID();
    }

    static bool isShadowCatcher(const Task& task) {
        return task.source.material->GetDataInstance()->GetBool(MAT_SHADOW_CATCHER);
    }

    SceneNodeRoot& root_;
    ExportContext& context_;
    std::vector<Task> tasks_;
    SceneNodeUID result_;
};

} // namespace

SceneNodeUID getMaterialUID(BaseMaterial* material, SceneNodeRoot& root, ExportContext& context) {
    return material && context.document ? Export(root, context).run(material) : SceneNodeUID();
}

SceneNodeUID exportMaterial(BaseMaterial* material, const String& name, SceneNodeRoot& root,
                            ExportContext& context, BaseMaterial* key) {
    return material && key ? Export(root, context).run(material, name, key) : SceneNodeUID();
}

void exportNullMaterial(SceneNodeRoot& root, ExportContext& context) {
    context.nullMaterialUID = addMaterial(root, new Quenza::NullMaterial, "nullMat");
}
