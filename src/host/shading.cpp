// SPDX-License-Identifier: MIT
#include "host/shading.h"

#include "host/tables.h"

Vector VolumeData::TraceColor(const ShadingRay& traced, float maximumDistance) {
    return HostTables()->shading->TraceColor(this, traced, maximumDistance);
}

void VolumeData::IllumSurfacePoint(Vector* diffuse, Vector* highlights) {
    HostTables()->shading->IllumSurfacePoint(this, diffuse, highlights);
}
