// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"

class BaseDraw;
class BaseMaterial;
class BaseObject;
class AtomArray;
class BaseThread;
class LayerObject;

/// An effect of a render setup; the plug-in's render settings are one.
class BaseVideoPost : public BaseList2D {
public:
    static BaseVideoPost* Alloc(int32_t type);
    static void Free(BaseVideoPost*& videoPost);

    BaseVideoPost* GetNext() const;
};

/// One render setup of a document: image size, frame range, video posts.
class RenderData : public BaseList2D {
public:
    static RenderData* Alloc();

    BaseVideoPost* GetFirstVideoPost() const;
    void InsertVideoPost(BaseVideoPost* videoPost, BaseVideoPost* behind = nullptr);
};

enum UndoType : int32_t {
    UNDOTYPE_CHANGE = 40,
    UNDOTYPE_NEW = 44,
    UNDOTYPE_DELETE = 45,
};

class BaseDocument : public BaseList2D {
public:
    /// A new, empty document that the caller owns.
    static BaseDocument* Alloc();
    static void Free(BaseDocument*& document);

    BaseObject* GetFirstObject() const;
    BaseMaterial* GetFirstMaterial() const;
    RenderData* GetActiveRenderData() const;
    BaseDraw* GetActiveBaseDraw() const;
    /// The document takes over the node: as a child of `parent`, behind `behind`, or first of the list.
    void InsertObject(BaseObject* object, BaseObject* parent = nullptr, BaseObject* behind = nullptr);
    void InsertMaterial(BaseMaterial* material, BaseMaterial* behind = nullptr);

    /// The document takes over the setup, and makes it the active one.
    void InsertRenderData(RenderData* renderData);
    /// Root of the document's layers.
    LayerObject* GetLayerObjectRoot() const;
    /// Appends the selected materials, in the document's order.
    void GetActiveMaterials(AtomArray& materials) const;
    /// Appends all selected objects, tags and materials.
    void GetSelection(AtomArray& nodes) const;

    int32_t GetFps() const;
    void SetFps(int32_t fps);
    BaseTime GetTime() const;
    void SetTime(const BaseTime& time);
    BaseTime GetMinTime() const;
    BaseTime GetMaxTime() const;
    /// Moves one object, with all below it, to a time.
    void AnimateObject(BaseObject* object, const BaseTime& time, int32_t flags);
    /// Moves everything in the document to the document's time; expressions run when `expressions` is set.
    void AnimateDocument(BaseThread* thread, bool expressions);

    /// The folder of the document's file; empty while the document was never saved.
    Filename GetDocumentPath() const;
    Filename GetDocumentName() const;
    /// Neither touches the document's file.
    void SetDocumentPath(const Filename& folder);
    void SetDocumentName(const Filename& name);
    /// The document differs from its file.
    void SetChanged();

    void StartUndo();
    /// To be called before a change or a deletion, after a creation.
    void AddUndo(int32_t type, BaseList2D* node);
    void EndUndo();
    bool DoUndo();
};

BaseDocument* GetActiveDocument();
