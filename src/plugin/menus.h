// SPDX-License-Identifier: MIT
#pragma once

// What the plug-in adds to the host's menus while the host builds them. An entry that is there already is not
// added again, and a host without the menu, or under other names, is left as it is. Main thread.

/// "Quenza Renderer" behind "View" of the Picture Viewer: Tonemapping, Pause, Resume and Update Image.
void enhancePictureViewerMenu();
/// The command that makes a material, in the material manager's menu.
void enhanceMaterialManagerMenu();
