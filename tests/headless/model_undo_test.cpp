// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

using ModelUndo = ModelTest;

TEST_F(ModelUndo, takesChangesBackInPlace) {
    ::PolygonObject* const quad = addQuad();
    auto* const texture = static_cast<::TextureTag*>(quad->MakeTag(Ttexture));
    BaseMaterial* const material = BaseMaterial::Alloc(Mmaterial);
    doc()->InsertMaterial(material);

    doc()->StartUndo();
    doc()->AddUndo(UNDOTYPE_CHANGE, quad);
    quad->SetName("Changed");
    quad->GetPointW()[2] = {5, 5, 5};
    quad->SetMl({{1, 2, 3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    texture->SetMaterial(material);
    doc()->AddUndo(UNDOTYPE_CHANGE, material);
    material->GetDataInstance()->SetVector(MATERIAL_COLOR_COLOR, {1, 0, 0});
    doc()->EndUndo();
    EXPECT_TRUE(doc()->DoUndo());

    EXPECT_EQ(quad->GetName().GetUtf8(), "Polygon");
    EXPECT_EQ(quad->GetPointR()[2], Vector(1, 1, 0));
    EXPECT_EQ(quad->GetMl(), Matrix());
    EXPECT_EQ(quad->GetTag(Ttexture), texture);
    EXPECT_EQ(texture->GetMaterial(), nullptr);
    EXPECT_EQ(material->GetDataInstance()->GetVector(MATERIAL_COLOR_COLOR), Vector(0.8f, 0.8f, 0.8f));
    EXPECT_FALSE(doc()->DoUndo());
}

} // namespace

} // namespace headless
