// SPDX-License-Identifier: MIT
#include "headless/documents/document_units.h"
#include "headless/documents/document_words.h"
#include "headless/documents/document_writing.h"

#include <algorithm>

namespace headless {

namespace {

void writeKeyValue(const Node& node, const Track& track, const GeData& value, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    const bool isAngle = track.channel == Channel::rotation;
    if (track.component >= 0) {
        return isAngle ? json.number(degreesOf(value.GetReal())) : json.real(value.GetReal());
    }
    switch (track.channel) {
    case Channel::position:
    case Channel::scale:
        return json.vector(value.GetVector());
    case Channel::rotation: {
        const Vector angles = value.GetVector();
        json.beginArray(true);
        for (const float angle : {angles.x, angles.y, angles.z}) {
            json.number(degreesOf(angle));
        }
        return json.endArray();
    }
    case Channel::orientation:
    case Channel::transform:
        return json.matrix(value.GetMatrix());
    case Channel::parameter:
        return writeValue(node, track.parameter, value, writing);
    }
}

/// Links can't be animated.
bool isWritable(const GeData& value) {
    return hasForm(value) && value.GetType() != DA_LINK && value.GetType() != DA_CUSTOM;
}

void writeTrack(const Node& node, const Track& track, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    json.beginObject();
    if (track.channel == Channel::parameter) {
        json.key("parameter");
        json.text(parameterKey(node, track.parameter));
    } else {
        json.key("channel");
        json.text(nameOfValue(CHANNELS, static_cast<int32_t>(track.channel)));
    }
    if (track.component >= 0) {
        json.key("component");
        json.text(nameOfValue(COMPONENTS, track.component));
    }
    if (track.interpolation != Interpolation::linear) {
        json.key("interpolation");
        json.text(nameOfValue(INTERPOLATIONS, static_cast<int32_t>(track.interpolation)));
    }
    json.key("keys");
    json.beginArray();
    for (const Key& key : track.keys) {
        if (isWritable(key.value)) {
            json.beginArray(true);
            json.number(frameOf(key.time, writing.document.fps()));
            writeKeyValue(node, track, key.value, writing);
            json.endArray();
        }
    }
    json.endArray();
    json.endObject();
}

} // namespace

void writeTracks(const Node& node, DocumentWriting& writing) {
    if (!node.animation || node.animation->tracks.empty()) {
        return;
    }
    writing.json.key("tracks");
    writing.json.beginArray();
    for (const Track& track : node.animation->tracks) {
        writeTrack(node, track, writing);
    }
    writing.json.endArray();
}

} // namespace headless
