// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"
#include "scene/xml_write_options.h"

/// Shows on the host's status bar how far the writing of a scene has come.
class StatusProgress : public Quenza::ProgressListener {
public:
    void progress(float fraction) override {
        StatusSetText("Writing the scene");
        StatusSetBar(static_cast<int32_t>(fraction * 100.0f));
    }
};
