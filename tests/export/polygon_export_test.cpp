// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "headless/model/handles.h"
#include "host/ids.h"
#include "host/material.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <functional>

namespace {

class PolygonExportTest : public ExporterTest {
protected:
    static void setTiling(TextureTag* tag, float offsetX, float offsetY, float lengthX, float lengthY) {
        BaseContainer& data = *tag->GetDataInstance();
        data.SetReal(TEXTURETAG_OFFSETX, offsetX);
        data.SetReal(TEXTURETAG_OFFSETY, offsetY);
        data.SetReal(TEXTURETAG_LENGTHX, lengthX);
        data.SetReal(TEXTURETAG_LENGTHY, lengthY);
    }
    /// "slot:polygons" of a strip's mesh, in the order in which the faces stand.
    std::string slotsOf(const std::string& name) const {
        std::string text;
        for (const Quenza::MeshQuad& quad : meshOf(name).quads) {
            const float x = meshOf(name).vert_positions[quad.vertex_indices[3]].x;
            text += std::to_string(quad.mat_index) + ":" + std::to_string(int(x)) + " ";
        }
        return text;
    }
    /// The UV of the first corner of each polygon of a strip, in face order.
    std::vector<Quenza::Vec2f> uvsOf(const std::string& name) const {
        std::vector<Quenza::Vec2f> uvs;
        for (const Quenza::MeshQuad& quad : meshOf(name).quads) {
            uvs.push_back(meshOf(name).uv_pairs[quad.uv_indices[3]]);
        }
        return uvs;
    }
};

std::vector<std::string> names(const Quenza::Vector<Quenza::String>& strings) {
    std::vector<std::string> result;
    for (const Quenza::String& string : strings) {
        result.push_back(string.toStdString());
    }
    return result;
}

using Strings = std::vector<std::string>;
using UVs = std::vector<Quenza::Vec2f>;

} // namespace

TEST_F(PolygonExportTest, WithoutMergingTheRendererIsAskedTo) {
    addTag(addStrip("strip", 2), Tphong);
    options.mergeVertices = false;
    exportScene();
    const Quenza::Mesh& mesh = meshOf("strip");
    EXPECT_EQ(mesh.vert_positions.size(), 8u);
    EXPECT_EQ(mesh.uv_pairs.size(), 8u);
    ASSERT_EQ(mesh.vert_normals.size(), 8u);
    EXPECT_EQ(mesh.vert_normals[0], (Quenza::Vec3f{0, 0, 1}));
    EXPECT_TRUE(meshes()[0]->normal_smoothing);
    EXPECT_TRUE(meshes()[0]->merge_vertices_with_same_pos_and_normal);
}

TEST_F(PolygonExportTest, WhatChangesTheConvertedFormMakesAnotherMesh) {
    PolygonObject* const plain = addStrip("plain", 2);
    PolygonObject* const changed = addStrip("changed", 2);
    for (PolygonObject* const object : {plain, changed}) {
        addUvw(object);
        addTexture(object);
        addTag(object, Tphong);
    }
    auto* const texture = static_cast<TextureTag*>(changed->GetTag(Ttexture));
    BaseContainer* const tiling = texture->GetDataInstance();
    BaseContainer* const phong = changed->GetTag(Tphong)->GetDataInstance();
    auto* const uvw = static_cast<UVWTag*>(changed->GetTag(Tuvw));
    const Matrix scaled({9, 9, 9}, {}, {}, {});
    const struct {
        const char* what;
        std::function<void()> change;
        bool isAnother;
    } changes[] = {
        {"nothing", [] {}, false},
        {"place", [&] { move(changed, Vector(1, 1, 1)); }, false},
        {"texture matrix under UVW mapping", [&] { texture->SetMl(scaled); }, false},
        {"material", [&] { texture->SetMaterial(addMaterial(Mmaterial)); }, false},
        {"offset", [&] { tiling->SetReal(TEXTURETAG_OFFSETX, 0.5f); }, true},
        {"length", [&] { tiling->SetReal(TEXTURETAG_LENGTHY, 0.5f); }, true},
        {"projection", [&] { tiling->SetLong(TEXTURETAG_PROJECTION, P_FLAT); }, true},
        {"no phong angle limit", [&] { phong->SetBool(PHONGTAG_PHONG_ANGLELIMIT, false); }, true},
        {"phong angle", [&] { phong->SetReal(PHONGTAG_PHONG_ANGLE, 0.1f); }, true},
        {"edge breaks",
         [&] { phong->SetBool(PHONGTAG_PHONG_USEEDGES, !phong->GetBool(PHONGTAG_PHONG_USEEDGES)); }, true},
        {"a UV", [&] { uvw->GetDataW()[1].d.y += 1; }, true},
        {"a point", [&] { changed->GetPointW()[3].z += 1; }, true},
        {"a polygon", [&] { std::swap(changed->GetPolygonW()[0], changed->GetPolygonW()[1]); }, true},
    };
    bool isAnother = false;
    for (const auto& c : changes) {
        isAnother = isAnother || c.isAnother;
        c.change();
        exportScene();
        EXPECT_EQ(meshes().size(), isAnother ? 2u : 1u) << c.what;
    }
}

TEST_F(PolygonExportTest, SelectionsBecomeSlots) {
    const struct {
        std::vector<std::vector<int32_t>> selections;
        const char* faces;
        Strings names;
    } cases[] = {
        {{}, "0:0 0:1 0:2 0:3 ", {"default0"}},
        {{{2, 0}, {1}}, "0:0 0:2 1:1 2:3 ", {"default0", "default1", "default2"}},
        {{{0, 1, 2}, {2, 3}}, "0:0 0:1 0:2 1:3 ", {"default0", "default1"}},
        {{{}, {3}}, "0:3 1:0 1:1 1:2 ", {"default0", "default1"}},
        {{{1, 40}}, "0:1 1:0 1:2 1:3 ", {"default0", "default1"}},
        {{{0, 1, 2, 3, 4}}, "0:0 0:1 0:2 0:3 ", {"default0"}},
        {{{1, 2}, {1, 2}}, "0:1 0:2 2:0 2:3 ", {"default0", "default1", "default2"}},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        const std::string name = "strip" + std::to_string(i);
        PolygonObject* const strip = addStrip(name.c_str(), 4);
        strip->GetPointW()[0].y = float(i); // each a mesh of its own
        for (const auto& selection : cases[i].selections) {
            addSelection(strip, "selection", selection);
        }
        exportScene();
        EXPECT_EQ(slotsOf(name), cases[i].faces) << name;
        EXPECT_EQ(names(meshOf(name).used_materials), cases[i].names) << name;
        EXPECT_EQ(model(name)->materials.size(), cases[i].names.size()) << name;
    }
}

TEST_F(PolygonExportTest, AnEqualMeshWithMoreSlotsGetsMaterialsForAll) {
    addSelection(addStrip("divided", 3), "selection", {1});
    addStrip("whole", 3);
    exportScene();
    ASSERT_EQ(meshes().size(), 1u);
    EXPECT_EQ(model("whole")->materials.size(), 2u);
    EXPECT_NO_THROW(scene().finalise("")); // a reader counts them
}

TEST_F(PolygonExportTest, TilingIsBakedIntoTheUVs) {
    PolygonObject* const strip = addStrip("strip", 4);
    addUvw(strip);
    addSelection(strip, "one", {1, 2});
    addSelection(strip, "two", {2, 3});
    setTiling(addTexture(strip), 0, 0, 1, 1);
    setTiling(addTexture(strip, "one"), 0.5f, 0, 2, 1);
    setTiling(addTexture(strip, "two"), 0, 1, 1, 4);
    exportScene();
    // Polygon 2 lies in both selections: the first has its material, the last its tiling.
    EXPECT_EQ(slotsOf("strip"), "0:1 0:2 1:3 2:0 ");
    EXPECT_EQ(uvsOf("strip"), (UVs{{0.25f, 1}, {2, 1.25f}, {3, 1.25f}, {0, 1}}));
}

TEST_F(PolygonExportTest, BrokenObjectsAreLeftOutByName) {
    addStrip("wild", 2)->GetPolygonW()[1].b = 77;
    PolygonObject* const infinite = addStrip("infinite", 3);
    infinite->GetPointW()[1].x = std::numeric_limits<float>::infinity();
    addInstance("instance", infinite);
    addStrip("sound", 4);
    exportScene();
    EXPECT_EQ(modelNames(), "sound");
    EXPECT_EQ(
        consoleLines(),
        (Strings{"0.036000", "Object \"wild\" is left out: a polygon refers to a point that doesn't exist.",
                 "Object \"infinite\" is left out: the coordinates of a point are no finite numbers.",
                 "Object \"infinite\" is left out: the coordinates of a point are no finite numbers."}));
    EXPECT_EQ(exporter().instanceCount, 0);
}
