// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"

#include <exception>
#include <string>

namespace Quenza {

/// An exception that is nothing but a text. The base of this library's exceptions, thrown only as one of
/// them.
class MessageExcep : public std::exception {
public:
    explicit MessageExcep(const String& message) : message_(message), text_(message.toStdString()) {}

    const String& message() const { return message_; }
    const char* what() const noexcept override { return text_.c_str(); }

private:
    String message_;
    std::string text_;
};

/// The one exception of the scene library's interfaces.
class QuenzaException : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

} // namespace Quenza
