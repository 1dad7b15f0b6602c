// SPDX-License-Identifier: MIT

// In the place of headless/import where there is no Assimp.

#include "headless/import/import_model.h"

#include "foundation/native_path.h"
#include "headless/documents/document_error.h"
#include "headless/runtime/files.h"

namespace headless {

std::unique_ptr<Document> importModel(const std::string& file, std::vector<std::string>& /*warnings*/,
                                      const std::string& /*textureFolder*/) {
    if (!files::isFile(Quenza::nativePath(file))) {
        throw DocumentError(file, "there is no such file");
    }
    throw DocumentError(file, "this program was built without Assimp and reads no model files; "
                              "one that was built with it can save the model as a document (open --save)");
}

} // namespace headless
