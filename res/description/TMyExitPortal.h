// SPDX-License-Identifier: MIT
#ifndef QUENZA_TMYEXITPORTAL_H
#define QUENZA_TMYEXITPORTAL_H

enum {
    EXIT_PORTAL_ENABLED = 1100
};

#endif
