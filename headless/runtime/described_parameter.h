// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "headless/resources/description.h"
#include "host/baselist.h"

namespace headless {

/// A parameter as the attribute manager would show it for one node.
struct DescribedParameter {
    int32_t id = 0;
    /// The entry of the description resource, which lives as long as the plug-in is loaded, or one that the
    /// plug-in made at run time.
    std::shared_ptr<const resources::Entry> entry;
    /// DescriptionProperty numbers, after the plug-in changed them.
    BaseContainer properties;
    /// Label of the innermost group that holds it; "" without one.
    std::string group;
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
    /// Adds a parameter behind the others, or puts one in the place of that of its number. `dataType` is a
    /// DescriptionType, `group` the number of the group that holds it, 0 for none. False for another type or
    /// the number 0.
    bool set(int32_t id, int32_t dataType, const BaseContainer& properties, int32_t group);
    bool isLoaded() const { return resource_ != nullptr; }

    struct Item {
        /// Without an owner when it's the resource's.
        std::shared_ptr<const resources::Entry> entry;
        BaseContainer properties;
        /// For a parameter made at run time: number of its group.
        int32_t group = 0;
        bool isDynamic = false;
    };
    /// Whether a parameter or one of its groups is hidden by now.
    bool isHidden(const Item& item);
    std::string groupLabel(const Item& item);
    const std::vector<Item>& items() const { return items_; }

private:
    Item* find(int32_t id);

    std::vector<Item> items_;
    const resources::Description* resource_ = nullptr;
};

/// Describes a node: the plug-in's GetDDescription, then GetDEnabling of each parameter. A plug-in that
/// doesn't fill the description gets the resource as it is. Empty for a node of a type without one.
std::vector<DescribedParameter> describe(BaseList2D* node);

} // namespace headless
