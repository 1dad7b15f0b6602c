// SPDX-License-Identifier: MIT
#include "headless/build/animation.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/tables/tables.h"

namespace headless {

namespace {

BaseDocument* getActiveDocument() {
    return toHost(activeDocument());
}

BaseDocument* alloc() {
    return toHost(new Document);
}

BaseObject* getFirstObject(const BaseDocument* document) {
    return toHost(fromHost(document)->objects().first());
}

BaseMaterial* getFirstMaterial(const BaseDocument* document) {
    return toHost(fromHost(document)->materials().first());
}

RenderData* getActiveRenderData(const BaseDocument* document) {
    return toHost(fromHost(document)->activeRenderData());
}

BaseDraw* getActiveBaseDraw(const BaseDocument* document) {
    return toHost(&fromHost(document)->view());
}

void insertObject(BaseDocument* document, BaseObject* object, BaseObject* parent, BaseObject* behind) {
    fromHost(document)->insertObject(std::unique_ptr<Object>(fromHost(object)), fromHost(parent),
                                     fromHost(behind));
}

void insertMaterial(BaseDocument* document, BaseMaterial* material, BaseMaterial* behind) {
    fromHost(document)->insertMaterial(std::unique_ptr<Material>(fromHost(material)), fromHost(behind));
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

void animateOneObject(BaseDocument* /*document*/, BaseObject* object, const BaseTime& time,
                      int32_t /*flags*/) {
    animateObject(*fromHost(object), time);
}

void animateWholeDocument(BaseDocument* document, BaseThread* /*thread*/, bool /*expressions*/) {
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
    fromHost(document)->undo().add(static_cast<UndoType>(type), *fromHost(node));
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

BaseVideoPost* getFirstVideoPost(const RenderData* renderData) {
    return toHost(fromHost(renderData)->videoPosts().first());
}

BaseVideoPost* getNextVideoPost(const BaseVideoPost* videoPost) {
    return toHost(fromHost(videoPost)->next);
}

void insertVideoPost(RenderData* renderData, BaseVideoPost* videoPost, BaseVideoPost* behind) {
    fromHost(renderData)->insertVideoPost(std::unique_ptr<VideoPost>(fromHost(videoPost)), fromHost(behind));
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
        .AnimateObject = animateOneObject,
        .AnimateDocument = animateWholeDocument,
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
    };
    return &table;
}

} // namespace headless
