// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include "headless/model/handles.h"
#include "headless/render/document_render.h"
#include "headless/runtime/host.h"

#include <algorithm>

namespace headless {

namespace {

VPBuffer* getBuffer(const Render* render) {
    return toHost(fromHost(render)->image);
}

bool getRegion(const Render* render, int32_t& kind, int32_t& from, int32_t& to) {
    const std::optional<RenderRegion>& region = fromHost(render)->region;
    if (region) {
        kind = region->kind;
        from = region->from;
        to = region->to;
    }
    return region.has_value();
}

int32_t getWidth(const VPBuffer* buffer) {
    return fromHost(buffer)->width();
}

int32_t getHeight(const VPBuffer* buffer) {
    return fromHost(buffer)->height();
}

int32_t getBytesPerPixel(const VPBuffer* /*buffer*/) {
    return RenderImage::BYTES_PER_PIXEL;
}

bool setLine(VPBuffer* buffer, int32_t x, int32_t y, int32_t count, const uint8_t* pixels) {
    return fromHost(buffer)->setLine(x, y, count, pixels);
}

void setChanged(VPBuffer* buffer) {
    fromHost(buffer)->setChanged();
}

/// Into a bitmap of any depth, as long as its size is the image's.
void copyInto(Image& target, const Image& image) {
    if (target.bytes()) {
        target = image;
        return;
    }
    for (int32_t y = 0; y < image.height(); ++y) {
        for (int32_t x = 0; x < image.width(); ++x) {
            target.setPixel(x, y, image.pixel(x, y));
        }
    }
}

int32_t renderInto(Document& document, const BaseContainer& settings, Image& target, int32_t flags,
                   BaseThread* thread) {
    const int32_t width = settings.GetLong(RDATA_XRES);
    const int32_t height = settings.GetLong(RDATA_YRES);
    if (target.width() != width || target.height() != height) {
        throw HostError("The bitmap of a render has " + std::to_string(target.width()) + " by " +
                        std::to_string(target.height()) + " pixels, its settings say " +
                        std::to_string(width) + " by " + std::to_string(height));
    }
    VideoPost* const videoPost = renderingVideoPost(document, settings.GetLong(RDATA_RENDERENGINE));
    if (!videoPost) {
        return RENDERRESULT_FAILED;
    }
    RenderImage image(width, height);
    const int32_t result = renderDocument(document, *videoPost, image, std::nullopt, flags, thread);
    if (image.changes() > 0) {
        Image picture;
        image.copyTo(picture);
        copyInto(target, picture);
    }
    return result;
}

int32_t renderDocumentOf(BaseDocument* document, const BaseContainer& settings, BaseBitmap* bitmap,
                         int32_t flags, BaseThread* thread) {
    if (!document || !bitmap) {
        return RENDERRESULT_FAILED;
    }
    try {
        return renderInto(*fromHost(document), settings, *fromHost(bitmap), flags, thread);
    } catch (const std::exception& error) {
        Host::current().errors().print(error.what());
        return RENDERRESULT_FAILED;
    }
}

} // namespace

const RenderTable* renderTable() {
    static constexpr RenderTable table = {
        .GetBuffer = getBuffer,
        .GetRegion = getRegion,
        .GetWidth = getWidth,
        .GetHeight = getHeight,
        .GetBytesPerPixel = getBytesPerPixel,
        .SetLine = setLine,
        .SetChanged = setChanged,
        .RenderDocument = renderDocumentOf,
    };
    return &table;
}

} // namespace headless
