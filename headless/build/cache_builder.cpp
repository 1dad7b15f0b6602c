// SPDX-License-Identifier: MIT
#include "headless/build/cache_builder.h"

#include "headless/build/caches.h"
#include "headless/build/content_hash.h"
#include "headless/build/generators.h"
#include "headless/build/object_roles.h"
#include "headless/build/primitive_mesh.h"
#include "headless/model/handles.h"
#include "headless/model/layer.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/warnings.h"
#include "host/thread.h"

#include <utility>

namespace headless {

namespace {

void setControlBit(Object& object) {
    const Object* const outer = object.parentOrCacheParent();
    const bool control = outer && ((outer->info & BIT_CONTROLOBJECT) || isInput(object));
    const int32_t info = (object.info & ~BIT_CONTROLOBJECT) | (control ? int32_t{BIT_CONTROLOBJECT} : 0);
    if (info != object.info) {
        object.info = info;
    }
}

bool linksTo(const Object& object, const Object& target) {
    bool found = false;
    const_cast<Object&>(object).visitLinks(
        [&](BaseLink& link) { found = found || fromHost(link.GetLink()) == &target; });
    return found;
}

/// True when the object's cache would contain the object again: it links to an object that it lies in, or
/// that a generator around it shows already.
bool wouldRepeat(const Object& object) {
    bool repeats = false;
    const_cast<Object&>(object).visitLinks([&](BaseLink& link) {
        const auto* const target = static_cast<const Object*>(fromHost(link.GetLink(nullptr, Obase)));
        if (!target || repeats) {
            return;
        }
        repeats = object.isWithin(*target);
        for (const Object* outer = &object; outer && !repeats; outer = outer->parentOrCacheParent()) {
            const Object* const generator = outer->parent() ? nullptr : outer->cacheParent();
            repeats = generator && linksTo(*generator, *target);
        }
    });
    return repeats;
}

/// A generator's geometry is on the generator's layer, but for copies of objects that have one of their own.
void passLayerOn(const Object& generator, Object& cache) {
    Layer* const layer = generator.layer();
    for (Object* object = layer ? &cache : nullptr; object; object = object->nextInBranch(cache)) {
        if (!object->layer()) {
            object->setLayer(layer);
        }
    }
}

uint64_t withLayer(uint64_t key, const Object& object) {
    ContentHash hash;
    hash.add(key);
    hash.addBits(object.layer());
    return hash.value();
}

} // namespace

bool CacheBuilder::testStop() {
    if (!stopped_ && thread_ && visited_++ % 1024 == 0) {
        stopped_ = thread_->TestBreak();
    }
    return stopped_;
}

void CacheBuilder::buildBranch(Object& root, int depth) {
    for (Object* object = &root; object && !testStop(); object = object->nextInBranch(root)) {
        setControlBit(*object);
        if (isDeformer(*object) && object->enabled && object->parent()) {
            deformers_[object->parent()].push_back(object);
        }
        if (depth > 0) {
            ++generated_;
        }
        hasDeformCaches_ = hasDeformCaches_ || object->deformCache();
        buildObject(*object, depth);
    }
}

void CacheBuilder::buildObject(Object& object, int depth) {
    if (!isGenerator(object)) {
        if (object.cache()) {
            object.setCache(nullptr);
        }
        return;
    }
    const uint64_t key = withLayer(isPrimitive(object.type()) ? Fingerprints::ofObject(object)
                                                              : fingerprints_.ofGenerator(object),
                                   object);
    Generated& generated = object.generated();
    if (generated.cacheKey != key) {
        object.setCache(nullptr);
        object.setCache(generate(object, depth));
        if (object.cache()) {
            passLayerOn(object, *object.cache());
        }
        generated.cacheKey = stopped_ || std::exchange(leftOut_, false) ? 0 : key;
    }
    if (Object* const cache = object.cache()) {
        buildBranch(*cache, depth + 1);
    }
}

bool CacheBuilder::isWithinLimits(const Object& object, int depth) {
    size_t size = 1;
    if (const Object* const target = instanceTarget(object)) {
        size = fingerprints_.sizeOf(*target);
    } else if (const Object* const input = inputOf(object)) {
        const bool isArray = object.type() == Oarray;
        const int32_t copies = isArray ? std::max(object.data.GetLong(ARRAY_COPIES), 0) : 1;
        size = fingerprints_.sizeOf(*input) * static_cast<size_t>(copies);
    }
    if (depth >= maxCacheDepth) {
        warnOnce(object, "is nested " + std::to_string(maxCacheDepth) + " generators deep");
        return false;
    }
    if (generated_ + size > maxCacheObjects) {
        warnOnce(object, "would bring the document to more than " + std::to_string(maxCacheObjects) +
                             " generated objects");
        return false;
    }
    return true;
}

void CacheBuilder::warnOnce(const Object& object, const std::string& reason) {
    leftOut_ = true;
    if (!std::exchange(warned_, true)) {
        warn("\"" + object.name + "\" " + reason + ": it is left out, and so may be others.");
    }
}

std::unique_ptr<Object> CacheBuilder::generate(Object& object, int depth) {
    if (isPrimitive(object.type())) {
        return generatePrimitive(object);
    }
    if (!isWithinLimits(object, depth)) {
        return nullptr;
    }
    switch (object.type()) {
    case Oinstance:
        return wouldRepeat(object) ? nullptr : generateInstance(object);
    case Oarray:
        return generateArray(object);
    case Osymmetry:
        return buildSymmetry(object, depth);
    default:
        return wouldRepeat(object) ? nullptr : generateVirtualObjects(object, thread_);
    }
}

std::unique_ptr<Object> CacheBuilder::buildSymmetry(Object& symmetry, int depth) {
    const Object* const input = inputOf(symmetry);
    if (!input) {
        return nullptr;
    }
    // For the time being the copy is the cache: what is inside sees what is around it. Deformers from the
    // symmetry upwards act on the result.
    symmetry.setCache(clone(*input));
    Deformers outer = std::exchange(deformers_, {});
    buildBranch(*symmetry.cache(), depth + 1);
    deformBranch(*symmetry.cache(), &symmetry);
    deformers_ = std::move(outer);
    fingerprints_.forget();
    return stopped_ ? nullptr : generateSymmetry(symmetry, *symmetry.cache());
}

void CacheBuilder::deformBranch(Object& root, const Object* boundary) {
    for (Object* object = &root; object && !testStop(); object = object->nextInBranch(root)) {
        if (PolygonNode* const mesh = asPolygons(object)) {
            deform(*mesh, deformers_, boundary);
        }
        if (Object* const cache = object->cache()) {
            deformBranch(*cache, boundary);
        }
    }
}

} // namespace headless
