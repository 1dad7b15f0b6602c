// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"

class BaseTag;
class BaseThread;

/// What a generator gets while its cache is built.
struct HierarchyHelp {
    BaseDocument* document = nullptr;
    BaseThread* thread = nullptr;
};

/// The layer's effect on an object.
struct LayerData {
    bool view = true;
    bool render = true;
    bool manager = true;
};

/// An object of the document's tree. The pointer type of a polygon object is PolygonObject.
class BaseObject : public BaseList2D {
public:
    /// A new object with its type's defaults; the caller owns it until it's inserted. Null for an unknown
    /// type.
    static BaseObject* Alloc(int32_t type);
    static void Free(BaseObject*& object);

    BaseObject* GetNext() const;
    BaseObject* GetPred() const;
    BaseObject* GetUp() const;
    BaseObject* GetDown() const;
    void InsertUnder(BaseObject* parent);

    /// Generated geometry of the object, null when there is none. It belongs to the object.
    BaseObject* GetCache(HierarchyHelp* help = nullptr) const;
    /// The deformed copy of the object or cache, null when no deformer acts on it.
    BaseObject* GetDeformCache() const;
    /// For an object inside a cache or a deform cache: the object of the document that made it; null
    /// elsewhere.
    BaseObject* GetTopOrigin() const;
    /// For the head of a cache: the object whose cache it is; null elsewhere.
    BaseObject* GetCacheParent() const;

    Matrix GetMg() const;
    Matrix GetMl() const;
    void SetMl(const Matrix& matrix);
    void SetMg(const Matrix& matrix);

    int32_t GetRenderMode() const;
    /// False for a generator, deformer or light that is switched off.
    bool GetDeformMode() const;
    /// Null when the object has no layer. With `raw` the layer's own record, else with the layers above it.
    const LayerData* GetLayerData(const BaseDocument* document, bool raw = false) const;
    /// Centre of the bounding box and half its size, in the object's space.
    Vector GetMp() const;
    Vector GetRad() const;

    BaseTag* GetFirstTag() const;
    BaseTag* GetLastTag() const;
    /// The nth tag of a type, from the left.
    BaseTag* GetTag(int32_t type, int32_t nth = 0) const;
    BaseTag* MakeTag(int32_t type);
    void InsertTag(BaseTag* tag, BaseTag* behind = nullptr);
};

/// An object with points and polygons. Arrays belong to the object and stay valid until it changes.
class PolygonObject : public BaseObject {
public:
    static PolygonObject* Alloc(int32_t pointCount, int32_t polygonCount);

    int32_t GetPointCount() const;
    int32_t GetPolygonCount() const;
    const Vector* GetPointR() const;
    const CPolygon* GetPolygonR() const;
    Vector* GetPointW();
    CPolygon* GetPolygonW();
    /// Twelve floats per polygon: a unit normal for each of four corners. The caller frees them with GeFree.
    /// Null without a phong tag.
    Vector* CreatePhongNormals() const;
};

enum ModelingCommand : int32_t {
    MCOMMAND_CURRENTSTATETOOBJECT = 100004768,
};

/// Runs a modelling command on `object`. The result is a new object that the caller owns, or null.
BaseObject* SendModelingCommand(int32_t command, BaseObject* object, BaseDocument* document);

/// The host's walk over a document: it builds all caches as for rendering and calls Do for each object, until
/// one call returns false. It never calls Do in a document without objects.
class Hierarchy {
public:
    virtual ~Hierarchy() = default;

    virtual void* Alloc() { return nullptr; }
    virtual void Free(void* /*data*/) {}
    virtual void CopyTo(void* /*source*/, void* /*destination*/) {}
    virtual bool Do(void* data, BaseObject* object, const Matrix& matrix, bool controlObject) = 0;

    /// False when the thread was asked to end before the walk was through.
    bool Run(BaseDocument* document, bool splines, float levelOfDetail, int32_t flags, void* startData,
             BaseThread* thread);
};
