// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace headless {

/// Tells the user that something of the document was left out. Any thread.
void warn(const std::string& text);
/// As `warn`, of a texture that a shader can't show.
void warnOfTexture(const std::string& text);
/// Warns of an image that the plug-in wants written and that can't be. Any thread.
void warnOfLostImage(const std::string& file);
/// How many of these warnings there have been.
size_t lostImages();
/// Holds single warnings of textures back while it lives, for someone who tells of them together.
class TextureWarningsHeld {
public:
    TextureWarningsHeld();
    TextureWarningsHeld(const TextureWarningsHeld&) = delete;
    TextureWarningsHeld& operator=(const TextureWarningsHeld&) = delete;
    ~TextureWarningsHeld();
};

/// Where warnings go, line by line; standard error until one is set, and again with an empty sink.
void setWarningSink(std::function<void(const std::string&)> sink);

} // namespace headless
