// SPDX-License-Identifier: MIT
#include "headless/documents/document_words.h"
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"

namespace headless {

namespace {

/// The settings of a plug-in that isn't loaded are kept: a plain node holds them.
std::unique_ptr<VideoPost> makeVideoPost(const JsonCursor& type) {
    if (type.json().is_number() && !NodeTypes::instance().find(type.integer())) {
        return std::make_unique<VideoPost>(type.integer());
    }
    return createVideoPost(readType(type, NodeKind::videoPost, "video post").id);
}

void readVideoPost(const JsonCursor& cursor, RenderDataNode& renderData, DocumentReading& reading) {
    cursor.expectKeys({"type", "id", "name", "layer", "enabled", "parameters", "tracks"});
    VideoPost& videoPost = renderData.appendVideoPost(makeVideoPost(cursor.at("type")));
    const auto enabled = cursor.find("enabled");
    if (enabled && !enabled->boolean()) {
        videoPost.info |= BIT_VPDISABLED;
    }
    readCommon(cursor, videoPost, reading);
}

void readImageAndFrames(const JsonCursor& cursor, RenderDataNode& renderData, const Document& document) {
    BaseContainer& data = renderData.data;
    if (const auto width = cursor.find("width")) {
        data.SetLong(RDATA_XRES, width->integer(1, MAX_IMAGE_SIZE));
    }
    if (const auto height = cursor.find("height")) {
        data.SetLong(RDATA_YRES, height->integer(1, MAX_IMAGE_SIZE));
    }
    if (const auto fps = cursor.find("fps")) {
        data.SetReal(RDATA_FRAMERATE, static_cast<float>(fps->integer(1, MAX_FPS)));
    }
    if (const auto sequence = cursor.find("sequence")) {
        data.SetLong(RDATA_FRAMESEQUENCE, readWord(*sequence, FRAME_SEQUENCES));
    }
    if (const auto from = cursor.find("from")) {
        data.SetTime(RDATA_FRAMEFROM, BaseTime(from->number(), document.fps()));
    }
    if (const auto to = cursor.find("to")) {
        data.SetTime(RDATA_FRAMETO, BaseTime(to->number(), document.fps()));
    }
}

void readRenderSetup(const JsonCursor& cursor, RenderDataNode& renderData, DocumentReading& reading) {
    cursor.expectKeys({"id", "name", "layer", "active", "width", "height", "fps", "sequence", "from", "to",
                       "parameters", "tracks", "videoPosts"});
    readImageAndFrames(cursor, renderData, reading.document);
    readCommon(cursor, renderData, reading);
    if (const auto videoPosts = cursor.find("videoPosts")) {
        for (size_t i = 0, count = videoPosts->arraySize(); i < count; ++i) {
            readVideoPost(videoPosts->at(i), renderData, reading);
        }
    }
    const auto active = cursor.find("active");
    if (active && active->boolean()) {
        reading.document.setActiveRenderData(renderData);
    }
}

} // namespace

void readRenderSetups(const JsonCursor& setups, DocumentReading& reading) {
    Document& document = reading.document;
    for (size_t i = 0, count = setups.arraySize(); i < count; ++i) {
        // A new document has one already.
        RenderDataNode& renderData =
            i == 0 ? *document.activeRenderData()
                   : document.insertRenderData(createRenderData(), document.renderData().last());
        readRenderSetup(setups.at(i), renderData, reading);
    }
}

} // namespace headless
