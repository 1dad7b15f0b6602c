// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/mutex.h"
#include "foundation/types.h"

#include <utility>

namespace Quenza {

/// Base of shared objects that stay within one thread. A copy of an object starts with no users.
class RefCounted {
public:
    RefCounted() = default;
    RefCounted(const RefCounted&) {}
    RefCounted& operator=(const RefCounted&) { return *this; }
    virtual ~RefCounted() = default;

    void incRefCount() const { ++ref_count; }
    /// Returns the count that is left.
    u32 decRefCount() const { return --ref_count; }
    u32 getRefCount() const { return ref_count; }

private:
    mutable u32 ref_count = 0;
};

/// Base of shared objects that several threads may hold. The mutex guards the count and nothing else.
class ThreadSafeRefCounted {
public:
    ThreadSafeRefCounted() = default;
    ThreadSafeRefCounted(const ThreadSafeRefCounted&) = delete;
    ThreadSafeRefCounted& operator=(const ThreadSafeRefCounted&) = delete;
    virtual ~ThreadSafeRefCounted() = default;

    void incRefCount() const {
        Lock lock(ref_count_mutex);
        ++ref_count;
    }
    /// Returns the count that is left, as it was read under the lock.
    u32 decRefCount() const {
        Lock lock(ref_count_mutex);
        return --ref_count;
    }
    u32 getRefCount() const {
        Lock lock(ref_count_mutex);
        return ref_count;
    }

private:
    mutable Mutex ref_count_mutex;
    mutable u32 ref_count = 0;
};

/// Delete an object that nobody holds any more.
void deleteUnused(const RefCounted* object);
void deleteUnused(const ThreadSafeRefCounted* object);

/// Intrusive handle of objects derived from RefCounted or ThreadSafeRefCounted; may be null. The last handle
/// to go deletes the object.
template <class T>
class Ref {
public:
    Ref() = default;
    Ref(T* object) : object_(object) { retain(); }
    Ref(const Ref& other) : object_(other.object_) { retain(); }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    Ref(const Ref<U>& other) : object_(other.getPointer()) {
        retain();
    }
    ~Ref() { release(object_); }

    Ref& operator=(const Ref& other) { return *this = other.object_; }
    Ref& operator=(Ref&& other) noexcept {
        if (this != &other)
            release(std::exchange(object_, std::exchange(other.object_, nullptr)));
        return *this;
    }
    /// Retains the new object before it lets go of the old one, so assigning an object to itself is safe.
    Ref& operator=(T* object) {
        T* old = object_;
        object_ = object;
        retain();
        release(old);
        return *this;
    }

    T* getPointer() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    bool nonNull() const { return object_ != nullptr; }
    bool isNull() const { return object_ == nullptr; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    void retain() const {
        if (object_)
            object_->incRefCount();
    }
    static void release(T* object) {
        if (object && object->decRefCount() == 0)
            deleteUnused(object);
    }

    T* object_ = nullptr;
};

template <class T, class U>
bool operator==(const Ref<T>& a, const Ref<U>& b) {
    return a.getPointer() == b.getPointer();
}

template <class T, class U>
bool operator==(const Ref<T>& a, const U* b) {
    return a.getPointer() == b;
}

template <class T>
bool operator==(const Ref<T>& a, std::nullptr_t) {
    return a.isNull();
}

} // namespace Quenza
