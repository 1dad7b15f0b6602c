// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/document_error.h"
#include "headless/model/document.h"

#include <optional>
#include <string>

namespace headless {

/// Writes a document in this program's own format (docs/document-format.md), whole or not at all; reading it
/// gives an equal one. Left out are caches, undo steps, and values that the format has no form for: pointers
/// and containers inside containers. `unit` is the host's unit preference when the document is to bring it.
/// The document's own path and name stay. Throws DocumentError: the file can't be written, or a number isn't
/// finite.
void saveDocument(const Document& document, const std::string& file, std::optional<int32_t> unit = {});

} // namespace headless
