// SPDX-License-Identifier: MIT
#include "materials/import_command.h"

#include "host/dialog.h"
#include "host/document.h"
#include "host/general.h"
#include "materials/import_material.h"
#include "reading/scene_parser.h"
#include "scene/material_fields.h"
#include "scene/scene_node_material.h"
#include "shared/text.h"
#include "shared/user_folder.h"

#include <exception>
#include <vector>

namespace {

bool hasSuffix(const Filename& file, const char* suffix) {
    return file.GetSuffix().ToLower() == String(suffix);
}

/// A new folder for what an archive holds; empty when it can't be made.
Filename makeUnpackFolder(const Filename& archive) {
    const String base = archive.GetFile().GetString();
    const Filename parent = getUserFolder() + "materials";
    Filename folder;
    // Two imports within one tick of the timer get a folder each.
    uint32_t number = GeGetMilliSeconds();
    do {
        folder = parent + Filename(base + LongToString(number++));
    } while (GeFExist(folder, true));
    return GeFCreateDir(folder) ? folder : Filename();
}

/// Unpacks an archive and gives the first material file in it; empty when there is none.
Filename unpack(const Filename& archive) {
    const Filename folder = makeUnpackFolder(archive);
    std::vector<Filename> names;
    if (!folder.Content() || !GeExtractZip(archive, folder) || !GeFListDirectory(folder, names)) {
        GePrint(String("Could not unpack ") + archive.GetString());
        return {};
    }
    Filename chosen;
    for (const Filename& name : names) {
        GePrint(name.GetString());
        if (!chosen.Content() && hasSuffix(name, "qzm")) {
            chosen = folder + name;
        }
    }
    return chosen;
}

void showWarnings(const ImportWarnings& warnings) {
    if (warnings.empty()) {
        return;
    }
    String text("Import warnings:");
    for (const String& warning : warnings) {
        text += String("\n- ") + warning;
    }
    MessageDialog(text);
}

/// Ends a scene whose materials may refer to each other in circles: counted references would keep those for
/// ever.
class SceneEnd {
public:
    explicit SceneEnd(const Quenza::SceneNodeRoot& root) : root_(root) {}
    SceneEnd(const SceneEnd&) = delete;
    SceneEnd& operator=(const SceneEnd&) = delete;
    ~SceneEnd() {
        ReferenceCutter cutter;
        for (const Quenza::Ref<Quenza::SceneNode>& node : root_.getChildren()) {
            auto* const material = dynamic_cast<Quenza::SceneNodeMaterial*>(node.getPointer());
            if (material && material->material) {
                material->material->presentFields(cutter);
            }
        }
    }

private:
    class ReferenceCutter : public Quenza::MaterialFields {
        void material(const Quenza::ReferenceElements&, Quenza::Ref<Quenza::SceneNodeMaterial>& node,
                      Quenza::SceneNodeUID&) override {
            node = nullptr;
        }
    };

    const Quenza::SceneNodeRoot& root_;
};

void importFile(BaseDocument& document, const Filename& file) {
    Quenza::Ref<Quenza::SceneNodeRoot> root;
    Quenza::QuenzaModelParser().parseMaterialFile(root, toSceneString(file));
    const SceneEnd end(*root);
    ImportWarnings warnings;
    document.StartUndo();
    importMaterials(document, *root, file.GetDirectory(), warnings);
    document.EndUndo();
    document.SetChanged();
    EventAdd();
    showWarnings(warnings);
}

} // namespace

bool ImportMaterialsCommand::Execute(BaseDocument* document) {
    Filename file;
    if (!document || !file.FileSelect(FILESELECT_LOAD, "Select .qzm/.pqzm file")) {
        return false;
    }
    try {
        if (hasSuffix(file, "pqzm")) {
            file = unpack(file);
        }
        if (!hasSuffix(file, "qzm")) {
            GePrint("no qzm");
            return false;
        }
        importFile(*document, file);
        return true;
    } catch (const std::exception& error) {
        GePrint(error.what());
        return false;
    }
}
