// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/element_diff.h"

#include "foundation/string_utils.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <stdexcept>
#include <string_view>
#include <tinyxml.h>

namespace scene_tool {

namespace {

using Quenza::u32;
using Quenza::u64;

std::string textOf(const TiXmlElement& element) {
    std::string text;
    for (const TiXmlNode* node = element.FirstChild(); node; node = node->NextSibling())
        if (const TiXmlText* const piece = node->ToText())
            text += piece->Value();
    return text;
}

/// In quotes and on one line.
std::string quoted(const std::string& text) {
    std::string line = "'";
    for (const char c : text)
        line += c == '\n' ? std::string("\\n") : c == '\r' ? std::string("\\r") : std::string(1, c);
    return line + "'";
}

bool holdsUID(std::string_view name) {
    return name == "uid" || name.ends_with("_uid");
}

using Children = std::vector<const TiXmlElement*>;

/// The names of the children of either in their order, each once.
struct ChildTable {
    std::vector<std::string> names;
    std::map<std::string, std::pair<Children, Children>> by_name;

    ChildTable(const TiXmlElement& a, const TiXmlElement& b) {
        add(a, &std::pair<Children, Children>::first);
        add(b, &std::pair<Children, Children>::second);
    }
    void add(const TiXmlElement& parent, Children std::pair<Children, Children>::*side) {
        for (const TiXmlElement* child = parent.FirstChildElement(); child;
             child = child->NextSiblingElement()) {
            const auto [entry, is_new] = by_name.try_emplace(child->Value());
            if (is_new)
                names.push_back(child->Value());
            (entry->second.*side).push_back(child);
        }
    }
};

class ElementDiff {
public:
    explicit ElementDiff(const UIDMap* uids) : uids_(uids) {}

    void compare(const TiXmlElement& a, const TiXmlElement& b, const std::string& path) {
        const ChildTable table(a, b);
        if (table.names.empty()) {
            compareTexts(textOf(a), textOf(b), path, a.Value());
            return;
        }
        for (const std::string& name : table.names) {
            const auto& [of_a, of_b] = table.by_name.at(name);
            const u64 count = std::max(of_a.size(), of_b.size());
            for (u64 i = 0; i < count; ++i) {
                const std::string way = (path.empty() ? "" : path + "/") + name +
                                        (count > 1 ? "[" + Quenza::toString(i + 1) + "]" : "");
                if (i >= of_a.size())
                    lines.push_back(way + ": added" + valueOf(*of_b[i]));
                else if (i >= of_b.size())
                    lines.push_back(way + ": removed" + valueOf(*of_a[i]));
                else
                    compare(*of_a[i], *of_b[i], way);
            }
        }
    }

    std::vector<std::string> lines;

private:
    static std::string valueOf(const TiXmlElement& element) {
        return element.FirstChildElement() ? "" : " " + quoted(textOf(element));
    }

    void compareTexts(const std::string& a, const std::string& b, const std::string& path, const char* name) {
        if (uids_ && holdsUID(name) ? sameUID(a, b) : a == b)
            return;
        lines.push_back(path + ": " + quoted(a) + " -> " + quoted(b));
    }

    bool sameUID(const std::string& a, const std::string& b) const {
        u32 uid = 0;
        const auto [end, fault] = std::from_chars(b.data(), b.data() + b.size(), uid);
        if (fault != std::errc() || end != b.data() + b.size())
            return a == b;
        const auto found = uids_->find(uid);
        // "None" is the same in both.
        if (found == uids_->end())
            return a == b && uid == 0xFFFFFFFFu;
        return a == Quenza::toString(found->second);
    }

    const UIDMap* uids_;
};

/// Owns the document that the element stands in.
class ParsedElement {
public:
    explicit ParsedElement(const std::string& text) {
        document_.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
        if (document_.Error() || !document_.RootElement())
            throw std::runtime_error("a node's text can't be parsed: " + std::string(document_.ErrorDesc()));
    }
    const TiXmlElement& operator*() const { return *document_.RootElement(); }

private:
    TiXmlDocument document_;
};

} // namespace

std::vector<std::string> diffElements(const std::string& a, const std::string& b, const UIDMap* uids) {
    if (!uids && a == b)
        return {};
    const ParsedElement first(a);
    const ParsedElement second(b);
    ElementDiff diff(uids);
    diff.compare(*first, *second, "");
    return std::move(diff.lines);
}

} // namespace scene_tool
