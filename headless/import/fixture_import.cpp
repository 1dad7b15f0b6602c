// SPDX-License-Identifier: MIT
#include "headless/import/fixture_import.h"

#include "headless/import/aims_3ds.h"
#include "headless/import/model_space.h"
#include "headless/import/model_text.h"

#include <assimp/commonMetaData.h>
#include <cmath>
#include <string_view>

namespace headless {

namespace {

/// A unit vector, or the fallback for one without a direction.
Vector unitDirection(const aiVector3D& v, const Vector& fallback) {
    const Vector unit = areAllFinite(v) ? ModelSpace::direction(v).GetNormalized() : Vector();
    return unit == Vector() ? fallback : unit;
}

std::string_view formatOf(const aiScene& scene, aiString& storage) {
    return scene.mMetaData && scene.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, storage) ? storage.C_Str() : "";
}

} // namespace

Matrix aimedMatrix(const aiVector3D& position, const aiVector3D& forward, const aiVector3D& up,
                   const ModelSpace& space) {
    Matrix matrix;
    if (areAllFinite(position)) {
        matrix.off = space.point(position);
    }
    matrix.axisZ = unitDirection(forward, matrix.axisZ);
    const Vector wanted = unitDirection(up, matrix.axisY);
    // One that isn't along the axis that is looked along.
    const auto perpendicularPart = [&matrix](const Vector& v) {
        return v - matrix.axisZ * Dot(v, matrix.axisZ);
    };
    Vector y = perpendicularPart(wanted);
    for (const Vector& other : {Vector(0.0f, 1.0f, 0.0f), Vector(0.0f, 0.0f, 1.0f)}) {
        y = y.GetLength() > 1e-4f ? y : perpendicularPart(other);
    }
    matrix.axisY = y.GetNormalized();
    matrix.axisX = Cross(matrix.axisY, matrix.axisZ);
    return matrix;
}

std::vector<Fixture> importFixtures(const aiScene& scene, const std::string& file, const ModelSpace& space,
                                    std::vector<std::string>& warnings) {
    aiString storage;
    const std::string_view format = formatOf(scene, storage);
    const bool is3DS = format == "Discreet 3DS Importer";
    const bool isGLTF = format.starts_with("glTF2 Importer");
    std::map<std::string, Aim> aims;
    if (is3DS && (scene.mNumCameras > 0 || scene.mNumLights > 0)) {
        aims = readAims3DS(file);
    }
    const auto aimOf = [&aims](const aiString& name) {
        const auto found = aims.find(name.C_Str());
        return found == aims.end() ? nullptr : &found->second;
    };

    std::vector<Fixture> fixtures;
    for (unsigned i = 0; i < scene.mNumCameras; ++i) {
        const aiCamera& camera = *scene.mCameras[i];
        fixtures.push_back({camera.mName.C_Str(), importCamera(camera, aimOf(camera.mName), space)});
    }
    for (unsigned i = 0; i < scene.mNumLights; ++i) {
        const aiLight& light = *scene.mLights[i];
        std::unique_ptr<Object> object = importLight(light, aimOf(light.mName), isGLTF, space);
        if (object) {
            fixtures.push_back({light.mName.C_Str(), std::move(object)});
        } else {
            warnings.push_back("light \"" + modelText(light.mName) +
                               "\" is left out: the host has none of its kind");
        }
    }
    if (is3DS) {
        // Their places are those of their nodes once more.
        for (Fixture& fixture : fixtures) {
            fixture.object->matrix.off = Vector();
        }
    }
    return fixtures;
}

} // namespace headless
