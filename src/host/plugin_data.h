// SPDX-License-Identifier: MIT
#pragma once

#include "host/description.h"
#include "host/material.h"
#include "host/object.h"
#include "host/videopost.h"

class BaseDraw;
struct BaseDrawHelp;
class BaseTag;

// Base classes of what a plug-in registers. The plug-in allocates the instances, the host owns them after a
// successful registration or from the allocator's return on, and deletes them.

/// Behaviour of a node of a registered type; one instance per node.
class NodeData {
public:
    virtual ~NodeData() = default;

    /// Gives a new node its defaults.
    virtual bool Init(BaseList2D* /*node*/) { return true; }
    virtual void Free(BaseList2D* /*node*/) {}
    virtual bool Message(BaseList2D* /*node*/, int32_t /*type*/, void* /*data*/) { return true; }
    virtual bool CopyTo(NodeData* /*destination*/, BaseList2D* /*source*/, BaseList2D* /*target*/) {
        return true;
    }
    /// Fills `description`; sets DESCFLAGS_DESC_LOADED when it did.
    virtual bool GetDDescription(BaseList2D* /*node*/, Description* /*description*/, int32_t& /*flags*/) {
        return false;
    }
    virtual bool GetDEnabling(BaseList2D* /*node*/, const DescID& /*id*/) { return true; }
    /// Called before a parameter is set; `value` may be changed. False keeps the old value.
    virtual bool SetDParameter(BaseList2D* /*node*/, const DescID& /*id*/, GeData& /*value*/) { return true; }
};

class TagData : public NodeData {
public:
    virtual bool Draw(BaseTag* /*tag*/, BaseObject* /*object*/, BaseDraw* /*view*/, BaseDrawHelp* /*help*/) {
        return true;
    }
};

class ObjectData : public NodeData {
public:
    virtual bool Draw(BaseObject* /*object*/, BaseDraw* /*view*/, BaseDrawHelp* /*help*/) { return true; }
    /// Centre and half size of the bounding box, in the object's space.
    virtual void GetDimension(BaseObject* /*object*/, Vector* centre, Vector* radius) {
        *centre = Vector();
        *radius = Vector();
    }
    /// A generator's geometry; the host owns the result. Null for none.
    virtual BaseObject* GetVirtualObjects(BaseObject* /*object*/, HierarchyHelp* /*help*/) { return nullptr; }
};

class VideoPostData : public NodeData {
public:
    /// Called in each phase of a render that the video post takes part in, on the render's thread.
    /// `container` holds the video post's parameters. A RenderResult.
    virtual int32_t Execute(BaseVideoPost* /*videoPost*/, BaseContainer* /*container*/,
                            VideoPostStruct* /*vps*/) {
        return RENDERRESULT_OK;
    }
};

class MaterialData : public NodeData {
public:
    /// What the material asks of the host's renderer; no flags by default.
    virtual int32_t GetRenderInfo(BaseMaterial* /*material*/) { return 0; }
    /// A render begins. An InitRenderResult.
    virtual int32_t InitRender(BaseMaterial* /*material*/, const InitRenderStruct& /*init*/) {
        return INITRENDERRESULT_OK;
    }
    virtual void FreeRender(BaseMaterial* /*material*/) {}
    /// Fills the answers of `volume`. Any thread.
    virtual void CalcSurface(BaseMaterial* /*material*/, VolumeData* /*volume*/) {}
    /// Fills `transparency` of `volume`. Any thread.
    virtual void CalcTransparency(BaseMaterial* /*material*/, VolumeData* /*volume*/) {}
    /// Fills `bitmap`, an image of the viewport's size, with what the viewport shows of the material.
    virtual bool InitGLImage(BaseMaterial* /*material*/, BaseDocument* /*document*/, BaseThread* /*thread*/,
                             BaseBitmap* /*bitmap*/) {
        return false;
    }
};

class ShaderData : public NodeData {
public:
    /// A render or bake begins. An InitRenderResult.
    virtual int32_t InitRender(BaseShader* /*shader*/, const InitRenderStruct& /*init*/) {
        return INITRENDERRESULT_OK;
    }
    virtual void FreeRender(BaseShader* /*shader*/) {}
    /// The shader's value at a place. Any thread, between InitRender and FreeRender.
    virtual Vector Output(BaseShader* /*shader*/, const ChannelData& /*channel*/) { return Vector(); }
};

enum CommandState : int32_t { CMD_ENABLED = 1, CMD_VALUE = 2 };

class CommandData {
public:
    virtual ~CommandData() = default;

    virtual bool Execute(BaseDocument* document) = 0;
    virtual int32_t GetState(BaseDocument* /*document*/) { return CMD_ENABLED; }
    /// The host opens again what was open when it was closed: the command opens its dialog by
    /// GeDialog::RestoreLayout.
    virtual bool RestoreLayout(void* /*secret*/) { return false; }
};

class MessageData {
public:
    virtual ~MessageData() = default;

    virtual bool CoreMessage(int32_t id, const BaseContainer& message) = 0;
};

class CustomGuiData {
public:
    virtual ~CustomGuiData() = default;
};
