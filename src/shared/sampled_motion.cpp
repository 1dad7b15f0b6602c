// SPDX-License-Identifier: MIT
#include "shared/sampled_motion.h"

#include "host/object.h"

#include <algorithm>

namespace {

void animate(BaseDocument* document, double frame) {
    constexpr int32_t FLAGS = 8;
    // As a fraction: a product with the length of a frame would drift as the frames go by.
    const BaseTime time(frame, double(document->GetFps()));
    for (BaseObject* object = document->GetFirstObject(); object; object = object->GetNext()) {
        document->AnimateObject(object, time, FLAGS);
    }
}

/// The next object of the document's tree, caches aside: first below, then beside, then above.
const BaseObject* nextInTree(const BaseObject* object) {
    if (const BaseObject* const child = object->GetDown()) {
        return child;
    }
    while (object && !object->GetNext()) {
        object = object->GetUp();
    }
    return object ? object->GetNext() : nullptr;
}

} // namespace

void SampledMotion::sample(BaseDocument* document, int32_t frame, const std::vector<double>& times) {
    const auto isKnown = [this](double time) { return samples_.contains(time); };
    if (std::all_of(times.begin(), times.end(), isKnown)) {
        return;
    }
    if (present_.empty()) {
        animate(document, frame);
        for (const BaseObject* o = document->GetFirstObject(); o; o = nextInTree(o)) {
            present_.push_back({o, o->GetMl()});
        }
    }
    for (const double time : times) {
        if (!isKnown(time)) {
            animate(document, time);
            samples_.emplace(time, findMoved(document));
        }
    }
    animate(document, frame);
}

SampledMotion::Moved SampledMotion::findMoved(BaseDocument* document) const {
    Moved moved;
    auto place = present_.begin();
    for (const BaseObject* o = document->GetFirstObject(); o; o = nextInTree(o), ++place) {
        const Matrix matrix = o->GetMl();
        if (!(matrix == place->matrix)) {
            moved.emplace(o, matrix);
        }
    }
    return moved;
}

Matrix SampledMotion::worldMatrix(const std::vector<BaseObject*>& chain, double time) const {
    const Moved& moved = samples_.at(time);
    Matrix product;
    for (const BaseObject* const object : chain) {
        const auto found = moved.find(object);
        product = product * (found != moved.end() ? found->second : object->GetMl());
    }
    return product;
}

void SampledMotion::clear() {
    present_ = {};
    samples_.clear();
}
