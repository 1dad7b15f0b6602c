// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/uid.h"
#include "foundation/vector.h"
#include "host/document.h"
#include "host/filename.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "shared/sampled_motion.h"

#include <map>

/// What one export of one frame reads, and what its parts share. Lives on the caller's stack for that frame;
/// the document must not change meanwhile.
struct ExportContext {
    /// `scenePath` is the scene file without a frame number. Without `extraFiles` the scene's texture folder
    /// is made; with it textures go to the system's temporary folder, and the list gets their names.
    ExportContext(BaseDocument* document, const Filename& scenePath,
                  Quenza::Vector<Quenza::String>* extraFiles, int32_t frame, int32_t width, int32_t height,
                  bool isAnimation, bool mergeVertices, bool verbose, bool isMaterialPreview);
    ExportContext(const ExportContext&) = delete;
    ExportContext& operator=(const ExportContext&) = delete;

    BaseDocument* document;
    /// Light layer key to index of the scene's layer.
    std::map<int32_t, int32_t> layerMap;
    /// Folder of the scene file.
    Filename sceneDirectory;
    Filename textureDirectory;
    /// The scene file's name without suffix.
    String sceneBaseName;
    int32_t frame;
    /// Of the image, in pixels.
    int32_t imageWidth;
    int32_t imageHeight;
    /// Seconds.
    float exposureDuration;
    /// Metres per document unit.
    float sceneScale;
    /// The frame is one of several: frame numbers enter the file name.
    bool isAnimation;
    /// Gives the default material `overrideColour`.
    bool overrideMaterials = false;
    /// Vertices are merged here, not by the renderer.
    bool mergeVertices;
    /// Progress is printed on the host's console.
    bool verbose;
    bool isMaterialPreview;
    bool gpuRendering = false;
    Vector overrideColour{0.71f, 0.62f, 0.53f};
    Quenza::SceneNodeUID nullMaterialUID;
    Quenza::SceneNodeUID defaultMaterialUID;
    Quenza::SceneNodeUID lightMaterialUID;
    Quenza::SceneNodeUID exitPortalMaterialUID;
    /// Temporary files of this export, not owned; may be null.
    Quenza::Vector<Quenza::String>* extraFiles;
    std::map<BaseMaterial*, Quenza::Ref<Quenza::SceneNodeMaterial>> materialMap;
    std::map<BaseMaterial*, Quenza::Ref<Quenza::SceneNodeMedium>> mediumMap;
    /// The number in the name of the last baked file.
    uint32_t lastBakeNumber = 0;
    /// File names of presets among the textures, in lower case, to the presets that have them.
    std::map<String, Filename> presetTextures;
    /// Model of each exported object of the document.
    std::map<BaseObject*, Quenza::SceneNodeUID> modelMap;
    /// The scene camera of the active view, with copies of its container and of its camera tag's.
    BaseObject* cameraObject = nullptr;
    BaseContainer cameraData;
    BaseContainer cameraTagData;
    bool hasCameraTag = false;
    /// Where the document's objects are while the shutter is open.
    SampledMotion sampledMotion;
    /// Container of the enabled render settings video post, null without one.
    const BaseContainer* renderSettings = nullptr;
};

/// The container of the first enabled render settings video post in the active render data, or null.
const BaseContainer* findVideoPost(BaseDocument* document);
