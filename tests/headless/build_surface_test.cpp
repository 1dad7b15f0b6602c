// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

using BuildSurface = ModelTest;

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

} // namespace

} // namespace headless
