// SPDX-License-Identifier: MIT
#include "headless/import/node_fixtures.h"

#include "headless/import/model_text.h"

#include <cmath>

namespace headless {

namespace {

/// Makes the axes in the world unit vectors. What has a size keeps it as it is in the world.
void takeOutScale(Object& object) {
    const Matrix world = object.globalMatrix();
    const auto lengthOf = [](const Vector& axis) {
        const float length = axis.GetLength();
        const bool isScale = std::isfinite(length) && length > 0.0f && std::fabs(length - 1.0f) > 1e-5f;
        return isScale ? length : 1.0f;
    };
    const Vector lengths(lengthOf(world.axisX), lengthOf(world.axisY), lengthOf(world.axisZ));
    object.matrix.axisX *= 1.0f / lengths.x;
    object.matrix.axisY *= 1.0f / lengths.y;
    object.matrix.axisZ *= 1.0f / lengths.z;
    if (object.type() == Olight) {
        BaseContainer& data = object.data;
        data.SetReal(LIGHT_AREADETAILS_SIZEX, data.GetReal(LIGHT_AREADETAILS_SIZEX) * lengths.x);
        data.SetReal(LIGHT_AREADETAILS_SIZEY, data.GetReal(LIGHT_AREADETAILS_SIZEY) * lengths.y);
    }
}

} // namespace

NodeFixtures::NodeFixtures(const aiScene& scene, std::vector<Fixture> fixtures)
    : fixtures_(std::move(fixtures)), placed_(fixtures_.size(), nullptr) {
    for (size_t i = 0; i < fixtures_.size(); ++i) {
        waiting_[fixtures_[i].node].push_back(i);
    }
    if (scene.mNumAnimations > 0) {
        const aiAnimation& animation = *scene.mAnimations[0];
        for (unsigned i = 0; i < animation.mNumChannels; ++i) {
            animated_.insert(animation.mChannels[i]->mNodeName.C_Str());
        }
    }
}

std::vector<std::unique_ptr<Object>> NodeFixtures::take(const aiNode& node) {
    std::vector<std::unique_ptr<Object>> taken;
    const auto found = waiting_.find(node.mName.C_Str());
    if (found == waiting_.end()) {
        return taken;
    }
    for (const size_t index : found->second) {
        placed_[index] = fixtures_[index].object.get();
        taken.push_back(std::move(fixtures_[index].object));
    }
    waiting_.erase(found);
    return taken;
}

bool NodeFixtures::canStandFor(const aiNode& node, const Object& object) const {
    return node.mNumChildren == 0 && (object.matrix == Matrix() || !animated_.contains(node.mName.C_Str()));
}

std::vector<Object*> NodeFixtures::finish(std::vector<std::string>& warnings) const {
    std::vector<Object*> standing;
    for (size_t i = 0; i < placed_.size(); ++i) {
        if (placed_[i]) {
            takeOutScale(*placed_[i]);
            standing.push_back(placed_[i]);
        } else {
            const bool isCamera = fixtures_[i].object->type() == Ocamera;
            warnings.push_back((isCamera ? "camera \"" : "light \"") +
                               modelText(aiString(fixtures_[i].node)) +
                               "\" stands nowhere in the model and is left out");
        }
    }
    return standing;
}

} // namespace headless
