// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/node.h"
#include "host/document.h"

#include <deque>

namespace headless {

/// What AddUndo recorded of one node.
struct UndoStep {
    UndoType type;
    /// The node, as long as it lives.
    BaseLink node;
    /// Change: the node and its parts, with copies of what each held.
    /// Deletion: the node with one copy of all of it.
    std::vector<std::pair<BaseLink, std::unique_ptr<Node>>> copies;

    // Deletion: where the node was.
    BaseLink owner;
    BaseLink behind;
    /// Deletion: tokens of the deleted nodes, each with a reference, and the nodes of the copy that take
    /// their places.
    std::vector<std::pair<LinkToken*, Node*>> successors;

    UndoStep(UndoType stepType, Node& target);
    UndoStep(UndoStep&&) noexcept;
    UndoStep& operator=(UndoStep&&) = delete;
    ~UndoStep();
};

/// The undo steps of a document, in groups from start to end. Steps outside a group form one of their own.
class UndoStack {
public:
    explicit UndoStack(Document& document) : document_(document) {}

    void start();
    /// To be called before a change or a deletion, after a creation.
    void add(UndoType type, Node& node);
    void end();
    /// Takes the last group back, the last step first. False when there is none.
    bool undo();

    size_t groupCount() const { return groups_.size(); }
    /// Groups beyond this many are forgotten, the oldest first.
    static constexpr size_t maxGroups = 100;

private:
    void takeBack(UndoStep& step);
    void reinsert(UndoStep& step);

    Document& document_;
    std::deque<std::vector<UndoStep>> groups_;
    int32_t depth_ = 0;
};

} // namespace headless
