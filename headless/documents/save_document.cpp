// SPDX-License-Identifier: MIT
#include "headless/documents/save_document.h"

#include "foundation/safe_file.h"
#include "headless/documents/document_units.h"
#include "headless/documents/document_words.h"
#include "headless/documents/document_writing.h"

namespace headless {

namespace {

void writeSettings(DocumentWriting& writing, std::optional<int32_t> unit) {
    JsonWriter& json = writing.json;
    const Document& document = writing.document;
    json.key("format");
    json.text(DOCUMENT_FORMAT);
    json.key("version");
    json.integer(DOCUMENT_VERSION);
    if (const char* const word = unit ? nameOfValue(UNITS, *unit) : nullptr) {
        json.key("unit");
        json.text(word);
    }
    json.key("fps");
    json.integer(document.fps());
    json.key("frame");
    json.number(frameOf(document.time.Get(), document.fps()));
    json.key("frames");
    json.beginArray(true);
    json.number(frameOf(document.minTime.Get(), document.fps()));
    json.number(frameOf(document.maxTime.Get(), document.fps()));
    json.endArray();
}

std::string toText(const Document& document, const std::string& file, std::optional<int32_t> unit) {
    DocumentWriting writing(document, file);
    JsonWriter& json = writing.json;
    json.beginObject();
    writeSettings(writing, unit);
    writeLayers(writing);
    writeMaterials(writing);
    writeObjects(writing);
    if (const std::string* const camera = writing.ids.idOf(document.view().chosenCamera())) {
        json.key("camera");
        json.text(*camera);
    }
    writeRenderSetups(writing);
    json.endObject();
    if (!json.allFinite()) {
        throw DocumentError(file, "the document can't be saved: its times aren't finite numbers");
    }
    return json.take();
}

} // namespace

void saveDocument(const Document& document, const std::string& file, std::optional<int32_t> unit) {
    const std::string text = toText(document, file, unit);
    Quenza::SafeFile target(file, Quenza::SafeFile::Mode::BINARY);
    target.write(text.data(), text.size());
    if (!target.commit()) {
        throw DocumentError(file, "the file can't be written: " + std::string(target.failureReason().view()));
    }
}

} // namespace headless
