// SPDX-License-Identifier: MIT
#pragma once

#include "host/bitmap.h"
#include "host/document.h"
#include "host/material.h"
#include "host/object.h"
#include "host/thread.h"

/// Messages by which the host has a material make its own preview, each with a record as its data.
enum MaterialPreviewMessage : int32_t {
    MATPREVIEW_PREPARE_SCENE = 1011142,
    MATPREVIEW_GET_OBJECT_INFO = 1011147,
    MATPREVIEW_GENERATE_IMAGE = 1011148,
    MATPREVIEW_MODIFY_CACHE_SCENE = 1011149,
};

struct MatPreviewObjectInfo {
    /// The material handles the preview messages; else the host shades a sphere.
    int32_t handlesPreview = 0;
    /// The material takes part in a copy of the preview scene, which no other material sees.
    int32_t needsOwnScene = 0;
    int32_t flags = 0;
};

/// The copy of the preview scene that is about to be rendered.
struct MatPreviewPrepareScene {
    /// Set to 1 by the material: the host then renders.
    int32_t sceneLoaded = 0;
    /// The material as it stands in the source document; the material points it to its clone in the preview
    /// scene.
    BaseMaterial* material = nullptr;
    BaseDocument* previewDocument = nullptr;
    Matrix matrix;
    /// Null, or the object that the material is shown on.
    BaseObject* sourceObject = nullptr;
    /// Null, or the document of the material.
    BaseDocument* sourceDocument = nullptr;
};

struct MatPreviewGenerateImage {
    BaseDocument* previewDocument = nullptr;
    BaseBitmap* bitmap = nullptr;
    BaseThread* thread = nullptr;
    int32_t abort = 0;
    int32_t draft = 0;
    /// A RenderResult, from the material.
    int32_t result = RENDERRESULT_PREVIEW_PENDING;

    static constexpr int32_t RENDERRESULT_PREVIEW_PENDING = -1;
};

/// A preview scene as it was loaded, before it is copied for each preview.
struct MatPreviewModifyCacheScene {
    BaseDocument* previewDocument = nullptr;
};
