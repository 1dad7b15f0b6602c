// SPDX-License-Identifier: MIT
#pragma once

#include "export/render_settings_post.h"
#include "render/picture_job.h"

/// The render settings as the engine of the host's own render: exports the document, has the run-time library
/// render it, and gives the images to the host. Does nothing without the library.
class RenderSettingsVideoPost : public RenderSettingsPost {
public:
    ~RenderSettingsVideoPost() override;

    int32_t Execute(BaseVideoPost* videoPost, BaseContainer* container, VideoPostStruct* vps) override;

private:
    int32_t runPhase(const BaseContainer* container, const VideoPostStruct& vps);
    int32_t exportScene(const VideoPostStruct& vps);
    int32_t render(const BaseContainer* container, const VideoPostStruct& vps);
    void cleanUp();

    PictureJob job_;
};
