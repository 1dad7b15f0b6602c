// SPDX-License-Identifier: MIT
#pragma once

#include "host/document.h"
#include "host/vector.h"

#include <map>
#include <unordered_map>
#include <vector>

/// Where the document's objects are at other times than the exported one. To move a document costs as much as
/// all its objects together, so it is moved once for each time that anyone asks for, not once for each
/// object.
class SampledMotion {
public:
    /// Has the document's objects looked at at these times, in frames, and moved back to `frame`. Times that
    /// are known already cost nothing. The document's own time stays as it is.
    void sample(BaseDocument* document, int32_t frame, const std::vector<double>& times);

    /// The product of the local matrices of `chain`, from its first entry, at a time that was sampled.
    /// Objects of caches, which no track moves, have their present matrix.
    Matrix worldMatrix(const std::vector<BaseObject*>& chain, double time) const;

    /// Forgets all.
    void clear();

private:
    struct Place {
        const BaseObject* object;
        Matrix matrix;
    };
    /// Local matrices of the objects that are elsewhere than at the exported frame.
    using Moved = std::unordered_map<const BaseObject*, Matrix>;

    Moved findMoved(BaseDocument* document) const;

    /// All objects at the exported frame, in the order of the tree.
    std::vector<Place> present_;
    /// By time in frames.
    std::map<double, Moved> samples_;
};
