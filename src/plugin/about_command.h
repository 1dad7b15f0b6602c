// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Tells what the plug-in is, its version and its makers.
class AboutCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
};
