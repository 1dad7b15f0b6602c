// SPDX-License-Identifier: MIT
#include "headless/runtime/described_parameter.h"

#include <algorithm>

#include "headless/runtime/host.h"
#include "host/description.h"
#include "host/plugin_data.h"

namespace headless {

namespace {

struct DefaultData {
    GeData operator()(std::monostate) const { return {}; }
    GeData operator()(bool value) const { return GeData(value); }
    GeData operator()(int32_t value) const { return GeData(value); }
    GeData operator()(double value) const { return GeData(value); }
    GeData operator()(const std::string& value) const { return GeData(String(value)); }
    GeData operator()(const std::array<double, 3>& value) const {
        return GeData(
            Vector(static_cast<float>(value[0]), static_cast<float>(value[1]), static_cast<float>(value[2])));
    }
};

BaseContainer propertiesOf(const resources::Entry& entry) {
    BaseContainer properties(entry.id);
    properties.SetString(DESC_NAME, String(entry.label));
    if (entry.min) {
        properties.SetData(DESC_MIN, GeData(*entry.min));
    }
    if (entry.max) {
        properties.SetData(DESC_MAX, GeData(*entry.max));
    }
    if (entry.defaultValue.index() != 0) {
        properties.SetData(DESC_DEFAULT, std::visit(DefaultData(), entry.defaultValue));
    }
    properties.SetBool(DESC_HIDE, entry.hidden);
    if (entry.isCycle) {
        BaseContainer cycle;
        for (const resources::CycleItem& item : entry.cycle) {
            cycle.SetString(item.value, String(item.label));
        }
        properties.SetContainer(DESC_CYCLE, cycle);
    }
    return properties;
}

struct TypeForm {
    int32_t dataType;
    resources::EntryKind kind;
    const char* keyword;
};

constexpr TypeForm TYPE_FORMS[] = {
    {DTYPE_GROUP, resources::EntryKind::group, "GROUP"},
    {DTYPE_SEPARATOR, resources::EntryKind::separator, "SEPARATOR"},
    {DTYPE_BOOL, resources::EntryKind::boolean, "BOOL"},
    {DTYPE_LONG, resources::EntryKind::integer, "LONG"},
    {DTYPE_REAL, resources::EntryKind::real, "REAL"},
    {DTYPE_COLOR, resources::EntryKind::colour, "COLOR"},
    {DTYPE_STRING, resources::EntryKind::string, "STRING"},
    {DTYPE_FILENAME, resources::EntryKind::filename, "FILENAME"},
    {DTYPE_TEXTURE, resources::EntryKind::shaderLink, "SHADERLINK"},
    {DTYPE_BASELISTLINK, resources::EntryKind::link, "LINK"},
};

resources::Entry entryOf(int32_t id, const TypeForm& form, const BaseContainer& properties) {
    resources::Entry entry;
    entry.id = id;
    entry.keyword = form.keyword;
    entry.kind = form.kind;
    entry.label = properties.GetString(DESC_NAME).GetUtf8();
    const BaseContainer choices = properties.GetContainer(DESC_CYCLE);
    entry.isCycle = properties.GetType(DESC_CYCLE) == DA_CONTAINER;
    for (int32_t i = 0; i < choices.GetCount(); ++i) {
        entry.cycle.push_back({choices.GetIndexId(i), "", choices.GetIndexData(i).GetString().GetUtf8()});
    }
    return entry;
}

bool fill(BaseList2D* node, DescriptionInstance& instance) {
    auto* const description = reinterpret_cast<Description*>(&instance);
    int32_t flags = 0;
    NodeData* const data = node->GetNodeData();
    if (data && data->GetDDescription(node, description, flags) && (flags & DESCFLAGS_DESC_LOADED) != 0) {
        return true;
    }
    return description->LoadDescription(node->GetType());
}

} // namespace

void DescriptionInstance::load(const resources::Description& resource) {
    items_.clear();
    for (const resources::Entry& entry : resource.entries) {
        if (entry.id != 0) {
            items_.push_back({{std::shared_ptr<void>(), &entry}, propertiesOf(entry)});
        }
    }
    resource_ = &resource;
}

DescriptionInstance::Item* DescriptionInstance::find(int32_t id) {
    const auto found = std::ranges::find(items_, id, [](const Item& item) { return item.entry->id; });
    return found == items_.end() ? nullptr : &*found;
}

BaseContainer* DescriptionInstance::properties(int32_t id) {
    Item* const item = find(id);
    return item ? &item->properties : nullptr;
}

bool DescriptionInstance::set(int32_t id, int32_t dataType, const BaseContainer& properties, int32_t group) {
    const auto* const form = std::ranges::find(TYPE_FORMS, dataType, &TypeForm::dataType);
    if (id == 0 || form == std::end(TYPE_FORMS)) {
        return false;
    }
    Item made{std::make_shared<resources::Entry>(entryOf(id, *form, properties)), properties, group, true};
    if (Item* const known = find(id)) {
        *known = std::move(made);
    } else {
        items_.push_back(std::move(made));
    }
    return true;
}

bool DescriptionInstance::isHidden(const Item& item) {
    const Item* place = &item;
    // Groups made at run time may hold each other.
    for (size_t i = 0; i <= items_.size() && place && place->isDynamic; ++i) {
        if (place->properties.GetBool(DESC_HIDE)) {
            return true;
        }
        place = place->group != 0 ? find(place->group) : nullptr;
    }
    if (!place || place->isDynamic) {
        return false;
    }
    std::vector<const resources::Entry*> path = resource_->groupPath(*place->entry);
    path.push_back(place->entry.get());
    return std::ranges::any_of(path, [this](const resources::Entry* part) {
        const BaseContainer* const live = properties(part->id);
        return live ? live->GetBool(DESC_HIDE) : part->hidden;
    });
}

std::string DescriptionInstance::groupLabel(const Item& item) {
    int32_t group = item.group;
    if (!item.isDynamic) {
        const std::vector<const resources::Entry*> path = resource_->groupPath(*item.entry);
        group = path.empty() ? 0 : path.back()->id;
    }
    const BaseContainer* const live = group != 0 ? properties(group) : nullptr;
    return live ? live->GetString(DESC_NAME).GetUtf8() : "";
}

std::vector<DescribedParameter> describe(BaseList2D* node) {
    DescriptionInstance instance;
    std::vector<DescribedParameter> parameters;
    if (!fill(node, instance)) {
        return parameters;
    }
    NodeData* const data = node->GetNodeData();
    for (const DescriptionInstance::Item& item : instance.items()) {
        DescribedParameter parameter;
        parameter.id = item.entry->id;
        parameter.entry = item.entry;
        parameter.properties = item.properties;
        parameter.group = instance.groupLabel(item);
        parameter.hidden = instance.isHidden(item);
        parameter.enabled = !data || data->GetDEnabling(node, DescID(item.entry->id));
        parameters.push_back(std::move(parameter));
    }
    return parameters;
}

} // namespace headless
