// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

/// The plug-in's folder below the user's application data; made when it doesn't exist. A failure to make it
/// isn't reported; throws PlatformUtilsExcep when the system names no application data folder.
Filename getUserFolder();
