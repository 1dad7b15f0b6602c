// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// The command "Render with Quenza": exports the active document and starts the renderer on it.
class RenderCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
};
