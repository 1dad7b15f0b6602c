// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/image_buffers.h"
#include "foundation/mutex.h"
#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "render/runtime/library_ref.h"
#include "render/runtime/quenza_context.h"
#include "scene/scene_node_root.h"
#include "sdk/render_buffer.h"

/// Makes display images of a render by the library. Runs are the library's; all else is locked in here.
class ToneMapper : public Quenza::ThreadSafeRefCounted {
public:
    /// `bytes` gets the display image once a run has finished, three bytes a pixel; `floats` may be empty.
    /// Throws QuenzaException with the library's reason.
    ToneMapper(const Quenza::Ref<QuenzaContext>& context, const Quenza::Ref<Quenza::RenderBuffer>& buffer,
               float gamma, const Quenza::Ref<Quenza::UInt8Buffer>& bytes,
               const Quenza::Ref<Quenza::FloatBuffer>& floats);

    /// Takes over what the root's tone mapping, camera and settings nodes say now, for the next run. Holds
    /// the root's mutex. False on failure, which getError tells.
    bool update(Quenza::SceneNodeRoot& root);
    /// Does nothing while a run is on.
    void start();
    /// True when no run is on.
    bool isFinished() const;
    /// Of the set-up, the last update or the last run; empty when all was well.
    Quenza::String getError() const;
    /// Calls `use(const UInt8Buffer&)` under the lock that keeps runs from starting. Only while isFinished().
    template <class Use>
    auto withImage(Use use) const {
        Quenza::Lock lock(mutex_);
        return use(*bytes_);
    }

private:
    mutable Quenza::Mutex mutex_;
    Quenza::Ref<QuenzaContext> context_;
    LibraryRef<> object_;
    Quenza::Ref<Quenza::RenderBuffer> buffer_;
    Quenza::Ref<Quenza::UInt8Buffer> bytes_;
    Quenza::Ref<Quenza::FloatBuffer> floats_;
    Quenza::String error_;
};
