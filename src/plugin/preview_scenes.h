// SPDX-License-Identifier: MIT
#pragma once

/// Hands the files of "res/materialpreview" to the host as preview scenes of the plug-in's material.
void addPreviewScenes();
