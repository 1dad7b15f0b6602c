// SPDX-License-Identifier: MIT
#include "headless/documents/load_document.h"

#include "headless/documents/document_words.h"
#include "headless/documents/json_file.h"
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"
#include "headless/import/import_model.h"

namespace headless {

namespace {

void readHead(const JsonCursor& root) {
    root.expectKeys({"format", "version", "unit", "fps", "frame", "frames", "layers", "materials", "objects",
                     "camera", "renderData"});
    const JsonCursor format = root.at("format");
    if (format.text() != DOCUMENT_FORMAT) {
        format.fail(std::string("this is no document: \"") + DOCUMENT_FORMAT + "\" is expected");
    }
    const JsonCursor version = root.at("version");
    if (version.integer() != DOCUMENT_VERSION) {
        version.fail("version " + std::to_string(version.integer()) +
                     " is unknown; this program reads version " + std::to_string(DOCUMENT_VERSION));
    }
}

void readTimes(const JsonCursor& root, Document& document) {
    if (const auto fps = root.find("fps")) {
        document.setFps(fps->integer(1, MAX_FPS));
    }
    const int32_t fps = document.fps();
    document.time = BaseTime(0, fps);
    document.minTime = BaseTime(0, fps);
    document.maxTime = BaseTime(3.0 * fps, fps);
    if (const auto frame = root.find("frame")) {
        document.time = BaseTime(frame->number(), fps);
    }
    if (const auto frames = root.find("frames")) {
        frames->expectCount(2);
        document.minTime = BaseTime(frames->at(size_t{0}).number(), fps);
        document.maxTime = BaseTime(frames->at(size_t{1}).number(), fps);
    }
}

void readScene(const JsonCursor& root, DocumentReading& reading) {
    if (const auto layers = root.find("layers")) {
        readLayers(*layers, reading);
    }
    if (const auto materials = root.find("materials")) {
        readMaterials(*materials, reading);
    }
    if (const auto objects = root.find("objects")) {
        readObjects(*objects, reading);
    }
    if (const auto camera = root.find("camera")) {
        reading.links.link(*camera, Obase, [&document = reading.document](Node& node) {
            document.view().setSceneCamera(static_cast<Object*>(&node));
        });
    }
    if (const auto setups = root.find("renderData")) {
        readRenderSetups(*setups, reading);
    }
    reading.links.resolve();
}

} // namespace

LoadedDocument loadDocument(const std::string& file, const TakeUnit& takeUnit,
                            const std::string& textureFolder) {
    const Json json = loadJson(file);
    const JsonCursor root(json, file);
    readHead(root);
    LoadedDocument loaded;
    loaded.document = std::make_unique<Document>();
    const Filename path{String(file)};
    loaded.document->path = path.GetDirectory();
    loaded.document->fileName = path.GetFile();
    if (const auto unit = root.find("unit")) {
        loaded.unit = readWord(*unit, UNITS);
        if (takeUnit) {
            takeUnit(*loaded.unit);
        }
    }
    readTimes(root, *loaded.document);
    DocumentReading reading{.document = *loaded.document,
                            .modelTextures = ModelTextureFolders(textureFolder)};
    readScene(root, reading);
    loaded.warnings = std::move(reading.warnings);
    return loaded;
}

LoadedDocument openDocument(const std::string& file, const TakeUnit& takeUnit,
                            const std::string& textureFolder) {
    const Filename path{String(file)};
    if (path.CheckSuffix("json")) {
        return loadDocument(file, takeUnit, textureFolder);
    }
    LoadedDocument loaded;
    loaded.document = importModel(file, loaded.warnings, ModelTextureFolders(textureFolder).next(file));
    return loaded;
}

} // namespace headless
