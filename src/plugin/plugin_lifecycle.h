// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

struct HostTable;

/// Takes the host's tables and the plug-in's folder over. 1, or -3 for a host that is too old or names no
/// folder. A second call counts and changes nothing.
int32_t initPlugin(const HostTable* tables, const Filename* pluginFolder);

/// Looks for the run-time library, registers everything and prints the banner. False when a registration
/// fails.
bool PluginStart();

/// Counts an init away; at the last one releases what the plug-in holds. Always 1.
int32_t endPlugin();

bool PluginMessage(int32_t id, void* data);
