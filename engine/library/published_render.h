// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"
#include "sdk/render_buffer.h"

#include <memory>
#include <string>
#include <vector>

namespace engine::library {

class LiveRender;

/// Lets tone mappers, which know a render's buffer alone, find the render. Until the destructor has returned
/// they may call it from their threads.
class PublishedRender {
public:
    /// An earlier render with the same buffer isn't found any more.
    PublishedRender(const Quenza::RenderBuffer& buffer, LiveRender& render);
    ~PublishedRender();
    PublishedRender(const PublishedRender&) = delete;
    PublishedRender& operator=(const PublishedRender&) = delete;

    struct Entry;

private:
    const Quenza::RenderBuffer* buffer_;
    std::shared_ptr<Entry> entry_;
};

/// A render's image at one moment.
struct Snapshot {
    std::vector<FloatImage> layers; ///< Without gains.
    float focus_distance = -1;      ///< Of the camera, in metres; negative when there is no render any more.
};

/// The image of a buffer, brought up to date when its render is still there.
Snapshot takeSnapshot(Quenza::RenderBuffer& buffer);

/// Tells the user of the buffer's render, once.
void informUserOf(const Quenza::RenderBuffer& buffer, const std::string& text);

} // namespace engine::library
