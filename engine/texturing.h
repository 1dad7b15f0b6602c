// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/geometry.h"
#include "engine/image_cache.h"
#include "engine/notices.h"
#include "engine/qsl_program.h"
#include "engine/texture_map.h"
#include "engine/vec.h"
#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/material.h"
#include "scene/param.h"
#include "scene/shader_info.h"
#include "scene/texture.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace engine {

/// What shows a shader that does not compile: a colour that no artist misses.
inline const RGB WARNING_COLOUR{0.8f, 0.0f, 0.8f};

/// What a parameter takes its values from: a constant, an image or a program. Cheap to copy; may be asked by
/// many threads at once.
class Input {
public:
    Input() = default;
    explicit Input(std::shared_ptr<const TextureMap> texture) : texture_(std::move(texture)) {}
    explicit Input(std::shared_ptr<const QSLProgram> program) : program_(std::move(program)) {}

    bool isConstant() const { return !texture_ && !program_; }

protected:
    std::shared_ptr<const TextureMap> texture_;
    std::shared_ptr<const QSLProgram> program_;
};

/// A colour of the surface: a reflectance or other factor, or a radiance. Not negative.
class ColourInput : public Input {
public:
    /// Of a parameter that isn't there: black.
    ColourInput() = default;
    explicit ColourInput(const RGB& constant) : factor_(constant), set_(true) {}
    ColourInput(const RGB& factor, Input source, bool set = true)
        : Input(std::move(source)), factor_(factor), set_(set) {}

    RGB at(const SurfacePoint& point) const;
    /// Mean over the image, or over some points where a program is asked.
    RGB average() const;
    /// False for a parameter that isn't there.
    bool isSet() const { return set_; }

private:
    RGB factor_;
    bool set_ = false;
};

/// A number of the surface; of an image, its luminance.
class ScalarInput : public Input {
public:
    ScalarInput() = default;
    explicit ScalarInput(float constant, bool set = true) : constant_(constant), set_(set) {}
    explicit ScalarInput(Input source) : Input(std::move(source)), set_(true) {}

    float at(const SurfacePoint& point) const;
    float average() const;
    bool isSet() const { return set_; }

    /// Change of the value along u and v of the first UV set: that of a height whose surface is bumpy.
    struct Slope {
        float along_u, along_v;
    };
    Slope slopeAt(const SurfacePoint& point) const;

private:
    float constant_ = 0;
    bool set_ = false;
};

/// The normal of a normal map, in the frame of u, v and the surface's normal; (0, 0, 1) changes nothing. An
/// image's values of 0 to 1 stand for -1 to 1; a program gives the vector itself.
class VectorInput : public Input {
public:
    VectorInput() = default;
    explicit VectorInput(Input source) : Input(std::move(source)) {}

    Vec at(const SurfacePoint& point) const;
    bool isSet() const { return !isConstant(); }
};

/// Makes the parameters of one material ready for rendering. An image that can't be read, a texture that
/// isn't there and a program that doesn't compile are told once, by material and channel. `channel` is the
/// parameter's name in the scene file.
class InputBuilder {
public:
    InputBuilder(const Quenza::Material& material, ImageCache& images, Notices& notices);

    /// A reflectance or other factor. `absent` stands for a null parameter, which then counts as not set. An
    /// image that can't be read is grey; a program that doesn't compile has the colour of a warning.
    ColourInput colour(const Quenza::Ref<Quenza::WavelengthDependentParam>& param, const char* channel,
                       float absent) const;
    /// A radiance; likewise, black when absent.
    ColourInput radiance(const Quenza::Ref<Quenza::WavelengthDependentParam>& param,
                         const char* channel) const;
    /// `absent` stands for whatever gives no number.
    ScalarInput scalar(const Quenza::Ref<Quenza::WavelengthIndependentParam>& param, const char* channel,
                       float absent) const;
    ScalarInput displacement(const Quenza::Ref<Quenza::DisplacementParam>& param, const char* channel,
                             float absent) const;
    /// Not set when it gives no vector.
    VectorInput vector(const Quenza::Ref<Quenza::Vec3Param>& param, const char* channel) const;

    /// True when a program did not compile, which should show on the whole surface: what asked for a number
    /// or a vector has no colour of its own to warn with.
    bool failed() const { return failed_; }
    Notices& notices() const { return notices_; }

private:
    Input textureAt(Quenza::i32 index, const char* channel) const;
    Input program(const Quenza::Ref<Quenza::ShaderInfo>& info, const QSLEntry& entry,
                  const char* channel) const;
    std::shared_ptr<const TextureMap> makeMap(const Quenza::Texture& texture) const;
    void addTexts(const Quenza::ShaderInfo& info, std::vector<QSLText>& texts) const;
    void tellUnreadable(const Quenza::Texture& texture, const char* channel) const;
    void tellFaulty(const char* channel, const std::string& reason) const;
    ColourInput colourOf(const Quenza::Ref<Quenza::WavelengthDependentParam>& param, const char* channel,
                         const RGB& absent, const RGB& white,
                         RGB (*ofSpectrum)(const Quenza::Spectrum&)) const;
    std::string owner(const char* channel) const;

    const Quenza::Material& material_;
    ImageCache& images_;
    Notices& notices_;
    std::vector<std::shared_ptr<const TextureMap>> textures_;
    mutable bool failed_ = false;
};

} // namespace engine
