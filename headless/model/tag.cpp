// SPDX-License-Identifier: MIT
#include "headless/model/tag.h"

#include "headless/model/handles.h"
#include "headless/model/node_types.h"

namespace headless {

Tag::Tag(int32_t type) : Node(NodeKind::tag, type) {}

Tag::~Tag() {
    retire();
}

std::unique_ptr<Node> Tag::makeEmpty() const {
    auto made = std::make_unique<Tag>(type());
    attachPluginData(*made);
    return made;
}

TextureTagNode::TextureTagNode() : Tag(Ttexture) {}

Material* TextureTagNode::material() const {
    return static_cast<Material*>(fromHost(material_.GetLink()));
}

void TextureTagNode::setMaterial(Material* material) {
    material_.SetLink(toHost(material));
}

void TextureTagNode::assign(const Node& source) {
    Tag::assign(source);
    const auto& other = static_cast<const TextureTagNode&>(source);
    matrix = other.matrix;
    material_ = other.material_;
}

std::unique_ptr<Node> TextureTagNode::makeEmpty() const {
    return std::make_unique<TextureTagNode>();
}

void TextureTagNode::visitLinks(const std::function<void(BaseLink&)>& visit) {
    Tag::visitLinks(visit);
    visit(material_);
}

UVWTagNode::UVWTagNode(size_t count) : Tag(Tuvw), records(count) {}

void UVWTagNode::assign(const Node& source) {
    Tag::assign(source);
    records = static_cast<const UVWTagNode&>(source).records;
}

std::unique_ptr<Node> UVWTagNode::makeEmpty() const {
    return std::make_unique<UVWTagNode>();
}

SelectionTagNode::SelectionTagNode() : Tag(Tpolygonselection) {}

void SelectionTagNode::assign(const Node& source) {
    Tag::assign(source);
    selection = static_cast<const SelectionTagNode&>(source).selection;
}

std::unique_ptr<Node> SelectionTagNode::makeEmpty() const {
    return std::make_unique<SelectionTagNode>();
}

} // namespace headless
