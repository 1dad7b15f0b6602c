// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/thread.h"
#include "materials/bake_channels.h"

#include <atomic>
#include <memory>

class BaseBitmap;
class BaseDocument;
class BaseMaterial;
class BaseShader;
class TextureTag;
class UVWTag;

/// Bakes the channels of a material as one object shows them, each into a file of its own. The document must
/// be kept from other changes while the thread runs.
class BakeThread : public C4DThread {
public:
    /// `settings` are the host's BakeSetting numbers and those of bake_channels.h. `tag` carries the material
    /// on the object that `uvw` belongs to.
    BakeThread(BaseDocument* document, TextureTag* tag, UVWTag* uvw, BaseMaterial* material,
               const BaseContainer& settings)
        : document_(document), tag_(tag), uvw_(uvw), material_(material), settings_(settings) {}
    ~BakeThread() override { End(true); }

    void Main() override;
    /// What the thread is at, for the artist.
    const char* GetThreadName() override { return progress_; }

    /// The file of a channel that was baked, by its place in BAKE_CHANNELS; empty for others. For callers
    /// that have seen the thread end.
    const Filename& getFile(size_t index) const { return files_[index]; }

private:
    Filename fileOf(const Channel& channel) const;
    bool bakeChannel(BaseMaterial* stage, const Channel& channel, const Filename& file);
    bool render(const Filename& file, int32_t saveFlags);

    BaseDocument* document_;
    TextureTag* tag_;
    UVWTag* uvw_;
    BaseMaterial* material_;
    const BaseContainer settings_;
    std::atomic<const char*> progress_{"Baking..."};
    std::array<Filename, BAKE_CHANNELS.size()> files_;
};
