// SPDX-License-Identifier: MIT
#ifndef TEST_PLUGIN_SYMBOLS_H
#define TEST_PLUGIN_SYMBOLS_H

enum {
    IDS_WORK = 20001,
    IDS_TAG = 20002,

    IDD_GADGETS = 6100,
    IDC_METHOD = 6101,
    IDC_FIRST,
    IDC_SECOND,
    IDC_NUMBER,
    IDC_CHECK,
    IDC_COLOUR,
    IDC_AREA,
    IDC_ROWS,
    IDC_REBUILD,
    IDC_ROW
};

#endif
