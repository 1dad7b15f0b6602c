// SPDX-License-Identifier: MIT
#include "export/objects/section_plane_object.h"

#include "host/basedraw.h"
#include "host/inexclude.h"
#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {
/// Half the side of the square that stands for the endless plane in the view, in document units.
constexpr float HALF_SIDE = 1000.0f;
constexpr int32_t TRANSPARENCY = -200;
} // namespace

bool SectionPlaneObject::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    data->SetBool(SECTION_CULL_GEOMETRY, true);
    data->SetData(SECTION_OBJECTS, GeData(InExcludeData()));
    data->SetLong(SECTION_LIST_KIND, SECTION_LIST_INCLUDE);
    data->SetBool(SECTION_WITH_CHILDREN, true);
    return true;
}

bool SectionPlaneObject::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_SECTION_PLANE, flags);
}

bool SectionPlaneObject::GetDEnabling(BaseList2D* node, const DescID& id) {
    return id[0] != SECTION_OBJECTS || node->GetDataInstance()->GetBool(SECTION_CULL_GEOMETRY);
}

bool SectionPlaneObject::Draw(BaseObject* /*object*/, BaseDraw* view, BaseDrawHelp* help) {
    const Vector points[] = {{-HALF_SIDE, -HALF_SIDE, 0.0f},
                             {-HALF_SIDE, HALF_SIDE, 0.0f},
                             {HALF_SIDE, HALF_SIDE, 0.0f},
                             {HALF_SIDE, -HALF_SIDE, 0.0f}};
    const Vector normal(0.0f, 0.0f, 1.0f);
    const Vector colour(1.0f, 1.0f, 1.0f);
    const Vector normals[] = {normal, normal, normal, normal};
    const Vector colours[] = {colour, colour, colour, colour};
    view->SetMatrix(help->matrix);
    view->SetTransparency(TRANSPARENCY);
    view->DrawPolygon(points, normals, colours, true);
    view->SetTransparency(0);
    return true;
}

void SectionPlaneObject::GetDimension(BaseObject* /*object*/, Vector* centre, Vector* radius) {
    *centre = Vector();
    *radius = Vector(HALF_SIDE, HALF_SIDE, 0.0f);
}
