// SPDX-License-Identifier: MIT
#include "export/tags/subdivision_tag.h"

#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

bool SubdivisionTag::Init(BaseList2D* node) {
    // The pixel threshold has no initial value; an export reads 0 where it's missing.
    BaseContainer* const data = node->GetDataInstance();
    data->SetLong(SUBDIV_MAX, 3);
    data->SetReal(SUBDIV_CURVATURE_THRESHOLD, 0.1f);
    data->SetBool(SUBDIV_SMOOTHING, false);
    data->SetBool(SUBDIV_VIEW_DEPENDENT, false);
    data->SetReal(SUBDIV_DISPLACEMENT_ERROR, 0.0f);
    return true;
}

bool SubdivisionTag::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_SUBDIVISION_TAG, flags);
}

bool SubdivisionTag::GetDEnabling(BaseList2D* node, const DescID& id) {
    return id[0] != SUBDIV_PIXEL_THRESHOLD || node->GetDataInstance()->GetBool(SUBDIV_VIEW_DEPENDENT);
}
