// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/descid.h"

class BaseDocument;
class LayerObject;
class NodeData;

/// A node of the host: an element of a document with a type, a name, info flags and a container of
/// parameters. Opaque: identity is the pointer, and the document that holds a node owns it. Objects, tags,
/// materials, shaders, render data, video posts and the document itself are nodes.
class BaseList2D {
public:
    BaseList2D() = delete;
    BaseList2D(const BaseList2D&) = delete;
    BaseList2D& operator=(const BaseList2D&) = delete;

    int32_t GetType() const;
    /// True for the node's own type and the base types that it has (Obase, Tbase, ...).
    bool IsInstanceOf(int32_t type) const;
    String GetName() const;
    void SetName(const String& name);

    int32_t GetInfo() const;
    bool GetBit(int32_t mask) const { return (GetInfo() & mask) != 0; }
    void SetBit(int32_t mask);
    void DelBit(int32_t mask);

    /// The live container of the node's parameters.
    BaseContainer* GetDataInstance();
    const BaseContainer* GetDataInstance() const;
    bool GetParameter(const DescID& id, GeData& data) const;
    bool SetParameter(const DescID& id, const GeData& data);

    /// Null for a node outside any document.
    BaseDocument* GetDocument() const;
    /// The plug-in's instance behind a node of a registered type, or null.
    NodeData* GetNodeData() const;
    bool Message(int32_t type, void* data = nullptr);
    /// A number that differs after each change of the node's parameters or its place in space.
    uint32_t GetDirty() const;

    /// Null when the node is on no layer.
    LayerObject* GetLayerObject() const;
    /// Null takes the node from its layer.
    void SetLayerObject(LayerObject* layer);

    /// A copy with all below it, outside any document; links between copied nodes lead to the copies.
    /// The caller owns it until it's inserted.
    BaseList2D* GetClone() const;
    /// Takes the node out of its list; the caller owns it then.
    void Remove();
};

struct DescriptionCommand {
    /// Of the button.
    DescID id;
};

/// Data of MSG_RENDER_PREPARE when one material takes another's place.
struct MaterialExchange {
    class BaseMaterial* oldMaterial = nullptr;
    class BaseMaterial* newMaterial = nullptr;
};

enum NodeMessage : int32_t {
    /// The node has changed.
    MSG_UPDATE = 5,
    /// A button of the node's page was pressed; the data is a DescriptionCommand.
    MSG_DESCRIPTION_COMMAND = 18,
    /// The node's page is about to be shown.
    MSG_DESCRIPTION_VALIDATE = 20,
    /// A parameter of the node was set.
    MSG_DESCRIPTION_POSTSETPARAMETER = 31,
    /// Without data a render is about to begin, or unused materials are about to be removed and each material
    /// marks
    /// those that it uses. With data, a MaterialExchange, a material takes another's place.
    MSG_RENDER_PREPARE = 1073741828,
};
