// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"
#include "render/tonemapping_dialog.h"

/// Opens the tone mapping dialog beside the others.
class TonemappingCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    bool RestoreLayout(void* secret) override;

private:
    TonemappingDialog dialog_;
};
