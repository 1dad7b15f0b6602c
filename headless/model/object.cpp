// SPDX-License-Identifier: MIT
#include "headless/model/object.h"

#include "headless/model/handles.h"
#include "headless/model/node_types.h"

#include <algorithm>

namespace headless {

Object::Object(int32_t type) : Node(NodeKind::object, type) {}

Object::~Object() {
    retire();
    tags_.clear();
    destroyTree(children_, [](Object& object) -> Chain<Object>& {
        object.parent_ = nullptr;
        return object.children_;
    });
}

Object& Object::insertChild(std::unique_ptr<Object> object, Object* behind) {
    Object& added = children_.insert(std::move(object), behind);
    added.parent_ = this;
    added.setDocument(document());
    return added;
}

bool Object::isWithin(const Object& ancestor) const {
    if (ancestor.children_.empty() && !ancestor.generated_) {
        return this == &ancestor;
    }
    const Object* object = this;
    while (object && object != &ancestor) {
        object = object->parentOrCacheParent();
    }
    return object != nullptr;
}

Object* Object::nextInBranch(const Object& root) const {
    return children_.first() ? children_.first() : nextBehind(root);
}

Object* Object::nextBehind(const Object& root) const {
    const Object* object = this;
    while (object != &root && !object->next) {
        object = object->parent_;
    }
    return object == &root ? nullptr : object->next;
}

Tag& Object::insertTag(std::unique_ptr<Tag> tag, Tag* behind) {
    Tag& added = tags_.insert(std::move(tag), behind);
    added.object_ = this;
    added.setDocument(document());
    return added;
}

std::unique_ptr<Tag> Object::removeTag(Tag& tag) {
    tag.object_ = nullptr;
    tag.setDocument(nullptr);
    return tags_.remove(tag);
}

Tag* Object::tag(int32_t type, int32_t nth) const {
    for (Tag* tag = tags_.first(); tag; tag = tag->next) {
        if (tag->type() == type && nth-- == 0) {
            return tag;
        }
    }
    return nullptr;
}

const Layer* Object::effectiveLayer() const {
    const Object* const top = topOrigin();
    for (const Object* object = this; object;
         object = object == top ? nullptr : object->parentOrCacheParent()) {
        const Layer* const own = object->layer();
        if (own || !top) {
            return own;
        }
    }
    return nullptr;
}

Matrix Object::globalMatrix() const {
    Matrix global = matrix;
    for (const Object* outer = parentOrCacheParent(); outer; outer = outer->parentOrCacheParent()) {
        global = outer->matrix * global;
    }
    return global;
}

void Object::setGlobalMatrix(const Matrix& global) {
    const Object* const outer = parentOrCacheParent();
    matrix = outer ? outer->globalMatrix().GetInverse() * global : global;
}

Object* Object::cache() const {
    return generated_ ? generated_->cache.get() : nullptr;
}

Object* Object::deformCache() const {
    return generated_ ? generated_->deformCache.get() : nullptr;
}

Object* Object::topOrigin() const {
    Object* origin = nullptr;
    for (const Object* object = this; object; object = object->parentOrCacheParent()) {
        if (!object->parent_ && object->cacheParent_) {
            origin = object->cacheParent_;
        }
    }
    return origin;
}

Generated& Object::generated() {
    if (!generated_) {
        generated_ = std::make_unique<Generated>();
    }
    return *generated_;
}

void Object::setCache(std::unique_ptr<Object> cache) {
    if (cache) {
        cache->cacheParent_ = this;
        cache->setDocument(document());
    }
    if (cache || generated_) {
        generated().cache = std::move(cache);
    }
}

void Object::setDeformCache(std::unique_ptr<Object> cache) {
    if (cache) {
        cache->cacheParent_ = this;
        cache->setDocument(document());
    }
    if (cache || generated_) {
        generated().deformCache = std::move(cache);
    }
}

void Object::dropGenerated() {
    generated_.reset();
}

void Object::assign(const Node& source) {
    Node::assign(source);
    const auto& other = static_cast<const Object&>(source);
    matrix = other.matrix;
    renderMode = other.renderMode;
    editorMode = other.editorMode;
    enabled = other.enabled;
}

std::unique_ptr<Node> Object::makeEmpty() const {
    auto made = std::make_unique<Object>(type());
    attachPluginData(*made);
    return made;
}

void Object::visitOwned(Owned which, const std::function<void(Node&)>& visit) const {
    for (Tag* tag = tags_.first(); tag; tag = tag->next) {
        visit(*tag);
    }
    if (which == Owned::all) {
        for (Object* child = children_.first(); child; child = child->next) {
            visit(*child);
        }
    }
}

void Object::appendOwned(std::unique_ptr<Node> node) {
    if (node->kind() == NodeKind::tag) {
        appendTag(std::unique_ptr<Tag>(static_cast<Tag*>(node.release())));
    } else {
        appendChild(std::unique_ptr<Object>(static_cast<Object*>(node.release())));
    }
}

void Object::setDocument(Document* document) {
    if (document == this->document()) {
        return; // All below is of the same document.
    }
    for (Object* object = this; object; object = object->nextInBranch(*this)) {
        object->Node::setDocument(document);
        for (Tag* tag = object->tags_.first(); tag; tag = tag->next) {
            tag->setDocument(document);
        }
        if (object->generated_) {
            for (Object* cache : {object->cache(), object->deformCache()}) {
                if (cache) {
                    cache->setDocument(document);
                }
            }
        }
    }
}

PolygonNode::PolygonNode(size_t pointCount, size_t polygonCount)
    : Object(Opolygon), points(pointCount), polygons(polygonCount) {}

void PolygonNode::assign(const Node& source) {
    Object::assign(source);
    const auto& other = static_cast<const PolygonNode&>(source);
    points = other.points;
    polygons = other.polygons;
    brokenEdges = other.brokenEdges;
}

bool PolygonNode::hasValidIndices() const {
    uint32_t largest = 0; // A negative index counts as a very large one.
    for (const CPolygon& p : polygons) {
        largest = std::max({largest, static_cast<uint32_t>(p.a), static_cast<uint32_t>(p.b),
                            static_cast<uint32_t>(p.c), static_cast<uint32_t>(p.d)});
    }
    return polygons.empty() || largest < points.size();
}

std::unique_ptr<Node> PolygonNode::makeEmpty() const {
    return std::make_unique<PolygonNode>(0, 0);
}

PolygonNode* asPolygons(Object* object) {
    return object && object->type() == Opolygon ? static_cast<PolygonNode*>(object) : nullptr;
}

const PolygonNode* asPolygons(const Object* object) {
    return asPolygons(const_cast<Object*>(object));
}

} // namespace headless
