// SPDX-License-Identifier: MIT
#ifndef TEST_PLUGIN_SYMBOLS_H
#define TEST_PLUGIN_SYMBOLS_H

enum { IDS_TAG = 20002 };

#endif
