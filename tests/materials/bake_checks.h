// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/save_document.h"
#include "headless/shaders/shader_ids.h"
#include "host/bitmap.h"
#include "materials/bake_memory.h"
#include "materials/material_fixture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

// What tests of baking look at.

/// Tests of baking: a document as text, and images against the shader that they show.
class BakeChecks : public MaterialTest {
protected:
    /// The whole document, to see whether anything changed.
    std::string documentText() {
        const std::string file = folder() + "/document.json";
        headless::saveDocument(*host().document(), file);
        const std::string text = Quenza::fileBytes(file);
        std::remove(file.c_str());
        return text;
    }

    static OwnedBitmap load(const std::string& file) {
        OwnedBitmap image(BaseBitmap::Alloc());
        EXPECT_EQ(image->Init(Filename(String(file))), IMAGERESULT_OK) << file;
        return image;
    }

    /// 3 for a JPEG in colour, 1 for a grey one.
    static int componentsOf(const std::string& file) {
        const std::string bytes = Quenza::fileBytes(file);
        const auto byteAt = [&bytes](size_t at) {
            return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
        };
        for (size_t at = 2; at + 9 < bytes.size(); at += 2 + size_t(byteAt(at + 2)) * 256 + byteAt(at + 3)) {
            if (byteAt(at + 1) == 0xc0) {
                return byteAt(at + 9);
            }
        }
        return 0;
    }

    /// The largest difference of a component, 0 to 255, to the shader at the pixels' middles, when the image
    /// shows the whole texture.
    static int differenceTo(BaseShader* shader, const BaseBitmap& image, bool isGrey) {
        InitRenderStruct init;
        EXPECT_EQ(shader->InitRender(init), INITRENDERRESULT_OK);
        int largest = 0;
        for (int32_t y = 0; y < image.GetBh(); ++y) {
            for (int32_t x = 0; x < image.GetBw(); ++x) {
                ChannelData place;
                place.p = Vector((float(x) + 0.5f) / float(image.GetBw()),
                                 (float(y) + 0.5f) / float(image.GetBh()), 0.0f);
                largest = std::max(largest, difference(shader->Sample(place), image, x, y, isGrey));
            }
        }
        shader->FreeRender();
        return largest;
    }

    /// Noise from red to blue, which a grey file shows in another way than a coloured one.
    static BaseShader* addNoise(BaseMaterial* material, int32_t link) {
        BaseShader* const noise = addShader(material, link, headless::Xnoise);
        data(noise).SetVector(headless::NOISE_COLOR1, Vector(1.0f, 0.25f, 0.0f));
        data(noise).SetVector(headless::NOISE_COLOR2, Vector(0.0f, 0.0f, 0.75f));
        return noise;
    }

private:
    static int difference(const Vector& expected, const BaseBitmap& image, int32_t x, int32_t y,
                          bool isGrey) {
        uint16_t r = 0, g = 0, b = 0;
        image.GetPixel(x, y, &r, &g, &b);
        const float grey = 0.299f * expected.x + 0.587f * expected.y + 0.114f * expected.z;
        const auto off = [&](float component, uint16_t found) {
            return std::abs(int(std::lround((isGrey ? grey : component) * 255.0f)) - int(found));
        };
        return std::max({off(expected.x, r), off(expected.y, g), off(expected.z, b)});
    }
};

#ifdef _WIN32 // where the encoder without OpenImageIO writes three equal ones
constexpr int GREY_COMPONENTS = 3;
#else
constexpr int GREY_COMPONENTS = 1;
#endif

/// JPEG's own loss, at the best quality.
constexpr int JPEG_LOSS = 4;
