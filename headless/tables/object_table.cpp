// SPDX-License-Identifier: MIT
#include "headless/build/caches.h"
#include "headless/build/hierarchy_walk.h"
#include "headless/build/modeling.h"
#include "headless/build/surface_data.h"
#include "headless/model/node_types.h"
#include "headless/tables/adopt.h"
#include "headless/tables/tables.h"

namespace headless {

namespace {

BaseObject* alloc(int32_t type) {
    return toHost(createObject(type).release());
}

::PolygonObject* allocPolygonObject(int32_t pointCount, int32_t polygonCount) {
    if (pointCount < 0 || polygonCount < 0) {
        return nullptr;
    }
    return toHost(
        createPolygons(static_cast<size_t>(pointCount), static_cast<size_t>(polygonCount)).release());
}

BaseObject* getNext(const BaseObject* object) {
    return toHost(fromHost(object)->next);
}

BaseObject* getPred(const BaseObject* object) {
    return toHost(fromHost(object)->pred);
}

BaseObject* getUp(const BaseObject* object) {
    return toHost(fromHost(object)->parent());
}

BaseObject* getDown(const BaseObject* object) {
    return toHost(fromHost(object)->children().first());
}

void insertUnder(BaseObject* object, BaseObject* parent) {
    // An object can't come below itself.
    if (object && parent && !fromHost(parent)->isWithin(*fromHost(object))) {
        if (std::unique_ptr<Object> adopted = adopt(object)) {
            fromHost(parent)->insertChild(std::move(adopted), nullptr);
        }
    }
}

BaseObject* getCache(const BaseObject* object, HierarchyHelp* help) {
    Object& generator = *fromHost(object);
    if (help && !generator.cache()) {
        buildCaches(generator);
    }
    return toHost(generator.cache());
}

BaseObject* getDeformCache(const BaseObject* object) {
    return toHost(fromHost(object)->deformCache());
}

BaseObject* getTopOrigin(const BaseObject* object) {
    return toHost(fromHost(object)->topOrigin());
}

BaseObject* getCacheParent(const BaseObject* object) {
    return toHost(fromHost(object)->cacheParent());
}

Matrix getMg(const BaseObject* object) {
    return fromHost(object)->globalMatrix();
}

Matrix getMl(const BaseObject* object) {
    return fromHost(object)->matrix;
}

void setMl(BaseObject* object, const Matrix& matrix) {
    fromHost(object)->matrix = matrix;
}

void setMg(BaseObject* object, const Matrix& matrix) {
    fromHost(object)->setGlobalMatrix(matrix);
}

int32_t getRenderMode(const BaseObject* object) {
    return fromHost(object)->renderMode;
}

bool getDeformMode(const BaseObject* object) {
    return fromHost(object)->enabled;
}

const LayerData* getLayerData(const BaseObject* object, const BaseDocument* document, bool raw) {
    const Layer* const layer = fromHost(object)->effectiveLayer();
    if (!layer || (document && layer->document() != fromHost(document))) {
        return nullptr;
    }
    return raw ? &layer->ownFlags() : &layer->flags();
}

Vector getMp(const BaseObject* object) {
    return objectBounds(*fromHost(object)).centre;
}

Vector getRad(const BaseObject* object) {
    return objectBounds(*fromHost(object)).radius;
}

BaseTag* getFirstTag(const BaseObject* object) {
    return toHost(fromHost(object)->tags().first());
}

BaseTag* getLastTag(const BaseObject* object) {
    return toHost(fromHost(object)->tags().last());
}

BaseTag* getTag(const BaseObject* object, int32_t type, int32_t nth) {
    return toHost(fromHost(object)->tag(type, nth));
}

void insertTag(BaseObject* object, BaseTag* tag, BaseTag* behind) {
    Object& owner = *fromHost(object);
    if (std::unique_ptr<Tag> adopted = behind == tag ? nullptr : adopt(tag)) {
        Tag* const place = behind && fromHost(behind)->object() == &owner ? fromHost(behind) : nullptr;
        owner.insertTag(std::move(adopted), place);
    }
}

int32_t getPointCount(const ::PolygonObject* object) {
    return static_cast<int32_t>(fromHost(object)->points.size());
}

int32_t getPolygonCount(const ::PolygonObject* object) {
    return static_cast<int32_t>(fromHost(object)->polygons.size());
}

Vector* getPoints(::PolygonObject* object) {
    return fromHost(object)->points.data();
}

CPolygon* getPolygons(::PolygonObject* object) {
    return fromHost(object)->polygons.data();
}

Vector* createNormals(const ::PolygonObject* object) {
    return createPhongNormals(*fromHost(object));
}

BaseObject* sendModelingCommand(int32_t command, BaseObject* object, BaseDocument*) {
    if (command != MCOMMAND_CURRENTSTATETOOBJECT || !object) {
        return nullptr;
    }
    return toHost(currentStateToObject(*fromHost(object)).release());
}

/// Splines and levels of detail don't exist here, and the flags ask for the caches of a render, the only kind
/// that there is.
bool run(Hierarchy* walk, BaseDocument* document, bool, float, int32_t, void* startData, BaseThread* thread) {
    return walk && document && runHierarchy(*walk, *fromHost(document), startData, thread);
}

} // namespace

const ObjectTable* objectTable() {
    static constexpr ObjectTable table = {
        .Alloc = alloc,
        .AllocPolygonObject = allocPolygonObject,
        .GetNext = getNext,
        .GetPred = getPred,
        .GetUp = getUp,
        .GetDown = getDown,
        .InsertUnder = insertUnder,
        .GetCache = getCache,
        .GetDeformCache = getDeformCache,
        .GetTopOrigin = getTopOrigin,
        .GetCacheParent = getCacheParent,
        .GetMg = getMg,
        .GetMl = getMl,
        .SetMl = setMl,
        .SetMg = setMg,
        .GetRenderMode = getRenderMode,
        .GetDeformMode = getDeformMode,
        .GetLayerData = getLayerData,
        .GetMp = getMp,
        .GetRad = getRad,
        .GetFirstTag = getFirstTag,
        .GetLastTag = getLastTag,
        .GetTag = getTag,
        .InsertTag = insertTag,
        .GetPointCount = getPointCount,
        .GetPolygonCount = getPolygonCount,
        .GetPoints = getPoints,
        .GetPolygons = getPolygons,
        .CreatePhongNormals = createNormals,
        .SendModelingCommand = sendModelingCommand,
        .RunHierarchy = run,
    };
    return &table;
}

} // namespace headless
