// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/vector.h"
#include "scene/scene_node_material.h"

namespace Quenza {

/// A weighted sum of materials, held as parallel vectors.
class SumMaterial : public Material {
public:
    static constexpr u32 TYPE = 9;

    SumMaterial() : Material(KIND) {}

    /// In the bind mode also throws QuenzaException for an entry with neither node nor valid UID.
    void bind(SceneVisitor& visitor, SceneNodeMaterial* owner) override;
    /// Throws QuenzaException when the lengths differ or a weight is null.
    void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;

    Vector<Ref<SceneNodeMaterial>> materials; ///< A null entry is known by `mat_uids` alone.
    Vector<SceneNodeUID> mat_uids;            ///< May be shorter than `materials`.
    Vector<Ref<WavelengthIndependentParam>> weights;

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "sum", "SumMaterial"};
};

} // namespace Quenza
