// SPDX-License-Identifier: MIT
enum { IDS_WORK = 20001, IDS_TAG = 20002 };
