// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "scene/ostream.h"
#include "scene/xml_write_options.h"

#include <string>

namespace Quenza {

/// The text that an object writes.
template <class Object>
std::string xmlText(Object& object, u32 depth = 0, const XMLWriteOptions& options = {}) {
    BufferOStream stream;
    if constexpr (requires { object.writeToXML(stream, depth, options); })
        object.writeToXML(stream, depth, options);
    else
        object.writeToXML(stream, depth);
    return stream.getBuffer().toStdString();
}

/// The same on one line, without what indents it.
template <class Object>
std::string xmlLine(Object& object) {
    std::string text = xmlText(object);
    std::erase_if(text, [](char c) { return c == '\t' || c == '\n'; });
    return text;
}

/// The message of the QuenzaException that `action` throws; "no exception" when it doesn't.
template <class Action>
std::string thrownText(Action&& action) {
    try {
        action();
    } catch (const QuenzaException& e) {
        return e.what();
    }
    return "no exception";
}

} // namespace Quenza
