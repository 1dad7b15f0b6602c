// SPDX-License-Identifier: MIT
#pragma once

#include "host/tag.h"

/// The texture tag that gives a polygon selection its material, or with a null `selectionTag` what is in no
/// selection. The rightmost tag wins; a tag without a restriction ends the search for every selection. Looks
/// through the parents, and where there is none through the object whose cache it is.
TextureTag* findTextureTag(const BaseObject* object, const BaseTag* selectionTag);
