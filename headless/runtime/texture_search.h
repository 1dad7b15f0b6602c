// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

namespace headless {

/// Looks for a texture file under the name that a document stores. A name with a folder is tried as it stands
/// below each place first, then its last part alone; a full path of this or another machine as it stands,
/// then its last part. The places, in their order: `extra`, the document's folder, "tex" in it, and the
/// folders of QUENZA_HEADLESS_TEXTURES of the environment, separated as PATH is. Case is that of the document
/// where there is such a file, else it doesn't count; `found` has the name that the file has on disk. A
/// "preset://" name that exists stands as it is: `found` is empty. False, and `found` is left alone, when
/// there is no such file. Any thread.
bool findTexture(const Filename& documentPath, const Filename& name, const Filename& extra, Filename* found);

} // namespace headless
