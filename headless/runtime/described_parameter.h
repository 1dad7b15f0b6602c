// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "headless/resources/description.h"
#include "host/baselist.h"

namespace headless {

/// A parameter as the attribute manager would show it for one node.
struct DescribedParameter {
    int32_t id = 0;
    /// The entry of the description resource; lives as long as the plug-in is loaded.
    const resources::Entry* entry = nullptr;
    /// DescriptionProperty numbers, after the plug-in changed them.
    BaseContainer properties;
    /// Not on the page: hidden itself, or in a group that is.
    bool hidden = false;
    bool enabled = true;
};

/// What a Description of the host points to: the properties of each parameter, in the order of the resource.
class DescriptionInstance {
public:
    /// Replaces what it holds by a resource, which must outlive it.
    void load(const resources::Description& resource);
    /// The live properties, null for an unknown number.
    BaseContainer* properties(int32_t id);
    bool isLoaded() const { return resource_ != nullptr; }
    /// Whether a parameter or one of its groups is hidden by now.
    bool isHidden(const resources::Entry& entry);

    struct Item {
        const resources::Entry* entry;
        BaseContainer properties;
    };
    const std::vector<Item>& items() const { return items_; }

private:
    std::vector<Item> items_;
    const resources::Description* resource_ = nullptr;
};

/// Describes a node: the plug-in's GetDDescription, then GetDEnabling of each parameter. A plug-in that
/// doesn't fill the description gets the resource as it is. Empty for a node of a type without one.
std::vector<DescribedParameter> describe(BaseList2D* node);

} // namespace headless
