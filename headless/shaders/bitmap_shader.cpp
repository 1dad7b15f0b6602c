// SPDX-License-Identifier: MIT
#include "headless/images/image_files.h"
#include "headless/model/handles.h"
#include "headless/model/warnings.h"
#include "headless/runtime/files.h"
#include "headless/runtime/texture_search.h"
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/host_shader.h"

namespace headless {

namespace {

/// An image, repeated in both directions, between whose pixels' middles colours go over linearly.
class BitmapShader : public HostShader {
public:
    explicit BitmapShader(Image image) : image_(std::move(image)) {}

    Vector sample(const ChannelData& channel) const override {
        if (image_.depth() == 0 || !std::isfinite(channel.p.x) || !std::isfinite(channel.p.y)) {
            return {};
        }
        const Place u = placeOf(channel.p.x, image_.width());
        const Place v = placeOf(channel.p.y, image_.height());
        const Vector above = mix(image_.pixel(u.first, v.first), image_.pixel(u.second, v.first), u.part);
        const Vector below = mix(image_.pixel(u.first, v.second), image_.pixel(u.second, v.second), u.part);
        return mix(above, below, v.part);
    }

private:
    /// Two neighbours, and how far from the first to the second.
    struct Place {
        int32_t first;
        int32_t second;
        float part;
    };

    static Place placeOf(float coordinate, int32_t size) {
        const double inTile = coordinate - std::floor(static_cast<double>(coordinate));
        const double middle = inTile * size - 0.5;
        const double first = std::floor(middle);
        const int32_t index = static_cast<int32_t>(first);
        return {(index + size) % size, (index + 1) % size, static_cast<float>(middle - first)};
    }

    Image image_;
};

} // namespace

std::unique_ptr<HostShader> makeBitmap(ShaderSource& source) {
    const Filename name = source.data().GetFilename(BITMAPSHADER_FILENAME);
    const BaseDocument* const given = source.init().document;
    const Document* const document = given ? fromHost(given) : source.owner().document();
    Image image;
    Filename found = name;
    if (name.Content()) {
        const bool exists = findTexture(document ? document->path : Filename(), name, Filename(), &found);
        const Filename& file = found.Content() ? found : name;
        if (!exists) {
            warnOfTexture("The texture " + name.GetUtf8() + " was not found");
        } else if (readImage(files::pathOf(file), image) != IMAGERESULT_OK) {
            warnOfTexture("The texture " + file.GetUtf8() + " can't be read");
        }
    }
    return std::make_unique<BitmapShader>(std::move(image));
}

} // namespace headless
