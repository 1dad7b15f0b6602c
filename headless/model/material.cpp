// SPDX-License-Identifier: MIT
#include "headless/model/material.h"

#include "headless/model/node_types.h"

#include <vector>

namespace headless {

Shader::Shader(int32_t type) : Node(NodeKind::shader, type) {}

Shader::~Shader() {
    retire();
    destroyTree(children_, [](Shader& shader) -> Chain<Shader>& {
        shader.parent_ = nullptr;
        return shader.children_;
    });
}

Shader& Shader::insertChild(std::unique_ptr<Shader> shader, Shader* behind) {
    Shader& added = children_.insert(std::move(shader), behind);
    added.parent_ = this;
    added.setDocument(document());
    return added;
}

Material* Shader::material() const {
    const Shader* shader = this;
    while (shader->parent_) {
        shader = shader->parent_;
    }
    return shader->material_;
}

bool Shader::isWithin(const Shader& shader) const {
    const Shader* place = this;
    while (place && place != &shader) {
        place = place->parent_;
    }
    return place != nullptr;
}

std::unique_ptr<Node> Shader::makeEmpty() const {
    auto made = std::make_unique<Shader>(type());
    attachPluginData(*made);
    return made;
}

void Shader::visitOwned(Owned, const std::function<void(Node&)>& visit) const {
    for (Shader* child = children_.first(); child; child = child->next) {
        visit(*child);
    }
}

void Shader::appendOwned(std::unique_ptr<Node> node) {
    insertChild(std::unique_ptr<Shader>(static_cast<Shader*>(node.release())), children_.last());
}

void Shader::setDocument(Document* document) {
    std::vector<Shader*> waiting{this};
    while (!waiting.empty()) {
        Shader& shader = *waiting.back();
        waiting.pop_back();
        shader.Node::setDocument(document);
        for (Shader* child = shader.children_.first(); child; child = child->next) {
            waiting.push_back(child);
        }
    }
}

Material::Material(int32_t type) : Node(NodeKind::material, type) {}

Material::~Material() {
    retire();
    destroyTree(shaders_, [](Shader& shader) -> Chain<Shader>& {
        shader.parent_ = nullptr;
        shader.material_ = nullptr;
        return shader.children_;
    });
}

Shader& Material::insertShader(std::unique_ptr<Shader> shader, Shader* behind) {
    Shader& added = shaders_.insert(std::move(shader), behind);
    added.material_ = this;
    added.setDocument(document());
    return added;
}

std::unique_ptr<Node> Material::makeEmpty() const {
    auto made = std::make_unique<Material>(type());
    attachPluginData(*made);
    return made;
}

void Material::visitOwned(Owned, const std::function<void(Node&)>& visit) const {
    for (Shader* shader = shaders_.first(); shader; shader = shader->next) {
        visit(*shader);
    }
}

void Material::appendOwned(std::unique_ptr<Node> node) {
    insertShader(std::unique_ptr<Shader>(static_cast<Shader*>(node.release())), shaders_.last());
}

void Material::setDocument(Document* document) {
    Node::setDocument(document);
    for (Shader* shader = shaders_.first(); shader; shader = shader->next) {
        shader->setDocument(document);
    }
}

} // namespace headless
