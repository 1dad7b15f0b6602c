// SPDX-License-Identifier: MIT
#pragma once

// Numbers of the parameters of the plug-in's video post, tags and objects: the very headers that its
// description resources are made with, so that a number stands in one place. Documents store them.

#include "description/Oquenzainstance.h"
#include "description/Oquenzasectionplane.h"
#include "description/TCameraTag.h"
#include "description/TMyExitPortal.h"
#include "description/TQuenzaCompositing.h"
#include "description/oquenzarendersettings.h"
#include "description/tMyLightTag.h"
#include "description/tSubdivision.h"
