// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include "headless/runtime/described_parameter.h"
#include "headless/runtime/host.h"

namespace headless {

namespace {

DescriptionInstance& instanceOf(Description* description) {
    return *reinterpret_cast<DescriptionInstance*>(description);
}

bool load(Description* description, int32_t pluginId) {
    const resources::Description* const resource = Host::current().descriptionOf(pluginId);
    if (resource) {
        instanceOf(description).load(*resource);
    }
    return resource != nullptr;
}

BaseContainer* getParameter(Description* description, const DescID& id) {
    return instanceOf(description).properties(id[0]);
}

bool setParameter(Description* description, const DescID& id, int32_t dataType,
                  const BaseContainer& properties, const DescID& group) {
    return instanceOf(description).set(id[0], dataType, properties, group[0]);
}

} // namespace

const DescriptionTable* descriptionTable() {
    static constexpr DescriptionTable table = {
        .Load = load,
        .GetParameter = getParameter,
        .SetParameter = setParameter,
    };
    return &table;
}

} // namespace headless
