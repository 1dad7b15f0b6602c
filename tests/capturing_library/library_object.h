// SPDX-License-Identifier: MIT
#pragma once

#include "capturing_library/capture_state.h"
#include "sdk/binding.h"

#include <array>
#include <atomic>
#include <string>
#include <thread>
#include <type_traits>

namespace capture {

/// Enters a function at an operation's position; its signature is checked against the binding's.
template <class Result, class... Arguments>
void put(Quenza::SDK::Procedure* table, const Quenza::SDK::Operation<Result(Arguments...)>& operation,
         std::type_identity_t<Result (*)(Quenza::SDK::InterfaceBase*, Arguments...)> function) {
    table[operation.position] = reinterpret_cast<Quenza::SDK::Procedure>(function);
}

/// Base of the objects that callers see. `Object` has a TABLE and an INTERFACE name.
template <class Object>
class LibraryObject : public Quenza::SDK::InterfaceBase {
public:
    LibraryObject() {
        table = Object::operations();
        destroy = [](Quenza::SDK::InterfaceBase* object) {
            captureState().record(std::string(Object::INTERFACE) + ".destroy");
            delete static_cast<Object*>(object);
        };
        captureState().objectMade();
    }
    ~LibraryObject() { captureState().objectGone(); }
    LibraryObject(const LibraryObject&) = delete;
    LibraryObject& operator=(const LibraryObject&) = delete;

    static Object& of(Quenza::SDK::InterfaceBase* object) { return *static_cast<Object*>(object); }

    std::atomic<std::thread::id> user{};
};

/// One operation of an object: records it, and that no other thread is inside one.
template <class Object>
class Entry {
public:
    Entry(Quenza::SDK::InterfaceBase* object, const char* operation)
        : name(std::string(Object::INTERFACE) + "." + operation), object_(Object::of(object)) {
        captureState().record(name);
        std::thread::id nobody;
        if (!object_.user.compare_exchange_strong(nobody, std::this_thread::get_id())) {
            captureState().violation(name + " while another thread is in an operation");
        } else {
            entered_ = true;
        }
    }
    ~Entry() {
        if (entered_) {
            object_.user = std::thread::id();
        }
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    Object* operator->() const { return &object_; }

    const std::string name;

private:
    Object& object_;
    bool entered_ = false;
};

/// New objects, counted once for the caller.
Quenza::SDK::InterfaceBase* makeRenderer();
Quenza::SDK::InterfaceBase* makeToneMapper();
Quenza::SDK::InterfaceBase* makeHardwareInfo();

} // namespace capture
