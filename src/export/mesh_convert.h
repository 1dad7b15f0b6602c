// SPDX-License-Identifier: MIT
#pragma once

#include "export/array_conversion.h"
#include "export/material_slots.h"
#include "host/object.h"
#include "scene/mesh.h"

/// Converts polygon objects of the host into scene meshes, one after the other.
class PolygonMeshExporter {
public:
    struct Options {
        BaseDocument* document = nullptr;
        /// Metres per document unit.
        float scale = 1.0f;
        /// Equal vertices become one, and so do equal UV pairs.
        bool merge = false;
        /// Tells each mesh on the host's console.
        bool verbose = false;
    };

    /// A new mesh; empty when there was no memory for its texture coordinates. Null for an object whose
    /// arrays don't fit together or aren't finite: a console line tells which.
    Quenza::Ref<Quenza::Mesh> convertMesh(PolygonObject* object, const std::vector<MaterialSlot>& slots,
                                          const Options& options);

    /// Lets go of what is kept for the next mesh.
    void releaseMemory() { converter_.releaseMemory(); }

private:
    ArrayConverter converter_;
};
