// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/node_types.h"
#include "headless/runtime/host.h"
#include "host/document.h"
#include "host/material.h"
#include "scene/scene_node_root.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

template <class Data>
NodeData* allocate() {
    return new Data;
}

/// Makes a kind of node known to the host, as a registration would.
void addType(int32_t id, headless::NodeKind kind, NodeDataAllocator allocator);

/// A document in the stand-in host with the plug-in's material and shaders. The document's file and the
/// scene's lie in one folder; 1 unit is 1 metre.
class MaterialTest : public ::testing::Test {
protected:
    MaterialTest();
    ~MaterialTest() override;

    BaseDocument* document() const;
    /// A new material of the plug-in, behind the others, with the channels forced that its kind forces.
    BaseMaterial* addMaterial(const char* name, int32_t kind = MAT_KIND_DIFFUSE);
    /// A new node of any type of material.
    BaseMaterial* addOtherMaterial(const char* name, int32_t type);
    /// A new shader of `material`, linked at `link`.
    static BaseShader* addShader(BaseMaterial* material, int32_t link, int32_t type);
    /// A bitmap shader; the image needn't exist.
    static BaseShader* addBitmap(BaseMaterial* material, int32_t link, const char* file);
    static BaseContainer& data(BaseList2D* node) { return *node->GetDataInstance(); }
    /// A small image beside the document. The name may hold folders, which are made.
    std::string addImageFile(const char* name) const;

    /// The text of a file of tests/materials/golden. With QUENZA_WRITE_GOLDEN set the file gets `text` first.
    static std::string golden(const char* name, const std::string& text);

    /// Of an export into the fixture's folder, begun when it's asked for first.
    ExportContext& context();
    Quenza::SceneNodeRoot& scene() {
        context();
        return *scene_;
    }
    /// Ends the export, so that the next call of context begins another one.
    void endExport();
    Quenza::SceneNodeUID exportMaterial(BaseMaterial* material);

    /// The scene's materials and media in their order; paths are relative to the folder.
    std::string xml() const;
    std::string xml(Quenza::SceneNodeUID uid) const;
    /// Names of the scene's materials and media with their types, a line each.
    std::string nodeNames() const;
    /// What lies in the texture folder.
    std::vector<std::string> textureFiles() const;

    std::string folder() const { return folder_.path().toStdString(); }
    headless::Host& host() { return *host_; }

    bool isMaterialPreview = false;
    bool overrideMaterials = false;
    Quenza::Vector<Quenza::String>* extraFiles = nullptr;

private:
    Quenza::TempDir folder_;
    std::unique_ptr<headless::Host> host_;
    std::unique_ptr<ExportContext> context_;
    Quenza::Ref<Quenza::SceneNodeRoot> scene_;
};
