// SPDX-License-Identifier: MIT
#include "headless/import/animation_import.h"

#include "headless/import/model_space.h"
#include "headless/import/model_text.h"
#include "headless/model/track.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

double ticksPerSecond(const aiAnimation& animation) {
    const double ticks = animation.mTicksPerSecond;
    // Assimp's own convention for formats that don't tell.
    return std::isfinite(ticks) && ticks > 0.0 ? ticks : 25.0;
}

/// Makes the track of one channel; keys that have no use are left out. `convert` gives a value of the host.
template <class AssimpKey, class Convert>
void addTrack(std::vector<Track>& tracks, Channel channel, const AssimpKey* keys, unsigned count,
              double ticks, Convert&& convert) {
    Track track;
    track.channel = channel;
    for (unsigned i = 0; i < count; ++i) {
        const double seconds = keys[i].mTime / ticks;
        if (std::isfinite(seconds)) {
            track.keys.push_back({seconds, convert(keys[i].mValue)});
        }
    }
    std::stable_sort(track.keys.begin(), track.keys.end(),
                     [](const Key& a, const Key& b) { return a.time < b.time; });
    track.keys.erase(std::unique(track.keys.begin(), track.keys.end(),
                                 [](const Key& a, const Key& b) { return a.time == b.time; }),
                     track.keys.end());
    if (std::all_of(track.keys.begin(), track.keys.end(),
                    [&track](const Key& key) { return key.value == track.keys.front().value; })) {
        track.keys.resize(std::min<size_t>(track.keys.size(), 1));
    }
    if (!track.keys.empty()) {
        tracks.push_back(std::move(track));
    }
}

template <class AssimpKey>
bool allFinite(const AssimpKey* keys, unsigned count) {
    return std::all_of(keys, keys + count, [](const AssimpKey& key) { return areAllFinite(key.mValue); });
}

bool isBroken(const aiNodeAnim& channel) {
    return !allFinite(channel.mPositionKeys, channel.mNumPositionKeys) ||
           !allFinite(channel.mRotationKeys, channel.mNumRotationKeys) ||
           !allFinite(channel.mScalingKeys, channel.mNumScalingKeys);
}

std::vector<Track> makeTracks(const aiNodeAnim& channel, bool scales, const ModelSpace& space, double ticks) {
    std::vector<Track> tracks;
    addTrack(tracks, Channel::position, channel.mPositionKeys, channel.mNumPositionKeys, ticks,
             [&space](const aiVector3D& v) { return GeData(space.point(v)); });
    addTrack(tracks, Channel::orientation, channel.mRotationKeys, channel.mNumRotationKeys, ticks,
             [](const aiQuaternion& q) { return GeData(ModelSpace::rotation(q)); });
    if (scales) {
        addTrack(tracks, Channel::scale, channel.mScalingKeys, channel.mNumScalingKeys, ticks,
                 [](const aiVector3D& v) { return GeData(Vector(v.x, v.y, v.z)); });
    }
    return tracks;
}

} // namespace

int32_t framesPerSecond(const aiScene& scene) {
    constexpr int32_t FALLBACK = 30;
    if (scene.mNumAnimations == 0) {
        return FALLBACK;
    }
    // Formats that count in frames have such rates; others count in milliseconds or seconds.
    const double ticks = ticksPerSecond(*scene.mAnimations[0]);
    return ticks >= 10.0 && ticks <= 240.0 && ticks == std::floor(ticks) ? static_cast<int32_t>(ticks)
                                                                         : FALLBACK;
}

bool animatesRoot(const aiScene& scene) {
    if (scene.mNumAnimations == 0) {
        return false;
    }
    const aiAnimation& animation = *scene.mAnimations[0];
    return std::any_of(
        animation.mChannels, animation.mChannels + animation.mNumChannels,
        [&scene](const aiNodeAnim* channel) { return channel->mNodeName == scene.mRootNode->mName; });
}

void importAnimation(const aiScene& scene, const ModelSpace& space, const ImportedNodes& nodes,
                     Document& document, std::vector<std::string>& warnings) {
    if (scene.mNumAnimations == 0) {
        return;
    }
    const aiAnimation& animation = *scene.mAnimations[0];
    if (scene.mNumAnimations > 1) {
        warnings.push_back("of " + std::to_string(scene.mNumAnimations) + " animations only the first, \"" +
                           modelText(animation.mName) + "\", is imported");
    }
    const double ticks = ticksPerSecond(animation);
    double end = 0.0;
    for (unsigned i = 0; i < animation.mNumChannels; ++i) {
        const aiNodeAnim& channel = *animation.mChannels[i];
        const auto found = nodes.objects.find(channel.mNodeName.C_Str());
        if (found == nodes.objects.end()) {
            continue;
        }
        if (isBroken(channel)) {
            warnings.push_back("the animation of \"" + found->second->name + "\" is broken and left out");
            continue;
        }
        const int32_t type = found->second->type();
        std::vector<Track> tracks = makeTracks(channel, type != Ocamera && type != Olight, space, ticks);
        for (const Track& track : tracks) {
            end = std::max(end, track.keys.back().time);
        }
        if (!tracks.empty()) {
            found->second->animation = std::make_unique<Animation>();
            found->second->animation->tracks = std::move(tracks);
        }
    }
    const int32_t fps = document.fps();
    if (end > 0.0) {
        document.maxTime = BaseTime(std::ceil(end * fps - 1e-6), fps);
    }
}

} // namespace headless
