// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/geometry.h"
#include "engine/image_file.h"
#include "engine/notices.h"
#include "scene/texture.h"

#include <map>
#include <memory>
#include <string>

namespace engine {

/// An image as a parameter reads it.
class TextureMap {
public:
    /// A null image stands for one that couldn't be read: it has the colour of a warning.
    TextureMap(const Quenza::Texture& texture, std::shared_ptr<const FloatImage> image);

    RGB at(const SurfacePoint& point) const;
    /// Mean over the image.
    RGB average() const { return average_; }
    /// Change of the luminance with the image's coordinates, over a texel.
    struct Slope {
        float along_u, along_v;
    };
    Slope slopeAt(const SurfacePoint& point) const;

private:
    struct Place {
        float u, v;
    };
    Place placeOf(const SurfacePoint& point) const;
    RGB lookUp(Place place) const;
    RGB texel(Quenza::i64 x, Quenza::i64 y) const;
    float convert(float texel) const;

    Quenza::Texture texture_;
    std::shared_ptr<const FloatImage> image_;
    RGB average_;
};

/// Images by their path, so that each is read once.
class ImageCache {
public:
    /// Relative paths start at `folder`.
    ImageCache(std::string folder, Notices& notices) : folder_(std::move(folder)), notices_(notices) {}

    /// Null when it can't be read, of which the user is told.
    std::shared_ptr<const FloatImage> load(const Quenza::String& path);
    std::string resolve(const Quenza::String& path) const;

private:
    std::string folder_;
    Notices& notices_;
    std::map<std::string, std::shared_ptr<const FloatImage>> images_;
};

/// A colour that may vary over a surface.
struct ColourParam {
    RGB factor{1.0f};
    std::shared_ptr<const TextureMap> texture; ///< Null for the factor alone.

    RGB at(const SurfacePoint& point) const { return texture ? factor * texture->at(point) : factor; }
    RGB average() const { return texture ? factor * texture->average() : factor; }
};

/// A number that may vary over a surface: the luminance of its texture.
struct NumberParam {
    float constant = 0;
    std::shared_ptr<const TextureMap> texture;

    float at(const SurfacePoint& point) const { return texture ? luminance(texture->at(point)) : constant; }
    float average() const { return texture ? luminance(texture->average()) : constant; }
};

} // namespace engine
