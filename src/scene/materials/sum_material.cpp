// SPDX-License-Identifier: MIT
#include "scene/materials/sum_material.h"

#include "foundation/exceptions.h"

namespace Quenza {

void SumMaterial::bind(SceneVisitor& visitor, SceneNodeMaterial* owner) {
    if (visitor.mode == SceneVisitor::BIND) {
        for (u64 i = 0; i < materials.size(); ++i)
            if (!materials[i] && !(i < mat_uids.size() && mat_uids[i].isValid()))
                throw QuenzaException("Material was NULL and no mat_uid with same index.");
    }
    Material::bind(visitor, owner);
}

void SumMaterial::writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    if (materials.size() != weights.size())
        throw QuenzaException("num materials != num weights.");
    for (const Ref<WavelengthIndependentParam>& weight : weights)
        if (!weight)
            throw QuenzaException("Weight was null.");
    Material::writeBodyToXML(stream, depth, options);
}

void SumMaterial::describe(MaterialFields& fields) {
    for (u64 i = 0; i < materials.size(); ++i) {
        SceneNodeUID no_uid;
        fields.beginGroup("mat");
        fields.material({"mat_uid", "mat_name"}, materials[i], i < mat_uids.size() ? mat_uids[i] : no_uid);
        if (i < weights.size())
            fields.parameter("weight", weights[i]);
        fields.endGroup("mat");
    }
}

} // namespace Quenza
