// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

using BuildSurface = ModelTest;

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
