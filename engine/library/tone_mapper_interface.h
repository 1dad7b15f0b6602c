// SPDX-License-Identifier: MIT
#pragma once

#include "sdk/binding.h"

namespace engine::library {

/// A new "ToneMapperDLLAPI", counted once for the caller.
Quenza::SDK::InterfaceBase* makeToneMapper();

} // namespace engine::library
