// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/object.h"

#include <unordered_map>

namespace headless {

/// Numbers that change when what a cache is built from changes. Plug-ins write to containers and arrays
/// through pointers that they hold, so that nothing short of looking at the values tells.
///
/// An instance lives as long as one build: linked objects are looked at once.
class Fingerprints {
public:
    /// Of a node's own values: for an object those of `ofObject` and its place in the world, else its name
    /// and parameters, and all that a tag holds.
    static uint64_t ofNode(const Node& node);
    /// Of the object with its parameters, tags and geometry; not of its matrix and its children.
    static uint64_t ofObject(const Object& object);
    /// The same, with all below it (there with matrices) and all objects that links lead to from there.
    uint64_t ofGenerator(const Object& object);

    /// Number of objects in a branch.
    size_t sizeOf(const Object& object) { return branch(object).size; }
    /// For when objects outside the document were freed.
    void forget() { branches_.clear(); }

private:
    struct Branch {
        uint64_t hash = 0;
        size_t size = 0;
        std::vector<const Object*> linked;
    };
    static Branch makeBranch(const Object& root);
    const Branch& branch(const Object& root);

    std::unordered_map<const Object*, Branch> branches_;
};

} // namespace headless
