// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "scene/xml_write_options.h"

namespace Quenza {

class OStream;
class SceneNodeMaterial;

/// The words of EmissionScale::Measure in a file.
inline constexpr const char* MEASURE_WORDS[] = {"luminous_flux", "luminous_intensity", "luminance",
                                                "luminous_emittance"};

/// A measured light distribution for the faces of one material of a model.
class IESProfile : public RefCounted {
public:
    IESProfile();
    IESProfile(const IESProfile&);
    ~IESProfile() override;

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const;
    /// The bound material's UID, else the stored one.
    SceneNodeUID getMaterialUID() const;

    String path;
    Ref<SceneNodeMaterial> material; ///< Null until bound.
    SceneNodeUID material_uid;
    String material_name; ///< The mesh's name of the material; serves when there is no UID.
};

/// Scales the emission of one material so that a photometric measure has a given value.
class EmissionScale : public RefCounted {
public:
    /// Values of `measure`, and their units.
    enum Measure : u32 {
        LUMINOUS_FLUX = 0,      ///< lm
        LUMINOUS_INTENSITY = 1, ///< cd
        LUMINANCE = 2,          ///< cd/m^2
        LUMINOUS_EMITTANCE = 3, ///< lm/m^2
        NO_MEASURE = 4,         ///< No element is written.
    };

    EmissionScale();
    EmissionScale(const EmissionScale&);
    ~EmissionScale() override;

    void writeToXML(OStream& stream, u32 depth) const;
    /// The bound material's UID, else the stored one.
    SceneNodeUID getMaterialUID() const;

    u32 measure = LUMINOUS_FLUX;
    double value = 1.0;
    Ref<SceneNodeMaterial> material; ///< Null until bound.
    SceneNodeUID material_uid;
    String material_name; ///< The mesh's name of the material; serves when there is no UID.
};

} // namespace Quenza
