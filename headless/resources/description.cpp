// SPDX-License-Identifier: MIT
#include "headless/resources/description.h"

#include <algorithm>

namespace headless::resources {

const Entry* Description::find(int32_t id) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [id](const Entry& entry) { return id != 0 && entry.id == id; });
    return found == entries.end() ? nullptr : &*found;
}

const Entry* Description::findSymbol(std::string_view symbol) const {
    const auto found = std::find_if(entries.begin(), entries.end(), [symbol](const Entry& entry) {
        return !symbol.empty() && entry.symbol == symbol;
    });
    return found == entries.end() ? nullptr : &*found;
}

std::vector<const Entry*> Description::groupPath(const Entry& entry) const {
    std::vector<const Entry*> path;
    for (std::optional<size_t> group = entry.group; group; group = entries[*group].group)
        path.push_back(&entries[*group]);
    std::reverse(path.begin(), path.end());
    return path;
}

} // namespace headless::resources
