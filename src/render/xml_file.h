// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

class TiXmlDocument;

/// Reads a whole XML file, keeping white space in texts as it stands. False when it's missing or doesn't
/// parse; the document then holds what could be read.
bool loadXmlDocument(TiXmlDocument& document, const Filename& file);

/// Writes the file whole or not at all.
bool saveXmlDocument(const TiXmlDocument& document, const Filename& file);
