// SPDX-License-Identifier: MIT
#include "materials/import_material.h"

#include "host/document.h"
#include "host/general.h"
#include "host/material.h"
#include "materials/import_body.h"
#include "materials/material_update.h"
#include "scene/scene_node_material.h"
#include "shared/plugin_ids.h"
#include "shared/text.h"

#include <map>
#include <vector>

using namespace Quenza;

namespace {

/// One import: materials by name, and those whose references are being imported first, the innermost last.
class MaterialImport {
public:
    MaterialImport(BaseDocument& document, const Filename& directory, ImportWarnings& warnings)
        : document_(document), directory_(directory), warnings_(warnings) {}

    void import(const SceneNodeMaterial& node) {
        tellWhatIsLeftOut(node);
        begin(node);
        while (!pending_.empty()) {
            Pending& innermost = pending_.back();
            if (innermost.next < innermost.references.size()) {
                const SceneNodeMaterial* const reference = innermost.references[innermost.next++].node;
                if (reference) {
                    begin(*reference);
                }
            } else {
                finish(innermost);
                pending_.pop_back();
            }
        }
    }

private:
    struct Pending {
        BaseMaterial* material;
        const Material* body;
        std::vector<MaterialLinkOfBody> references;
        size_t next = 0;
    };

    static void tellWhatIsLeftOut(const SceneNodeMaterial& node) {
        const Material* const body = node.material.getPointer();
        if (body && !isImportable(*body) && !isNull(*body)) {
            GePrint(::String("Material \"") + toHostString(node.getName()) + "\" of type " +
                    toHostString(body->getTypeName()) + " can't be imported.");
        }
    }

    /// Enters a material that isn't known by its name yet, so that a circle of references ends at it.
    void begin(const SceneNodeMaterial& node) {
        const Material* const body = node.material.getPointer();
        const ::String name = toHostString(node.getName());
        if (!body || !isImportable(*body) || made_.contains(name)) {
            return;
        }
        BaseMaterial* const material = BaseMaterial::Alloc(PLUGINID_MATERIAL);
        if (!material) {
            return;
        }
        document_.InsertMaterial(material);
        document_.AddUndo(UNDOTYPE_NEW, material);
        material->SetName(name);
        made_[name] = material;
        pending_.push_back({material, body, listReferences(*body)});
    }

    void finish(const Pending& pending) {
        BaseContainer& data = *pending.material->GetDataInstance();
        for (const MaterialLinkOfBody& reference : pending.references) {
            const auto found =
                reference.node ? made_.find(toHostString(reference.node->getName())) : made_.end();
            if (found != made_.end()) {
                data.SetLink(reference.link, found->second);
            }
        }
        importBody(*pending.material, *pending.body, directory_, warnings_);
        updateMaterial(pending.material);
        pending.material->Message(MSG_UPDATE);
    }

    BaseDocument& document_;
    const Filename& directory_;
    ImportWarnings& warnings_;
    std::map<::String, BaseMaterial*> made_;
    std::vector<Pending> pending_;
};

} // namespace

void importMaterials(BaseDocument& document, const SceneNodeRoot& root, const Filename& directory,
                     ImportWarnings& warnings) {
    MaterialImport run(document, directory, warnings);
    for (const Ref<SceneNode>& node : root.getChildren()) {
        if (node->getType() == NODE_MATERIAL) {
            run.import(static_cast<const SceneNodeMaterial&>(*node));
        }
    }
}
