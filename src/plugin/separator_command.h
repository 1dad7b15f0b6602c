// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// A line between the plug-in's entries in the host's menu.
class SeparatorCommand : public CommandData {
public:
    bool Execute(BaseDocument* /*document*/) override { return true; }
};
