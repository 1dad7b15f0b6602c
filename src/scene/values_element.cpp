// SPDX-License-Identifier: MIT
#include "scene/values_element.h"

#include "foundation/number_format.h"
#include "scene/xml_elements.h"

namespace Quenza {

void writeValuesElement(OStream& stream, u32 depth, const Vector<double>& values) {
    String text = "<values>";
    char number[NumberFormat::MAX_CHARS];
    for (const double value : values) {
        const char* end = NumberFormat::writeDouble(number, value);
        text.append(number, u64(end - number));
        text += ' ';
    }
    text += "</values>\n";
    writeIndent(stream, depth);
    stream.writeString(text);
}

} // namespace Quenza
