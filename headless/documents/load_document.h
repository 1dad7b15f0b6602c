// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/document_error.h"
#include "headless/model/document.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace headless {

struct LoadedDocument {
    std::unique_ptr<Document> document;
    /// What the document wants for the host's unit preference, WPREF_UNITS_BASIC.
    std::optional<int32_t> unit;
    /// What model files hold that couldn't be taken over, a sentence each with the file's name.
    std::vector<std::string> warnings;
};

/// Told the unit preference that a document wants, before its nodes are made: new nodes take their unit from
/// the preference.
using TakeUnit = std::function<void(int32_t unit)>;

/// Reads a document of this program's own format (docs/document-format.md). Plug-in types must be registered.
/// Images that lie inside its model files are written to folders below `textureFolder`, one for each model,
/// named after it; "" leaves them out. Throws DocumentError.
LoadedDocument loadDocument(const std::string& file, const TakeUnit& takeUnit = nullptr,
                            const std::string& textureFolder = "");

/// Reads a document or, by its suffix, a model file.
LoadedDocument openDocument(const std::string& file, const TakeUnit& takeUnit = nullptr,
                            const std::string& textureFolder = "");

} // namespace headless
