// SPDX-License-Identifier: MIT
#ifndef TEST_PLUGIN_TTEST_H
#define TEST_PLUGIN_TTEST_H

enum {
    TEST_AMOUNT = 1001,
    TEST_SECRET = 1002,
    TEST_SWITCH = 1003,
    TEST_MODE = 1004,
    TEST_MODE_A = 0,
    TEST_MODE_B = 1
};

#endif
