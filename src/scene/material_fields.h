// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vec.h"
#include "scene/param.h"
#include "scene/tabulated_spectral_data.h"

namespace Quenza {

class SceneNodeMaterial;
class SceneNodeMedium;

/// The two elements that a reference to a node can be written as.
struct ReferenceElements {
    const char* uid;
    const char* name;
};

inline constexpr ReferenceElements MEDIUM_REFERENCE{"internal_medium_uid", "internal_medium_name"};

/// Takes a material's fields one after the other, in the order of the file. Each material class lists its
/// fields once, in `describe`; reading, writing, visiting, binding and the questions about a material are
/// walks over that list. Every operation does nothing unless a walk overrides it.
class MaterialFields {
public:
    virtual ~MaterialFields() = default;

    /// Null is an absent parameter.
    virtual void parameter(const char* element, Ref<WavelengthDependentParam>& param) {
        presentIfSet(element, param);
    }
    virtual void parameter(const char* element, Ref<WavelengthIndependentParam>& param) {
        presentIfSet(element, param);
    }
    virtual void parameter(const char* element, Ref<DisplacementParam>& param) {
        presentIfSet(element, param);
    }
    virtual void parameter(const char* element, Ref<Vec3Param>& param) { presentIfSet(element, param); }
    /// The parameter that moves the surface itself.
    virtual void displacement(Ref<DisplacementParam>& param) { parameter("displacement", param); }

    virtual void boolean(const char*, bool&) {}
    virtual void integer(const char*, i32&) {}
    virtual void number(const char*, double&) {}
    virtual void vector(const char*, Vec3d&) {}
    virtual void text(const char*, String&) {}
    /// Absent when empty.
    virtual void optionalText(const char*, String&) {}
    /// The index of a light layer that the material emits on.
    virtual void layer(const char* element, i32& index) { integer(element, index); }
    /// Null is an absent table.
    virtual void table(const char*, Ref<TabulatedSpectralData>&) {}

    /// A reference to another material: the node once it is bound, and the UID that stands for it until then.
    virtual void material(const ReferenceElements&, Ref<SceneNodeMaterial>&, SceneNodeUID&) {}
    /// A reference to the medium inside; absent when neither form is set.
    virtual void medium(Ref<SceneNodeMedium>&, SceneNodeUID&) {}

    /// What lies between the two stands in an element of its own.
    virtual void beginGroup(const char*) {}
    virtual void endGroup(const char*) {}

private:
    /// A parameter that is there, of any family.
    virtual void presentParameter(const char*, Param&) {}

    template <class Family>
    void presentIfSet(const char* element, const Ref<Family>& param) {
        if (param)
            presentParameter(element, *param);
    }
};

} // namespace Quenza
