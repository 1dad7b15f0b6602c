// SPDX-License-Identifier: MIT
#pragma once

#include "export/scene_exporter.h"
#include "headless/runtime/host.h"
#include "host/material.h"
#include "host/tag.h"
#include "scene/ostream.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/xml_write_options.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

/// A document in the stand-in host, built and exported in this process; the plug-in's node types are there as
/// plain nodes with empty containers. 1 unit is 1 metre.
class ExporterTest : public ::testing::Test {
protected:
    ExporterTest();
    ~ExporterTest() override;

    BaseDocument* document() const;
    /// Last below `parent`, or last of the document. The name is the object's.
    BaseObject* add(int32_t type, const char* name, BaseObject* parent = nullptr);
    /// A quad of side 1 in the host's XZ plane, facing up.
    PolygonObject* addQuad(const char* name, BaseObject* parent = nullptr);
    /// Polygons of four corners each, of a row of points along X.
    PolygonObject* addStrip(const char* name, int32_t polygonCount);
    BaseObject* addCube(const char* name, BaseObject* parent = nullptr);
    BaseObject* addInstance(const char* name, BaseObject* link, BaseObject* parent = nullptr);
    BaseTag* addTag(BaseObject* object, int32_t type);
    /// Kept behind all there are.
    BaseMaterial* addMaterial(int32_t type, const char* name = "");
    /// The settings of a video post of the plug-in, new in the document.
    BaseContainer& addVideoPost();
    TextureTag* addTexture(BaseObject* object, const char* restriction = "");
    /// UVW records of which each corner tells its polygon and place: (polygon + corner / 4, corner).
    UVWTag* addUvw(PolygonObject* object);
    SelectionTag* addSelection(PolygonObject* object, const char* name, const std::vector<int32_t>& polygons);
    void hide(BaseObject* object) const;
    /// By a compositing tag of its own.
    void setInvisible(BaseObject* object, bool isInvisible = true);
    static void move(BaseObject* object, const Vector& offset);
    static void scale(BaseObject* object, const Vector& factors);

    /// Builds the caches and exports. The context and the exporter stay for looking at.
    void exportScene();
    Quenza::SceneNodeRoot& scene() const { return *root_; }
    std::vector<Quenza::SceneNodeModel*> models() const {
        return nodes<Quenza::SceneNodeModel>(Quenza::NODE_MODEL);
    }
    std::vector<Quenza::SceneNodeMesh*> meshes() const {
        return nodes<Quenza::SceneNodeMesh>(Quenza::NODE_MESH);
    }
    /// Names of the models in scene order, with blanks between.
    std::string modelNames() const;
    Quenza::SceneNodeModel* model(const std::string& name) const;
    /// The mesh that a model shows.
    const Quenza::Mesh& meshOf(const std::string& name) const;
    template <class Node>
    std::vector<Node*> nodes(uint32_t type) const {
        std::vector<Node*> found;
        for (const Quenza::Ref<Quenza::SceneNode>& child : root_->getChildren()) {
            if (child->getType() == type) {
                found.push_back(static_cast<Node*>(child.getPointer()));
            }
        }
        return found;
    }
    std::vector<std::string> layerNames() const;
    std::vector<std::string> consoleLines() const { return host_->console().lines(); }

    struct Options {
        int32_t frame = 0;
        bool isAnimation = false;
        bool mergeVertices = true;
        bool verbose = false;
        bool gpuRendering = false;
        bool overrideMaterials = false;
    } options;

    std::filesystem::path folder() const { return folder_.path().toStdString(); }
    ExportContext& context() { return *context_; }
    SceneExporter& exporter() { return *exporter_; }
    headless::Host& host() { return *host_; }
    /// A context with the options, before anything was exported.
    ExportContext& makeContext();

private:
    headless::Object& append(std::unique_ptr<headless::Object> object, BaseObject* parent);

    const Quenza::TempDir folder_;
    std::unique_ptr<headless::Host> host_;
    std::unique_ptr<ExportContext> context_;
    std::unique_ptr<SceneExporter> exporter_;
    Quenza::Ref<Quenza::SceneNodeRoot> root_;
};

/// A matrix that tells its numbers when a test fails.
inline std::vector<double> numbers(const Quenza::Matrix3d& matrix) {
    return {matrix.e, matrix.e + 9};
}

/// What a part of a scene writes, on one line.
template <class Part>
std::string xml(Part&& part) {
    Quenza::BufferOStream stream;
    if constexpr (requires { part.writeToXML(stream, 0, Quenza::XMLWriteOptions()); }) {
        part.writeToXML(stream, 0, Quenza::XMLWriteOptions());
    } else {
        part.writeToXML(stream, 0);
    }
    std::string text = stream.getBuffer().toStdString();
    std::erase_if(text, [](char c) { return c == '\t' || c == '\n'; });
    return text;
}
