// SPDX-License-Identifier: MIT
#include "headless/build/animation.h"
#include "headless/build/caches.h"
#include "headless/model/node_types.h"
#include "headless/tables/adopt.h"
#include "headless/tables/tables.h"
#include "host/atomarray.h"

namespace headless {

namespace {

BaseDocument* getActiveDocument() {
    return toHost(activeDocument());
}

BaseDocument* alloc() {
    return toHost(std::make_unique<Document>().release());
}

BaseObject* getFirstObject(const BaseDocument* document) {
    return toHost(fromHost(document)->objects().first());
}

BaseMaterial* getFirstMaterial(const BaseDocument* document) {
    return toHost(fromHost(document)->materials().first());
}

::RenderData* getActiveRenderData(const BaseDocument* document) {
    return toHost(fromHost(document)->activeRenderData());
}

BaseDraw* getActiveBaseDraw(const BaseDocument* document) {
    return toHost(&fromHost(document)->view());
}

/// The node of the document's tree that is given as a place, or null: one of another document or of a cache,
/// or one inside `inserted`, is none.
Object* placeIn(Document& document, BaseObject* place, const Object& inserted) {
    Object* const object = fromHost(place);
    const bool usable =
        object && object->document() == &document && !object->topOrigin() && !object->isWithin(inserted);
    return usable ? object : nullptr;
}

void insertObject(BaseDocument* document, BaseObject* object, BaseObject* parent, BaseObject* behind) {
    if (!object) {
        return;
    }
    Document& target = *fromHost(document);
    Object* const under = placeIn(target, parent, *fromHost(object));
    Object* const pred = placeIn(target, behind, *fromHost(object));
    if (std::unique_ptr<Object> adopted = adopt(object)) {
        target.insertObject(std::move(adopted), under, pred);
    }
}

void insertMaterial(BaseDocument* document, BaseMaterial* material, BaseMaterial* behind) {
    Document& target = *fromHost(document);
    Material* const pred = behind && behind != material ? fromHost(behind) : nullptr;
    if (std::unique_ptr<Material> adopted = adopt(material)) {
        target.insertMaterial(std::move(adopted), pred && pred->document() == &target ? pred : nullptr);
    }
}

int32_t getFps(const BaseDocument* document) {
    return fromHost(document)->fps();
}

void setFps(BaseDocument* document, int32_t fps) {
    fromHost(document)->setFps(fps);
}

BaseTime getTime(const BaseDocument* document) {
    return fromHost(document)->time;
}

void setTime(BaseDocument* document, const BaseTime& time) {
    fromHost(document)->time = time;
}

BaseTime getMinTime(const BaseDocument* document) {
    return fromHost(document)->minTime;
}

BaseTime getMaxTime(const BaseDocument* document) {
    return fromHost(document)->maxTime;
}

void moveObject(BaseDocument*, BaseObject* object, const BaseTime& time, int32_t) {
    if (object) {
        animateObject(*fromHost(object), time);
    }
}

/// There are no expressions here, nothing but tracks moves a document.
void moveDocument(BaseDocument* document, BaseThread*, bool) {
    animateDocument(*fromHost(document));
}

Filename getDocumentPath(const BaseDocument* document) {
    return fromHost(document)->path;
}

Filename getDocumentName(const BaseDocument* document) {
    return fromHost(document)->fileName;
}

void startUndo(BaseDocument* document) {
    fromHost(document)->undo().start();
}

void addUndo(BaseDocument* document, int32_t type, BaseList2D* node) {
    const bool known = type == UNDOTYPE_CHANGE || type == UNDOTYPE_NEW || type == UNDOTYPE_DELETE;
    if (node && known) {
        fromHost(document)->undo().add(static_cast<UndoType>(type), *fromHost(node));
    }
}

void endUndo(BaseDocument* document) {
    fromHost(document)->undo().end();
}

bool doUndo(BaseDocument* document) {
    return fromHost(document)->undo().undo();
}

BaseVideoPost* allocVideoPost(int32_t type) {
    return toHost(createVideoPost(type).release());
}

BaseVideoPost* getFirstVideoPost(const ::RenderData* renderData) {
    return toHost(fromHost(renderData)->videoPosts().first());
}

BaseVideoPost* getNextVideoPost(const BaseVideoPost* videoPost) {
    return toHost(fromHost(videoPost)->next);
}

void insertVideoPost(::RenderData* renderData, BaseVideoPost* videoPost, BaseVideoPost* behind) {
    RenderDataNode& target = *fromHost(renderData);
    VideoPost* const pred = behind && behind != videoPost ? fromHost(behind) : nullptr;
    if (std::unique_ptr<VideoPost> adopted = adopt(videoPost)) {
        target.insertVideoPost(std::move(adopted), pred && pred->renderData() == &target ? pred : nullptr);
    }
}

::RenderData* allocRenderData() {
    return toHost(createRenderData().release());
}

void insertRenderData(BaseDocument* document, ::RenderData* renderData) {
    if (std::unique_ptr<RenderDataNode> adopted = adopt(renderData)) {
        Document& target = *fromHost(document);
        target.setActiveRenderData(target.insertRenderData(std::move(adopted), target.renderData().last()));
    }
}

LayerObject* getLayerObjectRoot(const BaseDocument* document) {
    return toHost(&fromHost(document)->layerRoot());
}

LayerObject* allocLayer() {
    return toHost(std::make_unique<Layer>().release());
}

LayerObject* getDownLayer(const LayerObject* layer) {
    return toHost(fromHost(layer)->children().first());
}

LayerObject* getNextLayer(const LayerObject* layer) {
    return toHost(fromHost(layer)->next);
}

void insertLayerUnder(LayerObject* layer, LayerObject* parent) {
    if (layer && parent && !fromHost(parent)->isWithin(*fromHost(layer))) {
        if (std::unique_ptr<Layer> adopted = adopt(layer)) {
            fromHost(parent)->insertChild(std::move(adopted), nullptr);
        }
    }
}

void appendSelected(const Node& node, AtomArray& selected) {
    if ((node.info & BIT_ACTIVE) != 0) {
        selected.Append(toHost(&node));
    }
}

void getActiveMaterials(const BaseDocument* document, AtomArray& selected) {
    for (const Material* material = fromHost(document)->materials().first(); material;
         material = material->next) {
        appendSelected(*material, selected);
    }
}

/// Objects as the hierarchy shows them, each with its tags behind it, then materials.
void getSelection(const BaseDocument* document, AtomArray& selected) {
    const Object* object = fromHost(document)->objects().first();
    while (object) {
        appendSelected(*object, selected);
        for (const Tag* tag = object->tags().first(); tag; tag = tag->next) {
            appendSelected(*tag, selected);
        }
        if (object->children().first()) {
            object = object->children().first();
            continue;
        }
        while (object && !object->next) {
            object = object->parent();
        }
        object = object ? object->next : nullptr;
    }
    getActiveMaterials(document, selected);
}

void setDocumentPath(BaseDocument* document, const Filename& folder) {
    fromHost(document)->path = folder;
}

void setDocumentName(BaseDocument* document, const Filename& name) {
    fromHost(document)->fileName = name;
}

void setChanged(BaseDocument* document) {
    fromHost(document)->changed = true;
}

} // namespace

const DocumentTable* documentTable() {
    static constexpr DocumentTable table = {
        .GetActiveDocument = getActiveDocument,
        .Alloc = alloc,
        .GetFirstObject = getFirstObject,
        .GetFirstMaterial = getFirstMaterial,
        .GetActiveRenderData = getActiveRenderData,
        .GetActiveBaseDraw = getActiveBaseDraw,
        .InsertObject = insertObject,
        .InsertMaterial = insertMaterial,
        .GetFps = getFps,
        .SetFps = setFps,
        .GetTime = getTime,
        .SetTime = setTime,
        .GetMinTime = getMinTime,
        .GetMaxTime = getMaxTime,
        .AnimateObject = moveObject,
        .AnimateDocument = moveDocument,
        .GetDocumentPath = getDocumentPath,
        .GetDocumentName = getDocumentName,
        .StartUndo = startUndo,
        .AddUndo = addUndo,
        .EndUndo = endUndo,
        .DoUndo = doUndo,
        .AllocVideoPost = allocVideoPost,
        .GetFirstVideoPost = getFirstVideoPost,
        .GetNextVideoPost = getNextVideoPost,
        .InsertVideoPost = insertVideoPost,
        .AllocRenderData = allocRenderData,
        .InsertRenderData = insertRenderData,
        .GetLayerObjectRoot = getLayerObjectRoot,
        .AllocLayer = allocLayer,
        .GetDownLayer = getDownLayer,
        .GetNextLayer = getNextLayer,
        .InsertLayerUnder = insertLayerUnder,
        .GetActiveMaterials = getActiveMaterials,
        .GetSelection = getSelection,
        .SetDocumentPath = setDocumentPath,
        .SetDocumentName = setDocumentName,
        .SetChanged = setChanged,
    };
    return &table;
}

} // namespace headless
