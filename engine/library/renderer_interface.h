// SPDX-License-Identifier: MIT
#pragma once

#include "sdk/binding.h"

namespace engine::library {

/// A new "QuenzaInterface", counted once for the caller.
Quenza::SDK::InterfaceBase* makeRenderer();

} // namespace engine::library
