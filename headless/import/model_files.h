// SPDX-License-Identifier: MIT
#pragma once

#include <assimp/DefaultIOSystem.h>

namespace headless {

/// Files as Assimp reads them. Some of its readers never end on a file that is cut off: they ask again and
/// again for what isn't there. Here that ends in an exception, which Assimp turns into its error text.
class ModelFiles : public Assimp::DefaultIOSystem {
public:
    Assimp::IOStream* Open(const char* file, const char* mode) override;
};

} // namespace headless
