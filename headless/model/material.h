// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/chain.h"
#include "headless/model/node.h"
#include "headless/model/shader_run.h"

namespace headless {

class Material;

/// A shader: of a material's list, or below another shader.
class Shader : public Node {
public:
    explicit Shader(int32_t type);
    ~Shader() override;

    const Chain<Shader>& children() const { return children_; }
    Shader& insertChild(std::unique_ptr<Shader> shader, Shader* behind);
    /// The material in whose list the shader or a shader above it is; null outside.
    Material* material() const;
    Shader* parent() const { return parent_; }
    /// True for `shader` itself and all below it.
    bool isWithin(const Shader& shader) const;

    /// Null but between InitRender and FreeRender; not copied.
    std::unique_ptr<ShaderRun> run;

    Shader* next = nullptr;
    Shader* pred = nullptr;

    std::unique_ptr<Node> makeEmpty() const override;
    void visitOwned(Owned which, const std::function<void(Node&)>& visit) const override;
    void appendOwned(std::unique_ptr<Node> node) override;
    void setDocument(Document* document) override;

private:
    friend class Material;
    friend std::unique_ptr<Node> removeNode(Node&);

    Shader* parent_ = nullptr;
    Material* material_ = nullptr;
    Chain<Shader> children_;
};

class Material : public Node {
public:
    explicit Material(int32_t type);
    ~Material() override;

    const Chain<Shader>& shaders() const { return shaders_; }
    /// Takes over `shader`: behind `behind`, or first when that is null.
    Shader& insertShader(std::unique_ptr<Shader> shader, Shader* behind = nullptr);

    Material* next = nullptr;
    Material* pred = nullptr;

    std::unique_ptr<Node> makeEmpty() const override;
    void visitOwned(Owned which, const std::function<void(Node&)>& visit) const override;
    void appendOwned(std::unique_ptr<Node> node) override;
    void setDocument(Document* document) override;

private:
    friend std::unique_ptr<Node> removeNode(Node&);
    Chain<Shader> shaders_;
};

} // namespace headless
