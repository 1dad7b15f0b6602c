// SPDX-License-Identifier: MIT
#include "headless/preview/preview_scenes.h"

#include "foundation/native_path.h"
#include "headless/documents/load_document.h"

namespace headless {

void PreviewScenes::add(const std::string& file, int32_t materialType) {
    auto scene = std::make_unique<PreviewScene>();
    scene->name = Quenza::utf8Path(Quenza::nativePath(file).stem());
    scene->materialType = materialType;
    scene->document = openDocument(file).document;
    scenes_.push_back(std::move(scene));
}

PreviewScene* PreviewScenes::find(int32_t materialType, const std::string& name) {
    for (const std::unique_ptr<PreviewScene>& scene : scenes_) {
        if (scene->materialType == materialType && (name.empty() || scene->name == name)) {
            return scene.get();
        }
    }
    return nullptr;
}

std::vector<std::string> PreviewScenes::names(int32_t materialType) const {
    std::vector<std::string> names;
    for (const std::unique_ptr<PreviewScene>& scene : scenes_) {
        if (scene->materialType == materialType) {
            names.push_back(scene->name);
        }
    }
    return names;
}

} // namespace headless
