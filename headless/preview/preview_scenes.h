// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <memory>
#include <string>
#include <vector>

namespace headless {

/// A document on which materials of a plug-in's type are shown.
struct PreviewScene {
    /// The file's name without its folder and suffix.
    std::string name;
    int32_t materialType = 0;
    /// As it was loaded, and then as the plug-in set it up; previews render copies.
    std::unique_ptr<Document> document;
    bool isSetUp = false;
};

/// The preview scenes that a plug-in handed over, in their order. Their documents are to be gone before the
/// plug-in is.
class PreviewScenes {
public:
    /// Opens a document or model. Throws DocumentError.
    void add(const std::string& file, int32_t materialType);
    /// The scene of that name, or with "" the first of the type. Null when there is none.
    PreviewScene* find(int32_t materialType, const std::string& name);
    std::vector<std::string> names(int32_t materialType) const;
    void clear() { scenes_.clear(); }

private:
    std::vector<std::unique_ptr<PreviewScene>> scenes_;
};

} // namespace headless
