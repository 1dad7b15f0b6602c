// SPDX-License-Identifier: MIT
#include "shared/scene_unit.h"

#include "host/general.h"
#include "host/ids.h"
#include "shared/parameter_ids.h"

float unitToMetres(const BaseContainer* renderSettings) {
    if (!renderSettings) {
        switch (GetWorldContainerInstance()->GetLong(WPREF_UNITS_BASIC)) {
        case 1:
            return 1000.0f;
        case 3:
            return 0.01f;
        case 4:
            return 0.001f;
        default:
            return 1.0f;
        }
    }
    switch (renderSettings->GetLong(RS_UNIT, RS_UNIT_CM)) {
    case RS_UNIT_KM:
        return 1000.0f;
    case RS_UNIT_CM:
        return 0.01f;
    case RS_UNIT_MM:
        return 0.001f;
    case RS_UNIT_CUSTOM:
        return renderSettings->GetReal(RS_CUSTOM_UNIT_SCALE);
    default:
        return 1.0f;
    }
}
