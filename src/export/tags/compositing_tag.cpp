// SPDX-License-Identifier: MIT
#include "export/tags/compositing_tag.h"

#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

bool CompositingTag::Init(BaseList2D* node) {
    node->GetDataInstance()->SetBool(COMPOSITING_INVISIBLE_TO_CAMERA, false);
    return true;
}

bool CompositingTag::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_COMPOSITING_TAG, flags);
}
