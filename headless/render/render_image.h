// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"
#include "host/videopost.h"

#include <cstdint>
#include <functional>
#include <mutex>

namespace headless {

/// The image of a render while it grows: what a VPBuffer points to. Red, green and blue of 8 bits each, black
/// at first, rows from the top. Any thread.
class RenderImage {
public:
    static constexpr int32_t BYTES_PER_PIXEL = 3;

    /// `onChanged` is called by the thread that says that the image has changed. Throws HostError for a size
    /// that no image can have.
    RenderImage(int32_t width, int32_t height, std::function<void()> onChanged = {});

    int32_t width() const { return width_; }
    int32_t height() const { return height_; }

    /// Writes pixels into a row. False, without a change, when some lie outside.
    bool setLine(int32_t x, int32_t y, int32_t count, const uint8_t* pixels);
    void setChanged();
    /// How often the image was said to have changed.
    uint64_t changes() const;
    /// A copy of the image, with the number of changes at that moment.
    uint64_t copyTo(Image& image) const;

private:
    const int32_t width_;
    const int32_t height_;
    const std::function<void()> onChanged_;
    mutable std::mutex mutex_;
    Image image_;
    uint64_t changes_ = 0;
};

inline RenderImage* fromHost(const VPBuffer* buffer) {
    return reinterpret_cast<RenderImage*>(const_cast<VPBuffer*>(buffer));
}
inline VPBuffer* toHost(RenderImage* image) {
    return reinterpret_cast<VPBuffer*>(image);
}

} // namespace headless
