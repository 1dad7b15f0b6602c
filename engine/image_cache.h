// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"
#include "engine/notices.h"
#include "foundation/string.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace engine {

/// Images by their path, so that each is read once.
class ImageCache {
public:
    /// Relative paths start at `folder`.
    ImageCache(std::string folder, Notices& notices) : folder_(std::move(folder)), notices_(notices) {}

    struct Entry {
        std::shared_ptr<const TexelImage> image; ///< Null when it can't be read, for the reason in `fault`.
        std::string fault;
    };
    const Entry& find(const Quenza::String& path);

    /// An image of three channels. Null when it can't be read, of which the user is told.
    std::shared_ptr<const FloatImage> load(const Quenza::String& path);

    /// Where the file lies. Paths that were written on Windows serve too.
    std::string resolve(const Quenza::String& path) const;

private:
    std::string folder_;
    Notices& notices_;
    std::map<std::string, Entry> entries_;
};

} // namespace engine
