// SPDX-License-Identifier: MIT
#include "headless/app/description_list.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "headless/app/arguments.h"
#include "headless/app/closest_names.h"
#include "headless/app/text_table.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/described_parameter.h"
#include "host/description.h"
#include "host/inexclude.h"

namespace headless {

namespace {

using resources::Entry;
using resources::EntryKind;

template <typename Number>
std::string numberText(Number number) {
    std::array<char, 32> buffer{};
    return std::string(buffer.data(),
                       std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr);
}

std::string nameOf(const BaseList2D* node) {
    return node ? node->GetName().GetUtf8() : "";
}

std::string namesIn(const CustomDataType* value) {
    std::string names;
    const auto* const list = static_cast<const InExcludeData*>(value);
    for (int32_t i = 0; list && i < list->GetObjectCount(); ++i) {
        names += (i == 0 ? "" : ", ") + nameOf(list->ObjectFromIndex(nullptr, i));
    }
    return names;
}

/// "" when there is no value.
std::string valueText(const GeData* value, EntryKind kind) {
    switch (value ? value->GetType() : DA_NIL) {
    case DA_LONG:
        return kind != EntryKind::boolean ? numberText(value->GetLong())
               : value->GetBool()         ? "true"
                                          : "false";
    case DA_REAL:
        return numberText(value->GetReal());
    case DA_VECTOR: {
        const Vector vector = value->GetVector();
        return numberText(vector.x) + "," + numberText(vector.y) + "," + numberText(vector.z);
    }
    case DA_TIME:
        return numberText(value->GetTime().Get());
    case DA_STRING:
        return value->GetString().GetUtf8();
    case DA_FILENAME:
        return value->GetFilename().GetString().GetUtf8();
    case DA_LINK:
        return nameOf(value->GetLink());
    case DA_CUSTOM:
        return namesIn(value->GetCustomDataType(CUSTOMDATATYPE_INEXCLUDE_LIST));
    default:
        return "";
    }
}

bool holdsValue(const Entry& entry) {
    return entry.kind != EntryKind::group && entry.kind != EntryKind::separator &&
           entry.kind != EntryKind::staticText;
}

/// Below the parameter, set in. A list that was made at run time has values without names.
void addChoices(TextTable& table, const DescribedParameter& parameter) {
    const BaseContainer choices = parameter.properties.GetContainer(DESC_CYCLE);
    for (int32_t i = 0; i < choices.GetCount(); ++i) {
        const int32_t value = choices.GetIndexId(i);
        const auto named = std::ranges::find(parameter.entry->cycle, value, &resources::CycleItem::value);
        const std::string symbol = named != parameter.entry->cycle.end() ? "  " + named->symbol : "";
        table.add({"  " + numberText(value), symbol, "", "", "", "", "",
                   "  " + choices.GetIndexData(i).GetString().GetUtf8()});
    }
}

std::string pageOf(Node& node) {
    TextTable table({"ID", "NAME", "TYPE", "DEFAULT", "VALUE", "SHOWN", "ENABLED", "LABEL"});
    // A page may put values right while it opens.
    const BaseContainer values = node.data;
    for (const DescribedParameter& parameter : describe(toHost(&node))) {
        const Entry& entry = *parameter.entry;
        if (!holdsValue(entry)) {
            continue;
        }
        table.add({numberText(parameter.id), entry.symbol, entry.keyword,
                   valueText(parameter.properties.FindData(DESC_DEFAULT), entry.kind),
                   valueText(values.FindData(parameter.id), entry.kind), parameter.hidden ? "no" : "yes",
                   parameter.enabled ? "yes" : "no", parameter.properties.GetString(DESC_NAME).GetUtf8()});
        addChoices(table, parameter);
    }
    return table.text();
}

bool isDescribed(const Registration& type) {
    return type.allocator && type.info.description.Content();
}

std::vector<const Registration*> chosenTypes(const Registrations& registrations,
                                             const std::optional<std::string>& className) {
    std::vector<const Registration*> chosen;
    std::vector<std::string> known;
    for (const std::unique_ptr<Registration>& type : registrations.all()) {
        if (!isDescribed(*type)) {
            continue;
        }
        const std::string description = type->info.description.GetUtf8();
        known.push_back(description);
        if (!className || *className == description || *className == type->info.name.GetUtf8() ||
            *className == numberText(type->info.id)) {
            chosen.push_back(type.get());
        }
    }
    if (className && chosen.empty()) {
        throw UsageError("The plug-in describes no class " + *className + suggestion(*className, known));
    }
    return chosen;
}

void collect(Node& node, int32_t type, std::vector<Node*>& found) {
    if (node.type() == type) {
        found.push_back(&node);
    }
    node.visitOwned(Owned::all, [&](Node& owned) { collect(owned, type, found); });
}

/// A new node of the type, in a document of its own: pages may depend on being in one.
Node* addNew(Document& document, const Registration& type) {
    const int32_t id = type.info.id;
    switch (type.kind) {
    case PLUGINKIND_OBJECT:
        return &document.appendObject(createObject(id));
    case PLUGINKIND_TAG:
        return &document.appendObject(createObject(Onull)).appendTag(createTag(id));
    case PLUGINKIND_VIDEOPOST:
        return &document.activeRenderData()->appendVideoPost(createVideoPost(id));
    case PLUGINKIND_MATERIAL:
        return &document.appendMaterial(createMaterial(id));
    case PLUGINKIND_SHADER:
        return &document.appendMaterial(createMaterial(Mmaterial)).insertShader(createShader(id));
    default:
        return nullptr;
    }
}

/// What tells a node of a document from others of its type.
std::string placeOf(const Node& node) {
    switch (node.kind()) {
    case NodeKind::tag:
        return " of " + static_cast<const Tag&>(node).object()->name;
    case NodeKind::videoPost:
        return " of " + static_cast<const VideoPost&>(node).renderData()->name;
    default:
        return " " + node.name;
    }
}

/// Prints pages with an empty line between them.
class Printer {
public:
    void print(const Registration& type, const resources::Description& description, const std::string& place,
               Node& node) {
        std::printf("%s%s (%s %d, \"%s\")%s\n%s", isFirst_ ? "" : "\n", description.name.c_str(),
                    std::string(kindName(type.kind)).c_str(), type.info.id, description.label.c_str(),
                    place.c_str(), pageOf(node).c_str());
        isFirst_ = false;
    }

private:
    bool isFirst_ = true;
};

} // namespace

void listDescriptions(Host& host, const std::optional<std::string>& className, Document* document) {
    Printer printer;
    bool isWhole = true;
    for (const Registration* const type : chosenTypes(host.registrations(), className)) {
        const resources::Description* const description = host.descriptionOf(type->info.id);
        if (!description) {
            isWhole = false;
            continue;
        }
        std::vector<Node*> nodes;
        if (document) {
            collect(*document, type->info.id, nodes);
        }
        for (Node* const node : nodes) {
            printer.print(*type, *description, placeOf(*node), *node);
        }
        if (nodes.empty() && (className || !document)) {
            Document scratch;
            Node* const node = addNew(scratch, *type);
            printer.print(*type, *description, document ? ", a new one" : "", *node);
        }
    }
    if (!isWhole) {
        throw HostError("Some descriptions could not be read");
    }
}

} // namespace headless
