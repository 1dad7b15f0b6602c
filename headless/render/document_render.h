// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"
#include "headless/render/render_call.h"

namespace headless {

/// The video post that renders when RDATA_RENDERENGINE is `engine`: an enabled one of that type in the active
/// render setup, and for 0 the first enabled one of a plug-in. Null when there is none, with an error line.
VideoPost* renderingVideoPost(const Document& document, int32_t engine);

/// Renders a document with a video post into an image, in the caller's thread: builds the caches, tells the
/// materials and video posts that a render begins, and goes through the phases, each of which opens inside
/// the one before. A phase that fails ends the way in; what was opened is closed in any case. Gives the first
/// result that isn't RENDERRESULT_OK. An exception of the video post counts as a failure and gives an error
/// line.
///
/// The document must not change meanwhile. `flags` are RenderFlags; `thread` may be null.
int32_t renderDocument(Document& document, VideoPost& videoPost, RenderImage& image,
                       const std::optional<RenderRegion>& region, int32_t flags, BaseThread* thread);

} // namespace headless
