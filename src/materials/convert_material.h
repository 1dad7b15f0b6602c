// SPDX-License-Identifier: MIT
#pragma once

class BaseMaterial;

/// Fills `target`, a material of the plug-in, from another material. False for null and for a source that
/// lies in no document.
bool convertMaterial(BaseMaterial* target, BaseMaterial* source);
