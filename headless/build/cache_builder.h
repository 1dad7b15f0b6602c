// SPDX-License-Identifier: MIT
#pragma once

#include "headless/build/deform.h"
#include "headless/build/fingerprints.h"

class BaseThread;

namespace headless {

/// Builds the caches of branches: first the generators', parents before children and each with what is in its
/// cache, while the deformers are noted; then the deform caches.
class CacheBuilder {
public:
    explicit CacheBuilder(BaseThread* thread) : thread_(thread) {}

    /// Generators of a branch. Call for all branches before `deformBranch`.
    void buildBranch(Object& root) { buildBranch(root, 0); }
    void deformBranch(Object& root) { deformBranch(root, nullptr); }

    /// True when the thread was asked to end; nothing more is built then.
    bool stopped() const { return stopped_; }
    /// False when there is nothing to deform, and there wasn't before.
    bool needsDeforming() const { return !deformers_.empty() || hasDeformCaches_; }

private:
    void buildBranch(Object& root, int depth);
    void deformBranch(Object& root, const Object* boundary);
    void buildObject(Object& object, int depth);
    std::unique_ptr<Object> generate(Object& object, int depth);
    std::unique_ptr<Object> buildSymmetry(Object& symmetry, int depth);
    bool isWithinLimits(const Object& object, int depth);
    void warnOnce(const Object& object, const std::string& reason);
    bool testStop();

    BaseThread* thread_;
    Fingerprints fingerprints_;
    Deformers deformers_;
    bool hasDeformCaches_ = false;
    bool stopped_ = false;
    bool warned_ = false;
    /// The last generator wasn't made for a limit: it isn't done, and tried again by the next build.
    bool leftOut_ = false;
    size_t visited_ = 0;
    size_t generated_ = 0;
};

} // namespace headless
