// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// A text field that pages can ask for by number. It adds nothing to the host's own.
class StringGui : public CustomGuiData {};
