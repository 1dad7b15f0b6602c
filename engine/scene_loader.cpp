// SPDX-License-Identifier: MIT
#include "engine/scene_loader.h"

#include "foundation/file_utils.h"
#include "reading/model_loader.h"
#include "reading/scene_parser.h"

namespace engine {

Quenza::Ref<Quenza::SceneNodeRoot> loadScene(const std::string& path, const std::string& data_folder,
                                             const std::string& extra_settings) {
    Quenza::installModelLoader();
    Quenza::QuenzaModelParser::Context context;
    if (!data_folder.empty() &&
        Quenza::FileUtils::fileExists(Quenza::FileUtils::join(data_folder, "inifile.xml"))) {
        context.base_directory = data_folder;
    }
    Quenza::Ref<Quenza::SceneNodeRoot> root;
    Quenza::QuenzaModelParser parser;
    parser.parseScene(root, path, context, extra_settings);
    root->checkValidity();
    root->finalise(path);
    return root;
}

} // namespace engine
