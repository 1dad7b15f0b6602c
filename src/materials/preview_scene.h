// SPDX-License-Identifier: MIT
#pragma once

class BaseDocument;
class BaseObject;
class BaseVideoPost;
class String;

// The stage that a material is shown on: a document of "res/materialpreview". What the plug-in changes about
// it, it finds by its name.

/// The name of the object that wears the material.
inline constexpr const char* PREVIEW_OBJECT = "Object";

/// Makes a stage as it was loaded ready for the renderer: render settings, lamps, the camera's exposure, the
/// floor's picture. Whatever of it the stage doesn't have is left out. What it has already is used and not
/// added again.
void setUpPreviewScene(BaseDocument& stage);

/// The first object of that name as the tree is read; null when there is none.
BaseObject* findPreviewObject(const BaseDocument& stage, const String& name);

/// The render settings of the active setup; null when it has none.
BaseVideoPost* findPreviewSettings(const BaseDocument& stage);
