// SPDX-License-Identifier: MIT
#pragma once

#include "sdk/binding.h"

namespace engine::library {

/// A new "HardwareInfoDLLAPI", counted once for the caller. It lists what renders here: the processor's
/// threads, as one device. Graphics cards are not listed, since nothing renders on them.
Quenza::SDK::InterfaceBase* makeHardwareInfo();

} // namespace engine::library
