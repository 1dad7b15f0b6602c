// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Puts an instance object of the plug-in behind each selected object, linked to it and at its place. One
/// undo takes all of them back.
class CreateInstancesCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
};
