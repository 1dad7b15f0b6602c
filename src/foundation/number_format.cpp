// SPDX-License-Identifier: MIT
#include "foundation/number_format.h"

#include <double-conversion/double-conversion.h>

namespace Quenza::NumberFormat {

namespace {

using double_conversion::DoubleToStringConverter;
using double_conversion::StringBuilder;

constexpr int DOUBLE_BUFFER = 128;
constexpr int FLOAT_BUFFER = 64;

const DoubleToStringConverter& converter() {
    static const DoubleToStringConverter instance(DoubleToStringConverter::NO_FLAGS, "Inf", "NaN", 'e', -6,
                                                  21, 0, 0);
    return instance;
}

/// Whole numbers below 2^53 have no shorter text than their digits: no other number lies within half a unit.
template <class Number>
bool writeWhole(char*& out, Number value, Number limit) {
    if (!(value > -limit && value < limit))
        return false;
    const i64 whole = static_cast<i64>(value);
    if (static_cast<Number>(whole) != value)
        return false;
    out = writeInteger(out, whole);
    return true;
}

/// The builder writes its terminating zero into the buffer when it ends, so it works on one of its own size.
template <int SIZE, class Convert>
char* writeShortest(char* out, const Convert& convert) {
    char buffer[SIZE];
    StringBuilder builder(buffer, SIZE);
    convert(builder);
    const int length = builder.position();
    for (int i = 0; i < length; ++i)
        out[i] = buffer[i];
    builder.Finalize();
    return out + length;
}

} // namespace

char* writeDouble(char* out, double value) {
    if (writeWhole(out, value, 9007199254740992.0))
        return out;
    return writeShortest<DOUBLE_BUFFER>(
        out, [value](StringBuilder& builder) { converter().ToShortest(value, &builder); });
}

char* writeFloat(char* out, float value) {
    if (writeWhole(out, value, 16777216.0f))
        return out;
    return writeShortest<FLOAT_BUFFER>(
        out, [value](StringBuilder& builder) { converter().ToShortestSingle(value, &builder); });
}

} // namespace Quenza::NumberFormat
