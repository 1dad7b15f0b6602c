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
            items_.push_back({&entry, propertiesOf(entry)});
        }
    }
    resource_ = &resource;
}

BaseContainer* DescriptionInstance::properties(int32_t id) {
    const auto found = std::ranges::find(items_, id, [](const Item& item) { return item.entry->id; });
    return found == items_.end() ? nullptr : &found->properties;
}

bool DescriptionInstance::isHidden(const resources::Entry& entry) {
    std::vector<const resources::Entry*> path = resource_->groupPath(entry);
    path.push_back(&entry);
    return std::ranges::any_of(path, [this](const resources::Entry* part) {
        const BaseContainer* const live = properties(part->id);
        return live ? live->GetBool(DESC_HIDE) : part->hidden;
    });
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
        parameter.hidden = instance.isHidden(*item.entry);
        parameter.enabled = !data || data->GetDEnabling(node, DescID(item.entry->id));
        parameters.push_back(std::move(parameter));
    }
    return parameters;
}

} // namespace headless
