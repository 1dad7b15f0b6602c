// SPDX-License-Identifier: MIT
#include "export/tags/exit_portal_tag.h"

#include "export/described_data.h"
#include "export/parameter_ids.h"
#include "export/plugin_ids.h"

bool ExitPortalTag::Init(BaseList2D* node) {
    node->GetDataInstance()->SetBool(EXIT_PORTAL_ENABLED, true);
    return true;
}

bool ExitPortalTag::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_EXIT_PORTAL_TAG, flags);
}
