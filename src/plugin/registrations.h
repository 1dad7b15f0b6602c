// SPDX-License-Identifier: MIT
#pragma once

/// Registers everything that the host sees of the plug-in, in its fixed order. The first failure ends it with
/// false; a row that needs a name from the string table and finds none is passed over.
bool registerPlugins();
