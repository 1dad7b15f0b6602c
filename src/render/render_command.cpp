// SPDX-License-Identifier: MIT
#include "render/render_command.h"

#include "host/document.h"
#include "render/export_dialog.h"

bool RenderCommand::Execute(BaseDocument* /*document*/) {
    ExportDialog dialog(GetActiveDocument());
    return dialog.OpenModal(400, 400);
}
