// SPDX-License-Identifier: MIT
#include "reading/model_loader.h"

#include "foundation/string_utils.h"
#include "reading/obj_decoder.h"
#include "reading/ply_decoder.h"
#include "reading/qzmesh_decoder.h"
#include "scene/mesh_loader.h"

#include <new>
#include <utility>

namespace Quenza {

namespace {

constexpr u64 MIN_PATH_CHARS = 4;

std::string extensionOf(const String& path) {
    return toLowerCase(path.view().substr(path.view().rfind('.') + 1));
}

/// The scene library knows one kind of exception only.
void loadModel(const String& path, Mesh& mesh, double scale) {
    try {
        ModelLoader().streamModel(path, mesh, scale);
    } catch (const ModelLoaderExcep& e) {
        throw QuenzaException(e.message());
    }
}

} // namespace

ModelLoader::ModelLoader() {
    addDecoder(std::make_unique<FormatDecoderObj>());
    addDecoder(std::make_unique<FormatDecoderPLY>());
    addDecoder(std::make_unique<FormatDecoderMeshFile>());
}

void ModelLoader::addDecoder(std::unique_ptr<FormatDecoder> decoder) {
    const std::string extension = decoder->getExtension().toStdString();
    decoders_[extension] = std::move(decoder);
}

bool ModelLoader::knowsFormatOf(const String& path) const {
    return path.size() >= MIN_PATH_CHARS && decoders_.contains(extensionOf(path));
}

FormatDecoder& ModelLoader::decoderFor(const String& path) const {
    if (path.size() < MIN_PATH_CHARS)
        throw ModelLoaderExcep("filename too short: '" + path + "'");
    const std::string extension = extensionOf(path);
    const auto found = decoders_.find(extension);
    if (found == decoders_.end())
        throw ModelLoaderExcep("key '" + extension + "' not found");
    return *found->second;
}

void ModelLoader::streamModel(const String& path, Mesh& mesh, double scale) const {
    FormatDecoder& decoder = decoderFor(path);
    try {
        decoder.streamModel(path, mesh, scale);
    } catch (const MessageExcep& e) {
        throw ModelLoaderExcep(e.message());
    } catch (const std::bad_alloc&) {
        throw ModelLoaderExcep("Bad allocation while reading from file.");
    }
}

void installModelLoader() {
    setMeshLoader(loadModel);
}

} // namespace Quenza
