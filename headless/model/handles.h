// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"
#include "headless/model/material.h"
#include "headless/model/object.h"
#include "headless/model/render_data.h"
#include "headless/model/tag.h"
#include "headless/model/view.h"
#include "host/document.h"
#include "host/layer.h"
#include "host/material.h"
#include "host/object.h"
#include "host/tag.h"

// The host's pointers are the addresses of our nodes under other types: this file alone turns one into the
// other. All nodes have `Node` as their first and only base, so that a cast between the host's own classes
// (BaseList2D to BaseObject, say) keeps the address right. A null pointer stays null.

namespace headless {

inline BaseList2D* toHost(const Node* node) {
    return reinterpret_cast<BaseList2D*>(const_cast<Node*>(node));
}
inline Node* fromHost(const BaseList2D* node) {
    return reinterpret_cast<Node*>(const_cast<BaseList2D*>(node));
}

/// Pairs of a class of the model and the host's class that stands for it.
template <class Ours>
struct HostClass;
template <class Theirs>
struct ModelClass;

#define HEADLESS_HANDLE(OURS, THEIRS)                                                                        \
    template <>                                                                                              \
    struct HostClass<OURS> {                                                                                 \
        using Type = THEIRS;                                                                                 \
    };                                                                                                       \
    template <>                                                                                              \
    struct ModelClass<THEIRS> {                                                                              \
        using Type = OURS;                                                                                   \
    };
HEADLESS_HANDLE(Object, ::BaseObject)
HEADLESS_HANDLE(PolygonNode, ::PolygonObject)
HEADLESS_HANDLE(Tag, ::BaseTag)
HEADLESS_HANDLE(TextureTagNode, ::TextureTag)
HEADLESS_HANDLE(UVWTagNode, ::UVWTag)
HEADLESS_HANDLE(SelectionTagNode, ::SelectionTag)
HEADLESS_HANDLE(Material, ::BaseMaterial)
HEADLESS_HANDLE(Shader, ::BaseShader)
HEADLESS_HANDLE(VideoPost, ::BaseVideoPost)
HEADLESS_HANDLE(RenderDataNode, ::RenderData)
HEADLESS_HANDLE(Layer, ::LayerObject)
HEADLESS_HANDLE(Document, ::BaseDocument)
#undef HEADLESS_HANDLE

template <class Ours>
typename HostClass<Ours>::Type* toHost(const Ours* node) {
    return reinterpret_cast<typename HostClass<Ours>::Type*>(toHost(static_cast<const Node*>(node)));
}

template <class Theirs>
typename ModelClass<Theirs>::Type* fromHost(const Theirs* node) {
    return static_cast<typename ModelClass<Theirs>::Type*>(
        reinterpret_cast<Node*>(const_cast<Theirs*>(node)));
}

/// A view is no node.
inline BaseDraw* toHost(const View* view) {
    return reinterpret_cast<BaseDraw*>(const_cast<View*>(view));
}
inline View* fromHost(const BaseDraw* view) {
    return reinterpret_cast<View*>(const_cast<BaseDraw*>(view));
}

} // namespace headless
