// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

using BuildDeform = ModelTest;

/// The greatest x of the points: a quarter bend towards +X takes a box of 200 units there.
float reach(BaseObject* object) {
    const auto* const mesh = static_cast<::PolygonObject*>(object);
    float most = -1e30f;
    for (int32_t i = 0; i < mesh->GetPointCount(); ++i) {
        most = std::max(most, mesh->GetPointR()[i].x);
    }
    return most;
}

TEST_F(BuildDeform, bendsTheCacheOfItsParent) {
    BaseObject* const cube = addCube();
    cube->MakeTag(Tphong);
    move(cube, {500, 0, 0});
    addBend(cube);
    build();

    ::PolygonObject* const cache = polygons(cube->GetCache());
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(cube->GetDeformCache(), nullptr);
    ::PolygonObject* const deformed = polygons(cache->GetDeformCache());
    ASSERT_NE(deformed, nullptr);
    EXPECT_FLOAT_EQ(reach(cache), 100.0f);
    // The middle of the upper side comes to lie at the arc's radius, H / (pi / 2), from where the arc began.
    EXPECT_GT(reach(deformed), 120.0f);
    EXPECT_EQ(deformed->GetMl(), Matrix());
    EXPECT_EQ(deformed->GetMg().off, Vector(500, 0, 0));
    EXPECT_EQ(deformed->GetCacheParent(), cache);
    EXPECT_EQ(deformed->GetTopOrigin(), cube);
    EXPECT_NE(deformed->GetTag(Tphong), nullptr);
    EXPECT_NE(deformed->GetTag(Tuvw), nullptr);
    EXPECT_EQ(deformed->GetDown(), nullptr);
}

TEST_F(BuildDeform, lowerDeformersActFirst) {
    // Taper to half, then bulge: the other way round gives other points.
    BaseObject* const outer = add(Onull);
    BaseObject* const bulge = add(Obulge, outer);
    bulge->GetDataInstance()->SetVector(DEFORM_SIZE, {4, 4, 4});
    bulge->GetDataInstance()->SetReal(DEFORM_STRENGTH, 1.0f);
    BaseObject* const inner = add(Onull, outer);
    BaseObject* const twist = add(Otwist, inner);
    twist->GetDataInstance()->SetVector(DEFORM_SIZE, {4, 4, 4});
    twist->GetDataInstance()->SetReal(DEFORM_STRENGTH, 3.14159265f);
    move(twist, {1, 0, 0});
    ::PolygonObject* const quad = addQuad(inner);
    build();
    // The point (1, 0, 0) lies on the twist's axis, which leaves it; the bulge's middle then doubles x.
    EXPECT_TRUE(isNear(polygons(quad->GetDeformCache())->GetPointR()[3], {2, 0, 0}));
    // (0, 0, 0) turns by a quarter around x = 1 to (1, 0, -1), doubled around the origin.
    EXPECT_TRUE(isNear(polygons(quad->GetDeformCache())->GetPointR()[0], {2, 0, -2}));
}

} // namespace

} // namespace headless
