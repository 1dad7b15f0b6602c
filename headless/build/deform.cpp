// SPDX-License-Identifier: MIT
#include "headless/build/deform.h"

#include "headless/build/caches.h"
#include "headless/build/content_hash.h"
#include "headless/build/fingerprints.h"
#include "headless/build/object_roles.h"
#include "headless/geometry/deformers.h"
#include "headless/model/primitive_ids.h"

namespace headless {

namespace {

/// A deformer with the way to its space from that of the object to deform.
struct Action {
    const Object* deformer;
    Matrix toDeformer;
};

class ActionChain {
public:
    ActionChain(const Deformers& deformers, const Object* boundary)
        : deformers_(deformers), boundary_(boundary) {}

    /// Collects from `object` upwards. `toObject` leads from the mesh to that object's space.
    void collect(const Object& start, Matrix toObject, int depth) {
        for (const Object* object = &start; object && object != boundary_;
             object = object->parentOrCacheParent()) {
            if (const auto found = deformers_.find(object); found != deformers_.end()) {
                for (const Object* const deformer : found->second) {
                    actions.push_back({deformer, deformer->matrix.GetInverse() * toObject});
                }
            }
            collectAtOriginal(*object, toObject, depth);
            toObject = object->matrix * toObject;
        }
    }

    std::vector<Action> actions;

private:
    /// At the head of an instance's cache: what acts on the linked object in its own place.
    void collectAtOriginal(const Object& head, const Matrix& toHead, int depth) {
        const Object* const instance = head.parent() ? nullptr : head.cacheParent();
        const Object* const original = instance ? instanceTarget(*instance) : nullptr;
        if (original && original->parentOrCacheParent() && depth < maxCacheDepth) {
            collect(*original->parentOrCacheParent(), original->matrix * toHead, depth + 1);
        }
    }

    const Deformers& deformers_;
    const Object* boundary_;
};

geometry::DeformMode modeOf(const BaseContainer& data) {
    const int32_t mode = data.GetLong(DEFORM_MODE);
    return mode >= 0 && mode <= 2 ? static_cast<geometry::DeformMode>(mode) : geometry::DeformMode::Limited;
}

void act(const Action& action, std::span<Vector> points) {
    const BaseContainer& data = action.deformer->data;
    const Vector size = data.GetVector(DEFORM_SIZE);
    const double strength = static_cast<double>(data.GetReal(DEFORM_STRENGTH));
    const geometry::DeformMode mode = modeOf(data);
    switch (action.deformer->type()) {
    case Obend:
        geometry::bend(points, action.toDeformer,
                       {.size = size,
                        .strength = strength,
                        .direction = static_cast<double>(data.GetReal(DEFORM_BEND_DIRECTION)),
                        .mode = mode,
                        .keepAxisLength = data.GetBool(DEFORM_BEND_KEEP_LENGTH)});
        break;
    case Otwist:
        geometry::twist(points, action.toDeformer, {.size = size, .angle = strength, .mode = mode});
        break;
    case Otaper:
        geometry::taper(points, action.toDeformer,
                        {.size = size,
                         .strength = strength,
                         .curvature = static_cast<double>(data.GetReal(DEFORM_TAPER_CURVATURE)),
                         .mode = mode});
        break;
    default:
        geometry::bulge(points, action.toDeformer, {.size = size, .strength = strength, .mode = mode});
    }
}

uint64_t keyOf(const PolygonNode& mesh, const std::vector<Action>& actions) {
    ContentHash hash;
    hash.add(Fingerprints::ofObject(mesh));
    for (const Action& action : actions) {
        hash.add(Fingerprints::ofObject(*action.deformer));
        hash.addBits(action.toDeformer);
    }
    return hash.value();
}

} // namespace

void deform(PolygonNode& mesh, const Deformers& deformers, const Object* boundary) {
    ActionChain chain(deformers, boundary);
    chain.collect(mesh, Matrix(), 0);
    if (chain.actions.empty()) {
        mesh.setDeformCache(nullptr);
        return;
    }
    const uint64_t key = keyOf(mesh, chain.actions);
    Object* deformed = mesh.deformCache();
    if (!deformed || mesh.generated().deformKey != key) {
        std::unique_ptr<PolygonNode> made = clone(mesh, Owned::parts);
        made->matrix = Matrix();
        for (const Action& action : chain.actions) {
            act(action, made->points);
        }
        deformed = made.get();
        mesh.setDeformCache(std::move(made));
        mesh.generated().deformKey = key;
    }
    deformed->info = (deformed->info & ~BIT_CONTROLOBJECT) | (mesh.info & BIT_CONTROLOBJECT);
}

} // namespace headless
