// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "scene/wavelength_dependent_param.h"

/// The spectrum that a surface of the plug-in's material emits everywhere, from the material's container.
/// Null when the material doesn't emit.
Quenza::Ref<Quenza::WavelengthDependentParam> exportBaseEmission(const BaseContainer& material);
