// SPDX-License-Identifier: MIT
#include "engine/library/published_render.h"

#include "engine/library/live_render.h"
#include "foundation/mutex.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace engine::library {

using Quenza::RenderBuffer;

struct PublishedRender::Entry {
    std::mutex mutex;
    LiveRender* render = nullptr; ///< Null once it has gone.
};

namespace {

struct Table {
    std::mutex mutex;
    std::map<const RenderBuffer*, std::shared_ptr<PublishedRender::Entry>> entries;
};

Table& table() {
    static Table the_table;
    return the_table;
}

std::shared_ptr<PublishedRender::Entry> find(const RenderBuffer& buffer) {
    const std::lock_guard lock(table().mutex);
    const auto found = table().entries.find(&buffer);
    return found != table().entries.end() ? found->second : nullptr;
}

std::vector<FloatImage> copyLayers(RenderBuffer& buffer) {
    const Quenza::Lock lock(buffer.mutex);
    std::vector<FloatImage> layers;
    for (const Quenza::Image& layer : buffer.layers) {
        FloatImage& image = layers.emplace_back(layer.getWidth(), layer.getHeight());
        std::copy(layer.pixels().begin(), layer.pixels().end(), image.rgb.begin());
    }
    return layers;
}

} // namespace

PublishedRender::PublishedRender(const RenderBuffer& buffer, LiveRender& render)
    : buffer_(&buffer), entry_(std::make_shared<Entry>()) {
    entry_->render = &render;
    const std::lock_guard lock(table().mutex);
    table().entries[buffer_] = entry_;
}

PublishedRender::~PublishedRender() {
    {
        const std::lock_guard lock(table().mutex);
        const auto found = table().entries.find(buffer_);
        if (found != table().entries.end() && found->second == entry_) {
            table().entries.erase(found);
        }
    }
    const std::lock_guard lock(entry_->mutex);
    entry_->render = nullptr;
}

Snapshot takeSnapshot(RenderBuffer& buffer) {
    if (const auto entry = find(buffer)) {
        const std::lock_guard lock(entry->mutex);
        if (entry->render) {
            return entry->render->publish();
        }
    }
    return {copyLayers(buffer), -1};
}

void informUserOf(const RenderBuffer& buffer, const std::string& text) {
    if (const auto entry = find(buffer)) {
        const std::lock_guard lock(entry->mutex);
        if (entry->render) {
            entry->render->informOnce(text);
        }
    }
}

} // namespace engine::library
