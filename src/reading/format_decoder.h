// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/string.h"
#include "scene/mesh.h"

namespace Quenza {

/// What is wrong with a model, or with its file.
class ModelLoaderExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// Reads the files of one format. Decoders keep nothing from file to file.
class FormatDecoder {
public:
    FormatDecoder() = default;
    FormatDecoder(const FormatDecoder&) = delete;
    FormatDecoder& operator=(const FormatDecoder&) = delete;
    virtual ~FormatDecoder() = default;

    /// In lower case, without the dot.
    virtual String getExtension() const = 0;

    /// Fills a new mesh, its positions multiplied by `scale`, and ends it with endOfModel. Throws a
    /// MessageExcep or std::bad_alloc, and the mesh is then to be dropped.
    virtual void streamModel(const String& path, Mesh& mesh, double scale) = 0;
};

} // namespace Quenza
