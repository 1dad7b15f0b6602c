// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/json_cursor.h"
#include "headless/model/node.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace headless {

/// The ids that nodes of a document go by while it's read, and the links to them: those can lead forwards, so
/// they are made when all nodes stand.
class LinkTable {
public:
    /// Fails at `place` when the id is taken.
    void define(const JsonCursor& place, Node& node);
    /// For nodes that come without a place of their own; the first of an id wins.
    void defineImported(const std::string& id, Node& node) { nodes_.emplace(id, &node); }
    /// Calls `assign` with the node of the id at `place`, once all nodes stand. A type other than 0 is
    /// checked.
    void link(const JsonCursor& place, int32_t type, std::function<void(Node&)> assign);
    /// Makes the links; DocumentError for an id that no node has.
    void resolve();

private:
    struct Pending {
        std::string file;
        std::string place;
        std::string id;
        int32_t type;
        std::function<void(Node&)> assign;
    };
    std::map<std::string, Node*> nodes_;
    std::vector<Pending> pending_;
};

} // namespace headless
