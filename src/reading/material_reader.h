// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vec.h"
#include "reading/older_material_forms.h"
#include "scene/material.h"
#include "scene/material_fields.h"

#include <vector>

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Collects the names of the elements that a material's fields may be read from.
class MaterialElementNames : public MaterialFields {
public:
    void parameter(const char* element, Ref<WavelengthDependentParam>&) override { addForms(element); }
    void parameter(const char* element, Ref<WavelengthIndependentParam>&) override { addForms(element); }
    void parameter(const char* element, Ref<DisplacementParam>&) override { addForms(element); }
    void parameter(const char* element, Ref<Vec3Param>&) override { addForms(element); }
    void boolean(const char* element, bool&) override { names.push_back(element); }
    void integer(const char* element, i32&) override { names.push_back(element); }
    void number(const char* element, double&) override { names.push_back(element); }
    void vector(const char* element, Vec3d&) override { names.push_back(element); }
    void text(const char* element, String&) override { names.push_back(element); }
    void optionalText(const char* element, String&) override { names.push_back(element); }
    void table(const char* element, Ref<TabulatedSpectralData>&) override { names.push_back(element); }
    void material(const ReferenceElements& elements, Ref<SceneNodeMaterial>&, SceneNodeUID&) override {
        addReference(elements);
    }
    void medium(Ref<SceneNodeMedium>&, SceneNodeUID&) override { addReference(MEDIUM_REFERENCE); }

    std::vector<const char*> names;

private:
    void addForms(const char* element);
    void addReference(const ReferenceElements& elements);
};

/// Sets a material's fields from the children of its type element. Fields without a child keep their values;
/// only references to materials must be there. Throws QuenzaModelParserExcep or SceneParseUtilsExcep.
class MaterialReader : public MaterialFields {
public:
    /// The material's textures must have been read already.
    MaterialReader(const ParserState& state, const TiXmlElement& element, Material& read_material)
        : state_(state), element_(element), material_(read_material) {}

    void parameter(const char* element, Ref<WavelengthDependentParam>& param) override;
    void parameter(const char* element, Ref<WavelengthIndependentParam>& param) override;
    void parameter(const char* element, Ref<DisplacementParam>& param) override;
    void parameter(const char* element, Ref<Vec3Param>& param) override;
    void boolean(const char* element, bool& value) override;
    void integer(const char* element, i32& value) override;
    void number(const char* element, double& value) override;
    void vector(const char* element, Vec3d& value) override;
    void text(const char* element, String& value) override;
    void optionalText(const char* element, String& value) override { text(element, value); }
    void table(const char* element, Ref<TabulatedSpectralData>& data) override;
    /// An empty name leaves the reference unset: so it is written.
    void material(const ReferenceElements& elements, Ref<SceneNodeMaterial>& node,
                  SceneNodeUID& uid) override;
    void medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) override;

private:
    /// The older form that stands in the place of `element`, if one does.
    template <class Family>
    bool readOlderForm(const char* element, Ref<Family>& param);

    const ParserState& state_;
    const TiXmlElement& element_;
    Material& material_;
};

} // namespace Quenza
