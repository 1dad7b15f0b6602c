// SPDX-License-Identifier: MIT
#include "plugin/about_command.h"

#include "export/version.h"
#include "host/dialog.h"
#include "render/runtime/quenza_context.h"
#include "shared/plugin_state.h"

namespace {

const char* rendererText() {
    if (!isLibraryLoaded()) {
        return "Rendering inside Cinema 4D: not available, the renderer's library isn't loaded.";
    }
    return pluginState().isRTEdition ? "Rendering inside Cinema 4D: Quenza RT."
                                     : "Rendering inside Cinema 4D: Quenza Renderer.";
}

} // namespace

bool AboutCommand::Execute(BaseDocument* /*document*/) {
    MessageDialog(exporterVersionString() +
                  "\n\nExports documents to the Quenza spectral renderer and renders them with it.\n" +
                  rendererText() + "\n\nDeveloped by: " + DEVELOPER_CREDIT);
    return true;
}
