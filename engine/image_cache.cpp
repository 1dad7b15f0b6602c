// SPDX-License-Identifier: MIT
#include "engine/image_cache.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"

#include <algorithm>

namespace engine {

std::string ImageCache::resolve(const Quenza::String& path) const {
    const auto placed = [this](const Quenza::String& p) {
        return Quenza::PlatformUtils::isAbsolutePath(p) ? p : Quenza::FileUtils::join(folder_, p);
    };
    const Quenza::String plain = placed(path);
    std::string slashed = path.toStdString();
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    // On most systems a backslash is a letter that a name may hold.
    return (Quenza::FileUtils::fileExists(plain) ? plain : placed(slashed)).toStdString();
}

const ImageCache::Entry& ImageCache::find(const Quenza::String& path) {
    const std::string resolved = path.empty() ? std::string() : resolve(path);
    const auto [entry, added] = entries_.try_emplace(resolved);
    if (added && resolved.empty()) {
        entry->second.fault = "its path is empty";
    } else if (added) {
        entry->second.image = loadTexels(resolved, entry->second.fault);
    }
    return entry->second;
}

std::shared_ptr<const FloatImage> ImageCache::load(const Quenza::String& path) {
    const std::string resolved = resolve(path);
    std::string fault;
    std::shared_ptr<const FloatImage> image = loadImage(resolved, fault);
    if (!image) {
        notices_.tell("The image '" + resolved + "' can't be read (" + fault + ").");
    }
    return image;
}

} // namespace engine
