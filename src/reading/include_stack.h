// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"
#include "reading/xml_element_reader.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// The included files that are being read, the innermost last. A chain of includes may be of any length: it
/// takes memory, and no stack. A file that includes itself, directly or in a circle, is an error; so is a
/// scene that includes the same files over and over, since a few small files can name each other billions of
/// times: in all, repeated files may have REPEAT_BUDGET bytes.
class IncludeStack {
public:
    /// Each repeated file counts with at least REPEAT_MIN_BYTES.
    static constexpr u64 REPEAT_BUDGET = u64(64) << 20;
    static constexpr u64 REPEAT_MIN_BYTES = u64(64) << 10;

    /// The file that everything starts from.
    void setSceneFile(const String& path);

    /// Opens the file of an `include` element and moves the state's folder there. Throws
    /// QuenzaModelParserExcep or SceneParseUtilsExcep, or QuenzaXMLDocExcep, whose text names the file. After
    /// a failure closeTo is due.
    void open(const TiXmlElement& include, ParserState& state);

    std::size_t depth() const { return files_.size(); }
    /// What stands behind the text of an error: the innermost included file, or nothing in the scene itself.
    std::string errorContext() const;
    /// The next element of the innermost file. At the file's end closes it and returns null.
    const TiXmlElement* next(ParserState& state);
    /// Closes files until `depth` are left.
    void closeTo(std::size_t depth, ParserState& state);

private:
    struct File {
        std::unique_ptr<XMLElementReader> elements;
        String including_base; ///< The state's folder to return to.
        String path;
        std::string identity;
    };

    void checkCircle(const String& path, const std::string& identity, const TiXmlElement& include) const;
    void countRepeat(const String& path, const std::string& identity, const TiXmlElement& include);

    String scene_path_;
    std::string scene_identity_;
    std::vector<File> files_;
    std::unordered_set<std::string> open_; ///< Identities of the files that are being read.
    std::unordered_set<std::string> seen_; ///< Of all included so far.
    u64 repeated_bytes_ = 0;
};

} // namespace Quenza
