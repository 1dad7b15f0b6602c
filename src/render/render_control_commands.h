// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

// Commands that act on the render in the Picture Viewer. Disabled without one.

class PauseCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    int32_t GetState(BaseDocument* document) override;
};

class ResumeCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    int32_t GetState(BaseDocument* document) override;
};

/// Asks for a display image of what has been rendered so far.
class UpdateImageCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    int32_t GetState(BaseDocument* document) override;
};
