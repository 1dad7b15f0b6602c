// SPDX-License-Identifier: MIT
#include "engine/image_writer.h"

#include "engine/output.h"
#include "engine/tonemap.h"

#include <vector>

namespace engine {

std::string writeImages(const RenderSession& session, const Outputs& outputs) {
    const std::vector<FloatImage> layers = session.layerImages();
    const ToneMapper tone_mapper = session.toneMapper();
    const auto failed = [](const std::string& path, const std::string& reason) {
        return "can't write the image '" + path + "': " + reason;
    };
    std::string reason;
    if (!outputs.qzi.empty() && !(reason = writeQZI(outputs.qzi, layers, session.layerNames())).empty()) {
        return failed(outputs.qzi, reason);
    }
    if (!outputs.untonemapped_exr.empty() &&
        !(reason = writeEXR(outputs.untonemapped_exr, tone_mapper.combine(layers))).empty()) {
        return failed(outputs.untonemapped_exr, reason);
    }
    if (!outputs.tonemapped_exr.empty() &&
        !(reason = writeEXR(outputs.tonemapped_exr, tone_mapper.display(layers))).empty()) {
        return failed(outputs.tonemapped_exr, reason);
    }
    // The PNG comes last: who waits for it finds the others as well.
    if (!outputs.png.empty() && !(reason = writePNG(outputs.png, session.film().width(),
                                                    session.film().height(), tone_mapper.toneMap(layers)))
                                     .empty()) {
        return failed(outputs.png, reason);
    }
    return "";
}

} // namespace engine
