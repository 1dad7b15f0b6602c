// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "sdk/binding.h"

#include <array>
#include <cstdio>
#include <utility>

namespace engine::library {

/// The table of the operations of an interface. A position that nothing was put at holds a procedure that
/// says so and does nothing, whatever its arguments are.
template <const char* const& INTERFACE, Quenza::u32 SIZE>
class InterfaceTable {
public:
    InterfaceTable() : entries_(unknown(std::make_integer_sequence<Quenza::u32, SIZE>())) {}

    template <class Signature>
    InterfaceTable& set(const Quenza::SDK::Operation<Signature>& operation,
                        typename Quenza::SDK::Operation<Signature>::Type procedure) {
        entries_[operation.position] = reinterpret_cast<Quenza::SDK::Procedure>(procedure);
        return *this;
    }
    const Quenza::SDK::Procedure* entries() const { return entries_.data(); }

private:
    using Entries = std::array<Quenza::SDK::Procedure, SIZE>;

    template <Quenza::u32 POSITION>
    static void unknownOperation() {
        std::fprintf(stderr, "quenza library: %s has no operation at position %u.\n", INTERFACE, POSITION);
    }
    template <Quenza::u32... POSITIONS>
    static Entries unknown(std::integer_sequence<Quenza::u32, POSITIONS...>) {
        return {&unknownOperation<POSITIONS>...};
    }

    Entries entries_;
};

/// Destroys an object that was made by `new T`, as InterfaceBase::destroy.
template <class T>
void destroyObject(Quenza::SDK::InterfaceBase* object) {
    delete static_cast<T*>(object);
}

} // namespace engine::library
