// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/ostream.h"
#include "scene/xml_write_options.h"

/// The exact text of the elements of a scene file. `depth` is the number of tabs before an element; every
/// element ends its line with a line feed. Numbers have the form of doubleToString.
namespace Quenza {

void writeIndent(OStream& stream, u32 depth);
void writeOpenTag(OStream& stream, u32 depth, const char* name);
void writeCloseTag(OStream& stream, u32 depth, const char* name);
/// "<name/>"
void writeEmptyElement(OStream& stream, u32 depth, const char* name);

/// "<name>value</name>" with the indent and the line feed around it.
void writeDoubleElement(OStream& stream, u32 depth, const char* name, double value);
void writeIntElement(OStream& stream, u32 depth, const char* name, i32 value);
void writeUIntElement(OStream& stream, u32 depth, const char* name, u32 value);
void writeBoolElement(OStream& stream, u32 depth, const char* name, bool value);

/// Plain text with XML escapes, or CDATA when the text has whitespace that a reader would condense: at its
/// ends, or two characters of it side by side.
void writeStringElement(OStream& stream, u32 depth, const char* name, const String& value);
/// The path as stored, or joined to the base path when the options ask for absolute paths.
void writePathElement(OStream& stream, u32 depth, const char* name, const String& path,
                      const XMLWriteOptions& options);

/// The numbers with one blank between; matrices row by row.
void writeVec2Element(OStream& stream, u32 depth, const char* name, const double value[2]);
void writeVec3Element(OStream& stream, u32 depth, const char* name, const double value[3]);
void writeVec4Element(OStream& stream, u32 depth, const char* name, const double value[4]);
void writeVec2Element(OStream& stream, u32 depth, const char* name, const Vec2d& value);
void writeVec3Element(OStream& stream, u32 depth, const char* name, const Vec3d& value);
void writeVec4Element(OStream& stream, u32 depth, const char* name, const Matrix2d& value);

/// A line of nine numbers without an element of its own.
void writeMatrixLine(OStream& stream, u32 depth, const Matrix3d& value);

} // namespace Quenza
