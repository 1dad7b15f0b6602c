// SPDX-License-Identifier: MIT
#pragma once

#include <new>

/// A static object whose destructor never runs: at the end of a process Windows would run it under the
/// loader's lock, with the other threads gone, whatever they held. Lies in static memory, so that it goes
/// with a library that is unloaded.
template <class T>
class NeverDestroyed {
public:
    NeverDestroyed() { new (bytes_) T(); }
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    T& get() { return *std::launder(reinterpret_cast<T*>(bytes_)); }

private:
    alignas(T) unsigned char bytes_[sizeof(T)];
};
