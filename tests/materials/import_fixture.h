// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"
#include "host/ids.h"
#include "materials/import_command.h"
#include "materials/material_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <map>

/// Runs the import command on files of the fixture's folder.
class ImportTest : public MaterialTest {
protected:
    ImportTest() { setenv("XDG_CONFIG_HOME", (folder() + "/config").c_str(), 1); }
    ~ImportTest() override { unsetenv("XDG_CONFIG_HOME"); }

    bool runImport(const std::string& file) {
        linesBefore_ = host().console().lines().size();
        host().user().addFileAnswer(file);
        return ImportMaterialsCommand().Execute(document());
    }
    /// Imports a material file with these elements.
    bool import(const std::string& elements, const char* name = "/in.qzm") {
        const std::string file = folder() + name;
        Quenza::writeBytes(file, "<scenedata>" + elements + "</scenedata>");
        return runImport(file);
    }
    /// Imports one material called M and gives it.
    BaseMaterial* importOne(const std::string& body) {
        clear();
        EXPECT_TRUE(import(material("M", body)));
        return document()->GetFirstMaterial();
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

    /// What differs from a new material of the same kind: "number=value", in the order of the numbers.
    std::string changes(BaseMaterial* imported) {
        BaseMaterial* fresh = addMaterial("fresh", data(imported).GetLong(MAT_KIND));
        std::map<int32_t, std::string> changed;
        const BaseContainer& values = data(imported);
        for (int32_t i = 0; i < values.GetCount(); ++i) {
            const int32_t id = values.GetIndexId(i);
            const GeData* const before = data(fresh).FindData(id);
            if (!before || !(*before == values.GetIndexData(i))) {
                changed[id] = text(values.GetIndexData(i));
            }
        }
        fresh->Remove();
        BaseMaterial::Free(fresh);
        std::string all;
        for (const auto& [id, value] : changed) {
            all += (all.empty() ? "" : " ") + std::to_string(id) + "=" + value;
        }
        return all;
    }

    /// Of the last import.
    std::vector<std::string> lines() {
        std::vector<std::string> all = host().console().lines();
        all.erase(all.begin(), all.begin() + std::ptrdiff_t(linesBefore_));
        return all;
    }
    std::string lastMessage() {
        const std::vector<std::string> all = host().messages();
        return all.empty() ? "" : all.back();
    }

private:
    static std::string number(double value) { return RealToString(value).GetUtf8(); }
    static std::string text(const GeData& value) {
        switch (value.GetType()) {
        case DA_LONG:
            return std::to_string(value.GetLong());
        case DA_REAL:
            return number(double(value.GetReal())) + "f";
        case DA_VECTOR: {
            const Vector v = value.GetVector();
            return "(" + number(double(v.x)) + "," + number(double(v.y)) + "," + number(double(v.z)) + ")";
        }
        case DA_STRING:
            return "'" + value.GetString().GetUtf8() + "'";
        case DA_LINK:
            return "link";
        default:
            return "?";
        }
    }

    size_t linesBefore_ = 0;
};
