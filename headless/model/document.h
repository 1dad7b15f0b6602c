// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/layer.h"
#include "headless/model/material.h"
#include "headless/model/object.h"
#include "headless/model/render_data.h"
#include "headless/model/undo.h"
#include "headless/model/view.h"
#include "host/filename.h"

namespace headless {

/// A document: owner of all that is in it. New ones are empty but for one render setup, which is active.
class Document : public Node {
public:
    Document();
    ~Document() override;

    const Chain<Object>& objects() const { return objects_; }
    /// Takes over `object`: behind `behind` (in the list of that), else as the first child of `parent`, else
    /// first of the document. Neither place may lie inside `object`.
    Object& insertObject(std::unique_ptr<Object> object, Object* parent = nullptr, Object* behind = nullptr);
    Object& appendObject(std::unique_ptr<Object> object);

    const Chain<Material>& materials() const { return materials_; }
    /// Behind `behind`, or first when that is null.
    Material& insertMaterial(std::unique_ptr<Material> material, Material* behind = nullptr);
    Material& appendMaterial(std::unique_ptr<Material> material) {
        return insertMaterial(std::move(material), materials_.last());
    }

    /// The root of the layers: nothing can be on it, and it stays.
    const Layer& layerRoot() const { return layerRoot_; }
    Layer& layerRoot() { return layerRoot_; }
    /// The layers at the top.
    const Chain<Layer>& layers() const { return layerRoot_.children(); }
    Layer& insertLayer(std::unique_ptr<Layer> layer, Layer* behind = nullptr) {
        return layerRoot_.insertChild(std::move(layer), behind);
    }
    Layer& appendLayer(std::unique_ptr<Layer> layer) {
        return insertLayer(std::move(layer), layers().last());
    }

    const Chain<RenderDataNode>& renderData() const { return renderData_; }
    RenderDataNode& insertRenderData(std::unique_ptr<RenderDataNode> renderData, RenderDataNode* behind);
    /// Null only when the last one was removed.
    RenderDataNode* activeRenderData() const { return activeRenderData_; }
    /// One of this document.
    void setActiveRenderData(RenderDataNode& renderData) { activeRenderData_ = &renderData; }

    View& view() { return view_; }
    const View& view() const { return view_; }
    UndoStack& undo() { return undo_; }

    /// For a document that was just copied from `source`: the choices among its nodes, which `copyOf` leads
    /// to their copies.
    void adoptChoices(const Document& source, const std::function<Node*(const Node*)>& copyOf);

    int32_t fps() const { return fps_; }
    /// At least 1.
    void setFps(int32_t fps);
    BaseTime time;
    BaseTime minTime{0.0};
    BaseTime maxTime{3.0};

    /// Folder and name of the document's file; the folder is empty while it was never saved.
    Filename path;
    Filename fileName;
    /// The document was told to differ from its file.
    bool changed = false;

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
    void visitOwned(Owned which, const std::function<void(Node&)>& visit) const override;
    void appendOwned(std::unique_ptr<Node> node) override;

private:
    friend std::unique_ptr<Node> removeNode(Node&);

    int32_t fps_ = 30;
    Layer layerRoot_;
    Chain<Material> materials_;
    Chain<Object> objects_;
    Chain<RenderDataNode> renderData_;
    RenderDataNode* activeRenderData_ = nullptr;
    View view_;
    UndoStack undo_{*this};
};

/// The document that the artist sees; null until one was set. Not owned.
Document* activeDocument();
void setActiveDocument(Document* document);

} // namespace headless
