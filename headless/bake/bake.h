// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"
#include "headless/model/document.h"
#include "host/bake.h"

#include <functional>
#include <memory>

namespace headless {

/// A document with copies of one object, its material and what they own, for a bake.
class BakeDocument : public Document {
public:
    TextureTagNode* texture = nullptr;
    UVWTagNode* uvw = nullptr;
    /// The polygons that the records of `uvw` belong to.
    const PolygonNode* polygons = nullptr;
};

/// Copies what a bake of a texture tag's material needs; changes of the source don't reach it. Without `uvw`
/// the UVW tag of the tag's object counts, or of a generator's geometry. Null with a BakeTexError.
std::unique_ptr<BakeDocument> makeBakeDocument(const Document& source, const TextureTagNode* texture,
                                               const UVWTagNode* uvw, int32_t& error);

/// Bakes the colour channel, when BAKE_TEX_COLOR asks for it: the only pass that there is. `image` becomes
/// one of 24 bits, black where no polygon is. All processors take part; `isCancelled` is asked by the calling
/// thread, once a row or more often. A BakeTexError.
int32_t bakeTexture(BakeDocument& document, const BaseContainer& settings, Image& image,
                    const std::function<bool()>& isCancelled);

} // namespace headless
