// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

using BuildSurface = ModelTest;

/// Two quads that meet at a right angle, on the line x = 1.
::PolygonObject* makeFold() {
    ::PolygonObject* const fold = ::PolygonObject::Alloc(6, 2);
    const Vector corners[] = {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}, {1, 1, 1}, {1, 0, 1}};
    std::copy(corners, corners + 6, fold->GetPointW());
    fold->GetPolygonW()[0] = CPolygon(0, 1, 2, 3);
    fold->GetPolygonW()[1] = CPolygon(3, 2, 4, 5);
    return fold;
}

TEST_F(BuildSurface, smoothsByThePhongTag) {
    struct Case {
        const char* name;
        bool limited;
        float angle;
        bool breaks;
        bool smooth;
    };
    const Case cases[] = {
        {"no limit", false, 0.1f, false, true},       {"limit above", true, 1.6f, false, true},
        {"limit below", true, 1.5f, false, false},    {"broken edge", false, 0.1f, true, false},
        {"edges not asked", true, 1.6f, false, true},
    };
    ::PolygonObject* const fold = makeFold();
    doc()->InsertObject(fold);
    EXPECT_EQ(fold->CreatePhongNormals(), nullptr);
    BaseContainer& phong = *fold->MakeTag(Tphong)->GetDataInstance();
    fromHost(fold)->brokenEdges.Select(2); // Edge c-d of the first quad.
    for (const Case& test : cases) {
        phong.SetBool(PHONGTAG_PHONG_ANGLELIMIT, test.limited);
        phong.SetReal(PHONGTAG_PHONG_ANGLE, test.angle);
        phong.SetBool(PHONGTAG_PHONG_USEEDGES, test.breaks);
        Vector* const normals = fold->CreatePhongNormals();
        ASSERT_NE(normals, nullptr);
        EXPECT_TRUE(isNear(normals[0], {0, 0, -1}, 1e-6f)) << test.name;
        const float diagonal = std::sqrt(0.5f);
        EXPECT_TRUE(
            isNear(normals[2], test.smooth ? Vector(diagonal, 0, -diagonal) : Vector(0, 0, -1), 1e-6f))
            << test.name;
        GeFree(normals);
    }
    fold->GetPolygonW()[1].c = 17;
    EXPECT_EQ(fold->CreatePhongNormals(), nullptr) << "a point that doesn't exist";
}

/// One corner of the quad from the origin to (1, 1, 0) under each projection.
TEST_F(BuildSurface, projectsTextures) {
    ::PolygonObject* const quad = addQuad();
    auto* const tag = static_cast<::TextureTag*>(quad->MakeTag(Ttexture));
    const auto project = [&](int32_t projection) {
        tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, projection);
        return GenerateUVW(quad, quad->GetMg(), tag, quad->GetMg(), doc()->GetActiveBaseDraw());
    };
    EXPECT_EQ(project(P_UVW), nullptr) << "no coordinates to take";
    for (const int32_t projection :
         {P_SPHERICAL, P_CYLINDRICAL, P_FLAT, P_CUBIC, P_FRONTAL, P_SPATIAL, P_SHRINKWRAP, P_CAMERAMAP}) {
        BaseTag* made = project(projection);
        ASSERT_NE(made, nullptr) << projection;
        EXPECT_EQ(static_cast<::UVWTag*>(made)->GetDataCount(), 1);
        BaseTag::Free(made);
    }
    EXPECT_EQ(project(77), nullptr);
    EXPECT_EQ(GenerateUVW(add(Onull), Matrix(), tag, Matrix(), nullptr), nullptr);

    auto* const own = ::UVWTag::Alloc(1);
    own->Set(0, {{0.1f, 0, 0}, {0.2f, 0, 0}, {0.3f, 0, 0}, {0.4f, 0, 0}});
    quad->InsertTag(own);
    BaseTag* made = project(P_UVW);
    EXPECT_EQ(static_cast<::UVWTag*>(made)->Get(0), own->Get(0));
    BaseTag::Free(made);
}

TEST_F(BuildSurface, placesTexturesByTheTagAndItsOwner) {
    BaseObject* const owner = add(Onull);
    move(owner, {0, 0, 9});
    ::PolygonObject* const quad = addQuad(owner);
    quad->SetMl({{4, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    auto* const tag = static_cast<::TextureTag*>(owner->MakeTag(Ttexture));
    tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, P_FLAT);
    // From x = 3 to 7 and y = -1 to 1 of the owner's space.
    tag->SetMl({{5, 0, 0}, {2, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    BaseTag* made = GenerateUVW(quad, quad->GetMg(), tag, owner->GetMg(), nullptr);
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(isNear(static_cast<::UVWTag*>(made)->Get(0).a, {0.25f, 0.5f, 0}));
    EXPECT_TRUE(isNear(static_cast<::UVWTag*>(made)->Get(0).c, {0.5f, 0.0f, 0}));
    BaseTag::Free(made);
}

/// Copies that stand elsewhere share their mesh only if the coordinates are the same to the bit.
TEST_F(BuildSurface, givesMovedCopiesTheSameCoordinates) {
    ::PolygonObject* const quad = addQuad();
    auto* const tag = static_cast<::TextureTag*>(quad->MakeTag(Ttexture));
    tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, P_SPHERICAL);
    BaseTag* atOrigin = GenerateUVW(quad, quad->GetMg(), tag, quad->GetMg(), nullptr);
    quad->SetMl({{1000.3f, 77.7f, 3}, {0.3f, 0.4f, 0}, {-0.4f, 0.3f, 0.1f}, {0, 0, 1.7f}});
    BaseTag* moved = GenerateUVW(quad, quad->GetMg(), tag, quad->GetMg(), nullptr);
    EXPECT_EQ(static_cast<::UVWTag*>(moved)->Get(0), static_cast<::UVWTag*>(atOrigin)->Get(0));
    BaseTag::Free(atOrigin);
    BaseTag::Free(moved);
}

TEST_F(BuildSurface, looksThroughTheViewsCamera) {
    ::PolygonObject* const quad = addQuad();
    quad->SetMl({{-0.5f, -0.5f, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    auto* const tag = static_cast<::TextureTag*>(quad->MakeTag(Ttexture));
    tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, P_FRONTAL);
    doc()->GetActiveRenderData()->GetDataInstance()->SetLong(RDATA_XRES, 100);
    doc()->GetActiveRenderData()->GetDataInstance()->SetLong(RDATA_YRES, 100);
    BaseObject* const camera = add(Ocamera);
    move(camera, {0, 0, -1});
    camera->GetDataInstance()->SetReal(CAMERA_FOV, 1.5707963f); // Two units wide at the quad.
    document->view().setSceneCamera(fromHost(camera));
    EXPECT_EQ(doc()->GetActiveBaseDraw()->GetSceneCamera(doc()), camera);

    BaseTag* made = GenerateUVW(quad, quad->GetMg(), tag, quad->GetMg(), doc()->GetActiveBaseDraw());
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(isNear(static_cast<::UVWTag*>(made)->Get(0).a, {0.25f, 0.75f, 0}));
    EXPECT_TRUE(isNear(static_cast<::UVWTag*>(made)->Get(0).c, {0.75f, 0.25f, 0}));
    BaseTag::Free(made);
    BaseObject* freed = camera;
    BaseObject::Free(freed);
    EXPECT_EQ(fromHost(doc()->GetActiveBaseDraw()->GetSceneCamera(doc())), &document->view().editorCamera());
}

} // namespace

} // namespace headless
