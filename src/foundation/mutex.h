// SPDX-License-Identifier: MIT
#pragma once

#ifndef _WIN32
#include <mutex>
#endif

namespace Quenza {

/// One critical section of the platform; the thread that holds it may lock it again.
class Mutex {
public:
#ifdef _WIN32
    Mutex() noexcept;
    ~Mutex();
#else
    Mutex() = default;
#endif
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock();
    /// Takes it when no other thread holds it; false leaves it to the other.
    bool tryLock();
    void unlock();

private:
#ifdef _WIN32
    // Room for a CRITICAL_SECTION, which the system's header would define with much else. The recursive mutex
    // of MinGW's library never gives back what it allocates, and every node of a scene has one.
    alignas(void*) unsigned char section_[40];
#else
    std::recursive_mutex section_;
#endif
};

#ifndef _WIN32
inline void Mutex::lock() {
    section_.lock();
}

inline bool Mutex::tryLock() {
    return section_.try_lock();
}

inline void Mutex::unlock() {
    section_.unlock();
}
#endif

/// Holds a mutex for the length of a scope.
class Lock {
public:
    explicit Lock(Mutex& mutex) : mutex_(mutex) { mutex_.lock(); }
    ~Lock() { mutex_.unlock(); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    Mutex& mutex_;
};

/// Holds a mutex for the length of a scope, unless another thread does.
class TryLock {
public:
    explicit TryLock(Mutex& mutex) : mutex_(mutex), isHeld_(mutex.tryLock()) {}
    ~TryLock() {
        if (isHeld_) {
            mutex_.unlock();
        }
    }
    TryLock(const TryLock&) = delete;
    TryLock& operator=(const TryLock&) = delete;

    bool isHeld() const { return isHeld_; }

private:
    Mutex& mutex_;
    const bool isHeld_;
};

} // namespace Quenza
