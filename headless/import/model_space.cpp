// SPDX-License-Identifier: MIT
#include "headless/import/model_space.h"

#include "headless/model/rotation.h"

#include <assimp/commonMetaData.h>
#include <cmath>
#include <optional>
#include <string_view>

namespace headless {

namespace {

/// Formats that Assimp gives in metres; FBX tells its unit, and the others have none.
constexpr std::string_view METRE_FORMATS[] = {"glTF Importer", "glTF2 Importer", "Collada Importer",
                                              "Blender 3D Importer"};

template <class T>
std::optional<T> metadata(const aiScene& scene, const char* key) {
    T value{};
    return scene.mMetaData && scene.mMetaData->Get(key, value) ? std::optional(value) : std::nullopt;
}

/// Six digits: 0.01 and 2.54 as single precision has them become what the file said.
double rounded(double value) {
    const double grid = std::pow(10.0, 5.0 - std::floor(std::log10(value)));
    const double result = std::round(value * grid) / grid;
    return std::isfinite(result) && result > 0.0 ? result : value;
}

double centimetresPerUnit(const aiScene& scene) {
    // Only FBX has this entry.
    if (const auto factor = metadata<float>(scene, "UnitScaleFactor")) {
        return std::isfinite(*factor) && *factor > 0.0f ? rounded(static_cast<double>(*factor)) : 1.0;
    }
    const aiString format = metadata<aiString>(scene, AI_METADATA_SOURCE_FORMAT).value_or(aiString());
    const std::string_view name = format.C_Str();
    for (const std::string_view metres : METRE_FORMATS) {
        if (name.starts_with(metres)) {
            return 100.0;
        }
    }
    return 1.0;
}

/// The rotation from the axes that an FBX file names to Y up; Assimp leaves it to the application.
aiMatrix4x4 axesOf(const aiScene& scene) {
    static constexpr const char* AXES[3][2] = {
        {"CoordAxis", "CoordAxisSign"}, {"UpAxis", "UpAxisSign"}, {"FrontAxis", "FrontAxisSign"}};
    aiMatrix4x4 matrix(0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f,
                       0.0f, 1.0f);
    for (unsigned row = 0; row < 3; ++row) {
        const auto axis = metadata<int32_t>(scene, AXES[row][0]);
        const auto sign = metadata<int32_t>(scene, AXES[row][1]);
        if (!axis || !sign || *axis < 0 || *axis > 2) {
            return {};
        }
        matrix[row][*axis] = *sign < 0 ? -1.0f : 1.0f;
    }
    return std::fabs(matrix.Determinant()) == 1.0f ? matrix : aiMatrix4x4();
}

/// The factor of a transform that scales all axes alike.
std::optional<double> uniformScale(const aiMatrix4x4& m) {
    double lengths[3];
    for (unsigned column = 0; column < 3; ++column) {
        const aiVector3D axis(m[0][column], m[1][column], m[2][column]);
        lengths[column] = std::sqrt(static_cast<double>(axis * axis));
    }
    const double scale = lengths[0];
    if (!(scale > 0.0) || !std::isfinite(scale) || std::fabs(lengths[1] - scale) > 1e-5 * scale ||
        std::fabs(lengths[2] - scale) > 1e-5 * scale) {
        return std::nullopt;
    }
    return scale;
}

} // namespace

ModelSpace::ModelSpace(const aiScene& scene, bool keepScale)
    : unit_(centimetresPerUnit(scene)), outerUnit_(unit_),
      root_(axesOf(scene) * scene.mRootNode->mTransformation) {
    const std::optional<double> scale = keepScale ? std::nullopt : uniformScale(root_);
    if (!scale) {
        return;
    }
    unit_ = rounded(outerUnit_ * *scale);
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 3; ++column) {
            root_[row][column] = static_cast<float>(static_cast<double>(root_[row][column]) / *scale);
        }
    }
}

Matrix ModelSpace::rootMatrix() const {
    ModelSpace outer = *this;
    outer.unit_ = outerUnit_;
    return outer.matrix(root_);
}

Vector ModelSpace::point(const aiVector3D& p) const {
    const auto scaled = [this](float value) {
        return static_cast<float>(static_cast<double>(value) * unit_) + 0.0f;
    };
    return {scaled(p.x), scaled(p.y), scaled(-p.z)};
}

Matrix ModelSpace::matrix(const aiMatrix4x4& m) const {
    return {point({m.a4, m.b4, m.c4}), direction({m.a1, m.b1, m.c1}), direction({m.a2, m.b2, m.c2}),
            direction({0.0f - m.a3, 0.0f - m.b3, 0.0f - m.c3})};
}

Matrix ModelSpace::rotation(const aiQuaternion& q) {
    const double w = static_cast<double>(q.w), x = static_cast<double>(q.x), y = static_cast<double>(q.y),
                 z = static_cast<double>(q.z);
    if (!(w * w + x * x + y * y + z * z > 0.0)) {
        return {};
    }
    // Mirrored, the axis keeps its z alone and the angle its sense.
    return rotationFromQuaternion(w, -x, -y, z);
}

} // namespace headless
