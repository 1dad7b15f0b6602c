// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

namespace headless {

/// A list that owns its nodes and is threaded through their public fields `next` and `pred`: a node costs two
/// pointers, and is taken out in constant time.
template <class T>
class Chain {
public:
    Chain() = default;
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;
    ~Chain() { clear(); }

    T* first() const { return first_; }
    T* last() const { return last_; }
    bool empty() const { return !first_; }

    /// Takes over `node`: behind `behind`, which is of this list, or first when that is null.
    T& insert(std::unique_ptr<T> node, T* behind) {
        T* const added = node.release();
        added->pred = behind;
        added->next = behind ? behind->next : first_;
        (added->pred ? added->pred->next : first_) = added;
        (added->next ? added->next->pred : last_) = added;
        return *added;
    }
    T& append(std::unique_ptr<T> node) { return insert(std::move(node), last_); }

    /// Takes `node`, which is of this list, out of it.
    std::unique_ptr<T> remove(T& node) {
        (node.pred ? node.pred->next : first_) = node.next;
        (node.next ? node.next->pred : last_) = node.pred;
        node.pred = nullptr;
        node.next = nullptr;
        return std::unique_ptr<T>(&node);
    }

    /// Moves all nodes of `other` to the end of this list.
    void takeAll(Chain& other) {
        if (other.empty()) {
            return;
        }
        other.first_->pred = last_;
        (last_ ? last_->next : first_) = other.first_;
        last_ = other.last_;
        other.first_ = nullptr;
        other.last_ = nullptr;
    }

    void clear() {
        while (first_) {
            remove(*first_);
        }
    }

private:
    T* first_ = nullptr;
    T* last_ = nullptr;
};

/// Destroys a tree of nodes, each of which owns a chain that `childrenOf` gives: one after the other, since a
/// tree may be deeper than the stack.
template <class T, class ChildrenOf>
void destroyTree(Chain<T>& top, const ChildrenOf& childrenOf) {
    while (T* const node = top.first()) {
        top.takeAll(childrenOf(*node));
        top.remove(*node);
    }
}

} // namespace headless
