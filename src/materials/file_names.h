// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"

/// A file name of `stem` and `tail` that all platforms take, whatever an artist has put into `stem`: without
/// separators, wildcards and control characters, not the name of a device, short enough, and valid UTF-8.
/// What is legal already stays as it is; of a long stem the beginning stays, with a checksum of the whole.
String legalFileName(const String& stem, const String& tail);

/// `text` with `replacement` in the place of every occurrence of `searched`, from the left.
String replaceAll(const String& text, const String& searched, const String& replacement);
