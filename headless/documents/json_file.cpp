// SPDX-License-Identifier: MIT
#include "headless/documents/json_file.h"

#include "foundation/file_utils.h"
#include "headless/documents/document_error.h"
#include "headless/documents/json_place.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace headless {

namespace {

/// Watches the parser for keys that an object holds twice: the library would keep the last and say nothing.
class DoubledKeys {
public:
    explicit DoubledKeys(const std::string& file) : file_(file) {}

    void meet(Json::parse_event_t event, const Json& parsed) {
        switch (event) {
        case Json::parse_event_t::object_start:
            countElement();
            objects_.emplace_back();
            parts_.push_back({.isObject = true});
            break;
        case Json::parse_event_t::array_start:
            countElement();
            parts_.push_back({});
            break;
        case Json::parse_event_t::object_end:
            objects_.pop_back();
            parts_.pop_back();
            break;
        case Json::parse_event_t::array_end:
            parts_.pop_back();
            break;
        case Json::parse_event_t::key:
            takeKey(parsed.get_ref<const std::string&>());
            break;
        case Json::parse_event_t::value:
            countElement();
            break;
        }
    }

private:
    /// An object or array that the parser is in.
    struct Part {
        bool isObject = false;
        /// Those of an array that have begun.
        size_t elements = 0;
    };
    struct Object {
        std::unordered_set<std::string> keys;
        /// The last one, which lies in `keys`.
        const std::string* key = nullptr;
    };

    void countElement() {
        if (!parts_.empty()) {
            ++parts_.back().elements;
        }
    }

    void takeKey(const std::string& key) {
        Object& object = objects_.back();
        const auto [place, isNew] = object.keys.insert(key);
        if (!isNew) {
            fail(key);
        }
        object.key = &*place;
    }

    [[noreturn]] void fail(const std::string& key) const {
        std::vector<JsonStep> steps;
        size_t object = 0;
        for (size_t i = 0; i + 1 < parts_.size(); ++i) {
            steps.push_back(parts_[i].isObject ? JsonStep{.key = objects_[object++].key->c_str()}
                                               : JsonStep{.index = parts_[i].elements - 1});
        }
        const std::string where = placeText(steps);
        throw DocumentError(file_, (where.empty() ? "" : where + ": ") + "the key \"" + key +
                                       "\" is there twice; keep one of the two");
    }

    const std::string& file_;
    /// From the outermost.
    std::vector<Part> parts_;
    /// Those of `parts_` that are objects.
    std::vector<Object> objects_;
};

std::string parseFault(const std::string& text, const Json::parse_error& error) {
    const size_t at = std::min(error.byte > 0 ? error.byte - 1 : 0, text.size());
    const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
    const size_t lineStart = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    const std::string what = error.what();
    const size_t reason = what.find(": ");
    return "line " + std::to_string(line) + ", column " + std::to_string(at - lineStart + 1) +
           ": not valid JSON" + (reason == std::string::npos ? "" : what.substr(reason));
}

} // namespace

Json loadJson(const std::string& file) {
    std::string text;
    try {
        text = Quenza::FileUtils::readEntireFile(file);
    } catch (const Quenza::FileUtils::FileUtilsExcep&) {
        throw DocumentError(file, "the file can't be opened for reading");
    }
    DoubledKeys keys(file);
    try {
        return Json::parse(text, [&keys](int, Json::parse_event_t event, const Json& parsed) {
            keys.meet(event, parsed);
            return true;
        });
    } catch (const Json::parse_error& error) {
        throw DocumentError(file, parseFault(text, error));
    } catch (const Json::exception& error) {
        throw DocumentError(file, std::string("not valid JSON: ") + error.what());
    }
}

} // namespace headless
