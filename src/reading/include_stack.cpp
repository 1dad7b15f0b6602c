// SPDX-License-Identifier: MIT
#include "reading/include_stack.h"

#include "foundation/file_utils.h"
#include "foundation/native_path.h"
#include "reading/parser_state.h"
#include "reading/xml_values.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <tinyxml.h>
#include <utility>

namespace Quenza {

namespace xml = SceneParseUtils;
namespace fs = std::filesystem;

namespace {

/// The same text for all paths that lead to one file, as far as the system tells.
std::string identityOf(const String& path) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(nativePath(path.view()), error);
    return utf8Path(error ? nativePath(path.view()).lexically_normal() : whole);
}

/// A pipe or a device would block, or never end.
void checkIsNoDevice(const String& path, const TiXmlElement& include) {
    std::error_code ignored;
    const fs::file_status status = fs::status(nativePath(path.view()), ignored);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throwParserError("Failed to open XML doc from path '" + path.toStdString() + "': not a file",
                         include);
}

u64 sizeOf(const String& path) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(nativePath(path.view()), error);
    return error ? 0 : u64(size);
}

} // namespace

void IncludeStack::setSceneFile(const String& path) {
    scene_path_ = path;
    scene_identity_ = identityOf(path);
    open_.insert(scene_identity_);
}

void IncludeStack::open(const TiXmlElement& include, ParserState& state) {
    static constexpr const char* NAMES[] = {"pathname"};
    xml::checkChildrenAreInOnce(include, NAMES);
    const String pathname(xml::parseString(include, "pathname"));
    const String from_scene = FileUtils::join(state.base_from_scene, pathname);
    const String path = FileUtils::join(state.scene_dir, from_scene);
    std::string identity = identityOf(path);
    checkCircle(path, identity, include);
    checkIsNoDevice(path, include);
    countRepeat(path, identity, include);

    auto elements = std::make_unique<XMLElementReader>(path);
    const std::string root = elements->rootName();
    open_.insert(identity);
    files_.push_back({std::move(elements), state.base_from_scene, path, std::move(identity)});
    state.base_from_scene = FileUtils::getDirectory(from_scene);
    if (root != "scenedata")
        throw QuenzaModelParserExcep("Unknown root element '" + root + "'");
}

std::string IncludeStack::errorContext() const {
    return files_.empty() ? "" : "  (In the included file '" + files_.back().path.toStdString() + "')";
}

const TiXmlElement* IncludeStack::next(ParserState& state) {
    const TiXmlElement* const element = files_.back().elements->next();
    if (!element)
        closeTo(files_.size() - 1, state);
    return element;
}

void IncludeStack::closeTo(std::size_t depth, ParserState& state) {
    while (files_.size() > depth) {
        open_.erase(files_.back().identity);
        state.base_from_scene = std::move(files_.back().including_base);
        files_.pop_back();
    }
}

void IncludeStack::checkCircle(const String& path, const std::string& identity,
                               const TiXmlElement& include) const {
    if (!open_.contains(identity))
        return;
    std::string chain;
    bool in_circle = identity == scene_identity_;
    if (in_circle)
        chain = "'" + scene_path_.toStdString() + "' includes ";
    for (const File& file : files_) {
        in_circle = in_circle || file.identity == identity;
        if (in_circle)
            chain += "'" + file.path.toStdString() + "' includes ";
    }
    throwParserError("Includes go in a circle: " + chain + "'" + path.toStdString() + "'", include);
}

void IncludeStack::countRepeat(const String& path, const std::string& identity, const TiXmlElement& include) {
    if (seen_.insert(identity).second)
        return;
    repeated_bytes_ += std::max(sizeOf(path), REPEAT_MIN_BYTES);
    if (repeated_bytes_ > REPEAT_BUDGET)
        throwParserError("The scene includes the same files too often, the last being '" +
                             path.toStdString() + "'",
                         include);
}

} // namespace Quenza
