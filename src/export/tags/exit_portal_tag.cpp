// SPDX-License-Identifier: MIT
#include "export/tags/exit_portal_tag.h"

#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

bool ExitPortalTag::Init(BaseList2D* node) {
    node->GetDataInstance()->SetBool(EXIT_PORTAL_ENABLED, true);
    return true;
}

bool ExitPortalTag::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_EXIT_PORTAL_TAG, flags);
}
