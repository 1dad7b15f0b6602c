// SPDX-License-Identifier: MIT
#pragma once

#include "host/videopost.h"
#include "render/picture_job.h"

/// Turns the document of the call into `job.root`, bound and ready for the renderer, and fills the rest of
/// the job: sizes, the region, kind of render. A RenderResult; throws QuenzaException where a part of the
/// scene is missing.
int32_t exportPicture(PictureJob& job, const VideoPostStruct& vps);
