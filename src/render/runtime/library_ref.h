// SPDX-License-Identifier: MIT
#pragma once

#include "sdk/binding.h"

#include <atomic>
#include <utility>

/// Handle of an object of the run-time library, which counts itself and is destroyed by the library's own
/// procedure. May be null.
template <class T = Quenza::SDK::InterfaceBase>
class LibraryRef {
public:
    LibraryRef() = default;
    /// Takes over the count that the library gave with the object.
    static LibraryRef adopt(T* object) {
        LibraryRef made;
        made.object_ = object;
        return made;
    }
    LibraryRef(const LibraryRef& other) : object_(other.object_) {
        if (object_) {
            std::atomic_ref<Quenza::i32>(object_->ref_count).fetch_add(1);
        }
    }
    LibraryRef(LibraryRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    LibraryRef& operator=(LibraryRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~LibraryRef() {
        if (object_ && std::atomic_ref<Quenza::i32>(object_->ref_count).fetch_sub(1) == 1) {
            object_->destroy(object_);
        }
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};
