// SPDX-License-Identifier: MIT
#include "headless/documents/link_table.h"

#include "headless/documents/document_error.h"

namespace headless {

void LinkTable::define(const JsonCursor& place, Node& node) {
    if (place.text().empty()) {
        place.fail("an id can't be empty");
    }
    if (!nodes_.emplace(place.text(), &node).second) {
        place.fail("id \"" + place.text() + "\" is in use already");
    }
}

void LinkTable::link(const JsonCursor& place, int32_t type, std::function<void(Node&)> assign) {
    pending_.push_back({place.file(), place.place(), place.text(), type, std::move(assign)});
}

void LinkTable::resolve() {
    for (const Pending& link : pending_) {
        const auto found = nodes_.find(link.id);
        if (found == nodes_.end()) {
            throw DocumentError(link.file,
                                link.place + ": no node of the document has the id \"" + link.id + "\"");
        }
        if (link.type != 0 && !found->second->isInstanceOf(link.type)) {
            throw DocumentError(link.file, link.place + ": \"" + link.id + "\" is a node of another kind");
        }
        link.assign(*found->second);
    }
    pending_.clear();
}

} // namespace headless
