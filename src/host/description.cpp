// SPDX-License-Identifier: MIT
#include "host/description.h"

#include "host/tables.h"

bool Description::LoadDescription(int32_t pluginId) {
    return HostTables()->description->Load(this, pluginId);
}

BaseContainer* Description::GetParameterI(const DescID& id) {
    return HostTables()->description->GetParameter(this, id);
}

void Description::Hide(const DescID& id, bool hidden) {
    if (BaseContainer* const properties = GetParameterI(id)) {
        properties->SetBool(DESC_HIDE, hidden);
    }
}

bool Description::SetParameter(const DescID& id, int32_t dataType, const BaseContainer& properties,
                               const DescID& group) {
    return HostTables()->description->SetParameter(this, id, dataType, properties, group);
}
