// SPDX-License-Identifier: MIT
#include "headless/documents/document_words.h"
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"
#include "headless/model/track.h"

namespace headless {

namespace {

GeData readKeyValue(const JsonCursor& cursor, Node& node, const Track& track, LinkTable& links) {
    const bool isAngle = track.channel == Channel::rotation;
    if (track.component >= 0) {
        return GeData(isAngle ? readAngle(cursor) : cursor.real());
    }
    switch (track.channel) {
    case Channel::rotation:
        return GeData(readAngles(cursor));
    case Channel::position:
    case Channel::scale:
        return GeData(readVector(cursor));
    case Channel::orientation:
    case Channel::transform:
        return GeData(readMatrix(cursor));
    case Channel::parameter:
        break;
    }
    const std::optional<Parameter> parameter = findParameter(node.type(), track.parameter);
    const ParameterKind kind = parameter ? parameter->kind : ParameterKind::other;
    if (kind == ParameterKind::link || kind == ParameterKind::inExclude || cursor.has("link") ||
        cursor.has("inExclude")) {
        cursor.fail("links can't be animated");
    }
    return readValue(cursor, node, track.parameter, links);
}

Track readTrack(const JsonCursor& cursor, Node& node, DocumentReading& reading) {
    cursor.expectKeys({"channel", "parameter", "component", "interpolation", "keys"});
    Track track;
    if (const auto parameter = cursor.find("parameter")) {
        const std::string key =
            parameter->json().is_string() ? parameter->text() : std::to_string(parameter->integer());
        track.parameter = parameterNumber(*parameter, node, key);
    } else {
        track.channel = static_cast<Channel>(readWord(cursor.at("channel"), CHANNELS));
        if (node.kind() != NodeKind::object) {
            cursor.fail("only objects have this channel; a \"parameter\" is expected");
        }
    }
    if (const auto component = cursor.find("component")) {
        track.component = static_cast<int8_t>(readWord(*component, COMPONENTS));
    }
    if (const auto interpolation = cursor.find("interpolation")) {
        track.interpolation = static_cast<Interpolation>(readWord(*interpolation, INTERPOLATIONS));
    }
    const JsonCursor keys = cursor.at("keys");
    for (size_t i = 0, count = keys.arraySize(); i < count; ++i) {
        const JsonCursor key = keys.at(i);
        key.expectCount(2);
        const double seconds = key.at(size_t{0}).number() / reading.document.fps();
        if (!track.keys.empty() && seconds <= track.keys.back().time) {
            key.fail("the frames of keys must rise");
        }
        track.keys.push_back({seconds, readKeyValue(key.at(size_t{1}), node, track, reading.links)});
    }
    return track;
}

} // namespace

void readTracks(const JsonCursor& tracks, Node& node, DocumentReading& reading) {
    node.animation = std::make_unique<Animation>();
    for (size_t i = 0, count = tracks.arraySize(); i < count; ++i) {
        node.animation->tracks.push_back(readTrack(tracks.at(i), node, reading));
    }
}

} // namespace headless
