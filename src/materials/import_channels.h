// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"
#include "materials/channels.h"
#include "materials/import_warnings.h"
#include "scene/displacement_param.h"
#include "scene/material.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

class BaseMaterial;
class BaseShader;

/// Turns parameters of one material of the scene into channels of a material of the plug-in. What the channel
/// can't hold gives a warning, or a line on the console for a texture that isn't found, and the channel keeps
/// its default.
class ChannelImporter {
public:
    /// Relative texture paths start at `directory`.
    ChannelImporter(BaseMaterial& material, const Quenza::Material& body, const Filename& directory,
                    ImportWarnings& warnings)
        : material_(material), body_(body), directory_(directory), warnings_(warnings) {}

    // Null is ignored. The parameter's family is the channel's.
    void take(const Quenza::Ref<Quenza::WavelengthDependentParam>& parameter, ChannelId id);
    void take(const Quenza::Ref<Quenza::WavelengthIndependentParam>& parameter, ChannelId id);
    void take(const Quenza::Ref<Quenza::DisplacementParam>& parameter, ChannelId id);
    void take(const Quenza::Ref<Quenza::Vec3Param>& parameter, ChannelId id);
    void takeBaseEmission(const Quenza::Ref<Quenza::WavelengthDependentParam>& parameter);

private:
    template <class Family>
    bool takeLinkedForm(const Family& parameter, const Channel& channel);
    void takeTexture(int32_t index, const Channel& channel);
    void takeProgram(const Quenza::ShaderInfo* info, const Channel& channel);
    void takeSpectrum(const Quenza::Spectrum* spectrum, const Channel& channel);
    void takeColour(const Quenza::Spectrum& spectrum, const Channel& channel);
    void takeNumber(double value, const Channel& channel);
    void link(BaseShader* shader, const Channel& channel);
    void enable(const Channel& channel);
    void warn(const String& what);

    BaseMaterial& material_;
    const Quenza::Material& body_;
    const Filename& directory_;
    ImportWarnings& warnings_;
};
