// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/chain.h"
#include "headless/model/tag.h"
#include "host/ids.h"

#include <vector>

namespace headless {

/// Geometry that was built for an object, and what it was built from.
struct Generated;

/// An object of a document's tree, or of the tree in a cache. A scene holds a million of them: what few
/// objects have lies outside.
class Object : public Node {
public:
    explicit Object(int32_t type);
    ~Object() override;

    /// Local matrix: from the object's space to its parent's.
    Matrix matrix;
    /// RenderMode.
    uint8_t renderMode = MODE_UNDEF;
    /// As `renderMode`, for the editor's views.
    uint8_t editorMode = MODE_UNDEF;
    /// False for a generator, deformer or light that is switched off.
    bool enabled = true;

    Object* parent() const { return parent_; }
    const Chain<Object>& children() const { return children_; }
    Object* next = nullptr;
    Object* pred = nullptr;
    /// Takes over `object` as a child: behind `behind`, which is a child, or first when that is null.
    Object& insertChild(std::unique_ptr<Object> object, Object* behind);
    Object& appendChild(std::unique_ptr<Object> object) {
        return insertChild(std::move(object), children_.last());
    }
    /// True for `ancestor` itself and all below it. Leaves caches through their generator. At once when
    /// `ancestor` has neither children nor a cache.
    bool isWithin(const Object& ancestor) const;
    /// Next in the order in which the tree is read (an object stands before its children), null at the end of
    /// the branch below and including `root`.
    Object* nextInBranch(const Object& root) const;
    /// The same behind all that is below this object.
    Object* nextBehind(const Object& root) const;

    const Chain<Tag>& tags() const { return tags_; }
    Tag& insertTag(std::unique_ptr<Tag> tag, Tag* behind);
    Tag& appendTag(std::unique_ptr<Tag> tag) { return insertTag(std::move(tag), tags_.last()); }
    std::unique_ptr<Tag> removeTag(Tag& tag);
    /// The nth tag of a type, from the left; null when there are fewer.
    Tag* tag(int32_t type, int32_t nth = 0) const;

    /// The object's layer, or in a cache, for an object without one, that of the objects from there up to the
    /// one of the document that made it: what is generated hides with its generator.
    const Layer* effectiveLayer() const;

    /// World matrix. In a cache it goes on at the object whose cache it is.
    Matrix globalMatrix() const;
    void setGlobalMatrix(const Matrix& matrix);

    /// Generated geometry: one object, with others below it. Null when there is none.
    Object* cache() const;
    /// The deformed copy of a polygon object. Its matrix is the identity: it stands in the object's space.
    Object* deformCache() const;
    /// For the head of a cache or deform cache: the object whose cache it is; else null.
    Object* cacheParent() const { return cacheParent_; }
    /// For an object in a cache: the object of the document that made it; else null.
    Object* topOrigin() const;
    /// Parent, or at the head of a cache the object whose cache it is.
    Object* parentOrCacheParent() const { return parent_ ? parent_ : cacheParent_; }

    /// For the builders: the caches' place, made when missing.
    Generated& generated();
    const Generated* generatedIfAny() const { return generated_.get(); }
    void setCache(std::unique_ptr<Object> cache);
    void setDeformCache(std::unique_ptr<Object> cache);
    void dropGenerated();

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
    void visitOwned(Owned which, const std::function<void(Node&)>& visit) const override;
    void appendOwned(std::unique_ptr<Node> node) override;
    void setDocument(Document* document) override;

private:
    friend std::unique_ptr<Node> removeNode(Node&);
    friend class Document;

    Object* parent_ = nullptr;
    Object* cacheParent_ = nullptr;
    Chain<Object> children_;
    Chain<Tag> tags_;
    std::unique_ptr<Generated> generated_;
};

struct Generated {
    std::unique_ptr<Object> cache;
    std::unique_ptr<Object> deformCache;
    /// Fingerprints of what the caches were built from; a cache with another one is stale.
    uint64_t cacheKey = 0;
    uint64_t deformKey = 0;
};

/// An object with points and polygons, in the object's space.
class PolygonNode : public Object {
public:
    PolygonNode(size_t pointCount, size_t polygonCount);

    std::vector<Vector> points;
    std::vector<CPolygon> polygons;
    /// Edges that a phong tag with edge breaks doesn't smooth, numbered polygon * 4 + edge: a-b is 0, b-c 1,
    /// c-d 2, d-a 3.
    BaseSelect brokenEdges;

    /// True when all corners of polygons are points of the object: a plug-in may have written anything.
    bool hasValidIndices() const;

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
};

/// Null unless `object` is a polygon object.
PolygonNode* asPolygons(Object* object);
const PolygonNode* asPolygons(const Object* object);

} // namespace headless
