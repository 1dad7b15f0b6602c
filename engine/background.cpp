// SPDX-License-Identifier: MIT
#include "engine/background.h"

#include "scene/emission.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/spectrum.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace engine {

namespace {

using Quenza::EmissionScale;
using Quenza::u64;

constexpr u64 COLUMNS = 512;
constexpr u64 ROWS = 256;
constexpr float CELL_ANGLE = 4 * PI / float(COLUMNS * ROWS);

Vec directionIn(u64 cell, float fx, float fy) {
    const u64 row = cell / COLUMNS;
    const float longitude = 2 * PI * (float(cell % COLUMNS) + fx) / float(COLUMNS);
    const float z = std::clamp(1.0f - 2.0f * (float(row) + fy) / float(ROWS), -1.0f, 1.0f);
    const float across = std::sqrt(std::max(0.0f, 1.0f - z * z));
    return {across * std::cos(longitude), across * std::sin(longitude), z};
}

u64 cellOf(const Vec& direction) {
    float longitude = std::atan2(direction.y, direction.x) / (2 * PI);
    longitude -= std::floor(longitude);
    const float down = 0.5f * (1.0f - std::clamp(direction.z, -1.0f, 1.0f));
    return std::min(u64(down * float(ROWS)), ROWS - 1) * COLUMNS +
           std::min(u64(longitude * float(COLUMNS)), COLUMNS - 1);
}

} // namespace

Background::Background(const Quenza::SceneNodeBackgroundSettings* settings, MaterialCompiler& materials,
                       Notices& notices) {
    if (!settings || !settings->background_material) {
        if (!materials.hasEmitters()) {
            notices.tell("The scene has no light; it is shown under an even white sky.");
            plain_ = radianceOf(Quenza::RGBSpectrum({1, 1, 1}, 1));
            tabulate();
        }
        return;
    }
    const Quenza::Material& material = *settings->background_material;
    if (const auto* sun_sky = dynamic_cast<const Quenza::SunSkyMaterial*>(&material)) {
        sun_sky_.emplace(*sun_sky);
        if (sun_sky->enable_sky && sun_sky->model != "original") {
            notices.tell("The sky model '" + sun_sky->model.toStdString() +
                         "' is not known; the 'original' one is drawn.");
        }
    } else {
        shader_ = materials.compile(material);
    }
    if (settings->emission_scale && shader_) {
        if (settings->emission_scale->measure == EmissionScale::LUMINOUS_FLUX ||
            settings->emission_scale->measure == EmissionScale::LUMINOUS_INTENSITY) {
            notices.tell("The background has no area: its emission scale is taken as a luminance.");
        }
        scale_ = scaleOf(*settings->emission_scale);
    }
    tabulate();
}

float Background::scaleOf(const EmissionScale& scale) const {
    LayeredRadiance average;
    shader_->emitAverage(true, 1.0f, average);
    const double level = double(luminance(average.total()));
    if (!(level > 0) || scale.measure == EmissionScale::NO_MEASURE) {
        return 1.0f;
    }
    const double wanted =
        scale.measure == EmissionScale::LUMINOUS_EMITTANCE ? scale.value / double(PI) : scale.value;
    return float(wanted / level);
}

void Background::tabulate() {
    std::vector<double> levels(COLUMNS * ROWS);
    double sum = 0;
    for (u64 cell = 0; cell < levels.size(); ++cell) {
        for (const float fx : {0.25f, 0.75f}) {
            for (const float fy : {0.25f, 0.75f}) {
                const double level = double(luminance(surround(directionIn(cell, fx, fy)).total()));
                levels[cell] += std::isfinite(level) ? std::max(0.0, level) : 0.0;
            }
        }
        sum += levels[cell];
    }
    // Every direction keeps a chance, as a cell may be brighter somewhere than where it was looked at.
    const double floor = 0.05 * sum / double(levels.size());
    for (const double level : levels) {
        cells_.add(level + floor);
    }
}

LayeredRadiance Background::surround(const Vec& direction) const {
    LayeredRadiance sum;
    if (sun_sky_ && sun_sky_->hasSky()) {
        sum.add(sun_sky_->sky(direction), sun_sky_->skyLayer());
        sum.add(sun_sky_->sunlitGround(direction), sun_sky_->sunLayer());
    } else if (shader_) {
        SurfacePoint point;
        point.position = direction;
        point.normal = point.shading_normal = -direction;
        shader_->emit(point, true, scale_, sum);
    } else if (!isBlack(plain_)) {
        sum.add(plain_, 0);
    }
    return sum;
}

LayeredRadiance Background::sun(const Vec& direction) const {
    LayeredRadiance sum;
    if (hasSun() && sunPdf(direction) > 0.0f) {
        sum.add(sun_sky_->sunRadiance(), sun_sky_->sunLayer());
    }
    return sum;
}

void Background::sampleSurround(Random& random, LightSample& sample) const {
    const u64 cell = cells_.sample(random.next());
    sample.direction = directionIn(cell, random.next(), random.next());
    sample.infinite = true;
    sample.pdf = float(cells_.probability(cell)) / CELL_ANGLE;
    sample.radiance = surround(sample.direction);
}

float Background::surroundPdf(const Vec& direction) const {
    return float(cells_.probability(cellOf(direction))) / CELL_ANGLE;
}

void Background::sampleSun(Random& random, LightSample& sample) const {
    const float versine = 1.0f - sun_sky_->sunCosAngle();
    sample.direction = normalise(Frame(sun_sky_->sunDirection()).toWorld(sampleCone(versine, random)));
    sample.infinite = true;
    sample.pdf = 1.0f / (2 * PI * versine);
    sample.radiance = LayeredRadiance();
    sample.radiance.add(sun_sky_->sunRadiance(), sun_sky_->sunLayer());
}

float Background::sunPdf(const Vec& direction) const {
    const bool inside = hasSun() && dot(direction, sun_sky_->sunDirection()) >= sun_sky_->sunCosAngle();
    return inside ? 1.0f / (2 * PI * (1.0f - sun_sky_->sunCosAngle())) : 0.0f;
}

} // namespace engine
