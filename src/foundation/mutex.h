// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

namespace Quenza {

/// One critical section of the platform; the thread that holds it may lock it again.
class Mutex {
public:
    Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock() { section_.lock(); }
    /// Takes it when no other thread holds it; false leaves it to the other.
    bool tryLock() { return section_.try_lock(); }
    void unlock() { section_.unlock(); }

private:
    std::recursive_mutex section_;
};

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
