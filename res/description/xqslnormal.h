// SPDX-License-Identifier: MIT
#ifndef QUENZA_XQSLNORMAL_H
#define QUENZA_XQSLNORMAL_H

enum {
    QSLNORMAL_COLOUR_1 = 1600,
    QSLNORMAL_COLOUR_2 = 1601,
};

#endif
