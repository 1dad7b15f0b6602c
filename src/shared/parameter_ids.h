// SPDX-License-Identifier: MIT
#pragma once

// Numbers of the parameters of the plug-in's video post, material, shaders, tags and objects: the very
// headers that its description resources are made with, so that a number stands in one place. Documents store
// them.

#include "description/Mquenzamaterial.h"
#include "description/Oquenzainstance.h"
#include "description/Oquenzasectionplane.h"
#include "description/TCameraTag.h"
#include "description/TMyExitPortal.h"
#include "description/TQuenzaCompositing.h"
#include "description/oquenzarendersettings.h"
#include "description/tMyLightTag.h"
#include "description/tSubdivision.h"
#include "description/xcquenzaqslshader.h"
#include "description/xqslblend.h"
#include "description/xqslgradient.h"
#include "description/xqslnoise.h"
#include "description/xqslnormal.h"
