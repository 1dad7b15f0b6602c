// SPDX-License-Identifier: MIT
#pragma once

#include "host/ids.h"
#include "materials/import_command.h"
#include "materials/material_fixture.h"
#include "support/user_profile.h"

/// Runs the import command on files of the fixture's folder.
class ImportTest : public MaterialTest {
protected:
    bool runImport(const std::string& file) {
        linesBefore_ = host().console().lines().size();
        host().user().addFileAnswer(file);
        return ImportMaterialsCommand().Execute(document());
    }
    /// Imports a material file with these elements.
    bool import(const std::string& elements, const char* name = "/in.qzm") {
        const std::string file = Quenza::nativeText(folder() + name);
        Quenza::writeBytes(file, "<scenedata>" + elements + "</scenedata>");
        return runImport(file);
    }
    static std::string material(const std::string& name, const std::string& body) {
        return "<material><name>" + name + "</name>" + body + "</material>";
    }

    void clear() {
        while (BaseMaterial* first = document()->GetFirstMaterial()) {
            first->Remove();
            BaseMaterial::Free(first);
        }
    }
    BaseMaterial* find(const std::string& name) const {
        for (BaseMaterial* made = document()->GetFirstMaterial(); made; made = made->GetNext()) {
            if (made->GetName() == String(name)) {
                return made;
            }
        }
        return nullptr;
    }
    /// In the order of their making.
    std::string names() const {
        std::string found;
        for (BaseMaterial* made = document()->GetFirstMaterial(); made; made = made->GetNext()) {
            found.insert(0, made->GetName().GetUtf8() + " ");
        }
        return found;
    }
    std::string nameOfLink(BaseMaterial* owner, int32_t link) {
        const BaseList2D* const linked = data(owner).GetLink(link, document());
        return linked ? linked->GetName().GetUtf8() : "";
    }
    BaseShader* shaderOf(BaseMaterial* owner, int32_t link) {
        auto* const shader = static_cast<BaseShader*>(data(owner).GetLink(link, document(), Xbase));
        EXPECT_TRUE(!shader || shader->GetMaterial() == owner);
        return shader;
    }

    /// Of the last import.
    std::vector<std::string> lines() {
        std::vector<std::string> all = host().console().lines();
        all.erase(all.begin(), all.begin() + std::ptrdiff_t(linesBefore_));
        return all;
    }

private:
    size_t linesBefore_ = 0;
    const Quenza::UserProfile profile_{Quenza::nativeText(folder() + "/config")};
};
