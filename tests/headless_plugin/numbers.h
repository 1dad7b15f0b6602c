// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Numbers of the working test plug-in.
enum TestPluginId : int32_t {
    TEST_MESSAGE = 9000001,
    /// Asks for a file and a yes.
    TEST_ASK = 9000003,
    /// Starts a thread that throws, and waits for it.
    TEST_THROWING_THREAD = 9000004,
    TEST_DISABLED = 9000005,
    /// Uses a dialog call from another thread: while the main thread waits, and while it doesn't.
    TEST_OTHER_THREAD = 9000007,
    /// Opens a form beside, or closes it.
    TEST_FORM = 9000008,
    /// Leaves a thread running.
    TEST_LEFT_THREAD = 9000009,
    TEST_TAG = 9000010,
    TEST_THROWING = 9000011,
    /// Of the plug-in with a video post.
    TEST_RENDER = 9000013,
};

/// Parameters of the video post.
enum TestRenderParameter : int32_t {
    /// How often it paints, with 50 ms between; each time one brighter than the last, from 100 on.
    RENDER_ROUNDS = 1001,
    /// The phase that fails, whether in opening, and with what.
    RENDER_FAILING_PHASE = 1002,
    RENDER_FAILS_OPENING = 1003,
    RENDER_FAILURE = 1004,
    RENDER_THROWS = 1005,
};

enum TestDialogGadget : int32_t {
    FORM_TEXT = 1001,
    FORM_CHOICE = 1002,
    FORM_APPLY = 1003,
    FORM_DISABLED = 1004,
};
