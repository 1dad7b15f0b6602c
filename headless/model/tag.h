// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/node.h"
#include "host/baseselect.h"
#include "host/vector.h"

namespace headless {

class Material;
class Object;

/// A tag. Its place among the object's tags counts.
class Tag : public Node {
public:
    explicit Tag(int32_t type);
    ~Tag() override;

    /// The object that carries the tag, or null.
    Object* object() const { return object_; }

    Tag* next = nullptr;
    Tag* pred = nullptr;

    std::unique_ptr<Node> makeEmpty() const override;

private:
    friend class Object;
    Object* object_ = nullptr;
};

/// A material on an object with its projection.
class TextureTagNode : public Tag {
public:
    TextureTagNode();

    Material* material() const;
    void setMaterial(Material* material);
    /// The texture's place in the space of the object that carries the tag: offset, and axes of half the
    /// texture's extents. Projections other than UVW mapping use it.
    Matrix matrix;

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
    void visitLinks(const std::function<void(BaseLink&)>& visit) override;

private:
    BaseLink material_;
};

/// Texture coordinates, one record per polygon.
class UVWTagNode : public Tag {
public:
    explicit UVWTagNode(size_t count = 0);

    std::vector<UVWStruct> records;

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
};

/// A named selection of polygons.
class SelectionTagNode : public Tag {
public:
    SelectionTagNode();

    BaseSelect selection;

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
};

} // namespace headless
