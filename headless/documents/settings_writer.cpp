// SPDX-License-Identifier: MIT
#include "headless/documents/document_units.h"
#include "headless/documents/document_words.h"
#include "headless/documents/document_writing.h"

#include <cmath>

// Layers, materials and render setups.

namespace headless {

namespace {

void writeLayerList(const Chain<Layer>& layers, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    json.beginArray();
    for (const Layer* layer = layers.first(); layer; layer = layer->next) {
        const LayerName& name = writing.layers.at(layer);
        json.beginObject(layer->children().empty());
        if (name.needsId) {
            json.key("id");
            json.text(name.reference);
        }
        json.key("name");
        json.text(layer->name);
        for (const auto& [key, flag] : LAYER_FLAGS) {
            if (layer->ownFlags().*flag != LayerData().*flag) {
                json.key(key);
                json.boolean(layer->ownFlags().*flag);
            }
        }
        if (!layer->children().empty()) {
            json.key("children");
            writeLayerList(layer->children(), writing);
        }
        json.endObject();
    }
    json.endArray();
}

void writeShaders(const Chain<Shader>& shaders, DocumentWriting& writing) {
    if (shaders.empty()) {
        return;
    }
    JsonWriter& json = writing.json;
    json.key("shaders");
    json.beginArray();
    for (const Shader* shader = shaders.first(); shader; shader = shader->next) {
        json.beginObject();
        writeType(*shader, writing);
        writeHead(*shader, writing);
        writeBody(*shader, {}, writing);
        checkFinite(*shader, writing);
        writeShaders(shader->children(), writing);
        json.endObject();
    }
    json.endArray();
}

/// Render settings with a key of their own. Each writes its key and gives the parameter's number, or 0 when
/// the value isn't one that the key could hold.
int32_t writeWholeNumber(const char* key, const RenderDataNode& setup, int32_t id, int32_t dataType,
                         int32_t max, DocumentWriting& writing) {
    const GeData* const value = changedValue(setup, id, dataType, writing);
    const float number = value ? value->GetReal() : 0.0f;
    if (!(number >= 1.0f && number <= static_cast<float>(max) && number == std::floor(number))) {
        return 0;
    }
    writing.json.key(key);
    writing.json.integer(value->GetLong());
    return id;
}

int32_t writeSequence(const RenderDataNode& setup, DocumentWriting& writing) {
    const GeData* const value = changedValue(setup, RDATA_FRAMESEQUENCE, DA_LONG, writing);
    const char* const word = value ? nameOfValue(FRAME_SEQUENCES, value->GetLong()) : nullptr;
    if (!word) {
        return 0;
    }
    writing.json.key("sequence");
    writing.json.text(word);
    return RDATA_FRAMESEQUENCE;
}

int32_t writeFrame(const char* key, const RenderDataNode& setup, int32_t id, DocumentWriting& writing) {
    const GeData* const value = changedValue(setup, id, DA_TIME, writing);
    if (!value) {
        return 0;
    }
    writing.json.key(key);
    writing.json.number(frameOf(value->GetTime().Get(), writing.document.fps()));
    return id;
}

void writeVideoPosts(const RenderDataNode& setup, DocumentWriting& writing) {
    if (setup.videoPosts().empty()) {
        return;
    }
    JsonWriter& json = writing.json;
    json.key("videoPosts");
    json.beginArray();
    for (const VideoPost* videoPost = setup.videoPosts().first(); videoPost; videoPost = videoPost->next) {
        json.beginObject();
        writeType(*videoPost, writing);
        writeHead(*videoPost, writing);
        if ((videoPost->info & BIT_VPDISABLED) != 0) {
            json.key("enabled");
            json.boolean(false);
        }
        writeBody(*videoPost, {}, writing);
        checkFinite(*videoPost, writing);
        json.endObject();
    }
    json.endArray();
}

void writeRenderSetup(const RenderDataNode& setup, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    json.beginObject();
    writeHead(setup, writing);
    if (writing.document.activeRenderData() == &setup && setup.pred) {
        json.key("active");
        json.boolean(true);
    }
    const int32_t width = writeWholeNumber("width", setup, RDATA_XRES, DA_LONG, MAX_IMAGE_SIZE, writing);
    const int32_t height = writeWholeNumber("height", setup, RDATA_YRES, DA_LONG, MAX_IMAGE_SIZE, writing);
    const int32_t fps = writeWholeNumber("fps", setup, RDATA_FRAMERATE, DA_REAL, MAX_FPS, writing);
    const int32_t sequence = writeSequence(setup, writing);
    const int32_t from = writeFrame("from", setup, RDATA_FRAMEFROM, writing);
    const int32_t to = writeFrame("to", setup, RDATA_FRAMETO, writing);
    writeBody(setup, {width, height, fps, sequence, from, to}, writing);
    checkFinite(setup, writing);
    writeVideoPosts(setup, writing);
    json.endObject();
}

} // namespace

void writeLayers(DocumentWriting& writing) {
    if (!writing.document.layers().empty()) {
        writing.json.key("layers");
        writeLayerList(writing.document.layers(), writing);
    }
}

void writeMaterials(DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    if (writing.document.materials().empty()) {
        return;
    }
    json.key("materials");
    json.beginArray();
    for (const Material* material = writing.document.materials().first(); material;
         material = material->next) {
        json.beginObject();
        writeType(*material, writing);
        writeHead(*material, writing);
        writeBody(*material, {}, writing);
        checkFinite(*material, writing);
        writeShaders(material->shaders(), writing);
        json.endObject();
    }
    json.endArray();
}

void writeRenderSetups(DocumentWriting& writing) {
    writing.json.key("renderData");
    writing.json.beginArray();
    for (const RenderDataNode* setup = writing.document.renderData().first(); setup; setup = setup->next) {
        writeRenderSetup(*setup, writing);
    }
    writing.json.endArray();
}

} // namespace headless
