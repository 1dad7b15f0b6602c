// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/types.h"
#include "foundation/vec.h"

#include <initializer_list>
#include <span>
#include <string>

class TiXmlElement;
class TiXmlNode;

/// Values of XML elements. All functions throw SceneParseUtilsExcep with the place of the fault.
///
/// A value is the text of the child `name` of `parent`; where the child is missing the plain readers throw
/// and the `parseOptional...` readers return the default. Infinities and NaN are no numbers here, though the
/// writer has texts for them: no field of a scene has a use for one, and they slip through every range check.
namespace Quenza::SceneParseUtils {

class SceneParseUtilsExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// "  (In element 'mesh', around line 3, column 7)"; lines and columns count from 1.
std::string errorContext(const TiXmlNode& element);

i32 parseInt(const TiXmlElement& parent, const char* name);
u32 parseUInt(const TiXmlElement& parent, const char* name);
u64 parseUInt64(const TiXmlElement& parent, const char* name);
float parseFloat(const TiXmlElement& parent, const char* name);
double parseDouble(const TiXmlElement& parent, const char* name);
/// Exactly "true" or "false", without white space around it.
bool parseBool(const TiXmlElement& parent, const char* name);
/// "" for an element without text.
std::string parseString(const TiXmlElement& parent, const char* name);
/// Numbers with white space between.
Vec2d parseVec2(const TiXmlElement& parent, const char* name);
Vec3d parseVec3(const TiXmlElement& parent, const char* name);
/// Four numbers, row by row.
Matrix2d parseMatrix2(const TiXmlElement& parent, const char* name);
/// The child `name` holds a `matrix` of nine numbers, row by row, or an `axis_rotation` with `axis` and
/// `angle` in radians.
Matrix3d parseMatrix3(const TiXmlElement& parent, const char* name);

i32 parseOptionalInt(const TiXmlElement& parent, const char* name, i32 default_value);
u32 parseOptionalUInt(const TiXmlElement& parent, const char* name, u32 default_value);
u64 parseOptionalUInt64(const TiXmlElement& parent, const char* name, u64 default_value);
float parseOptionalFloat(const TiXmlElement& parent, const char* name, float default_value);
double parseOptionalDouble(const TiXmlElement& parent, const char* name, double default_value);
bool parseOptionalBool(const TiXmlElement& parent, const char* name, bool default_value);
std::string parseOptionalString(const TiXmlElement& parent, const char* name,
                                const std::string& default_value);
Vec2d parseOptionalVec2(const TiXmlElement& parent, const char* name, const Vec2d& default_value);
Vec3d parseOptionalVec3(const TiXmlElement& parent, const char* name, const Vec3d& default_value);
Matrix2d parseOptionalMatrix2(const TiXmlElement& parent, const char* name, const Matrix2d& default_value);
Matrix3d parseOptionalMatrix3(const TiXmlElement& parent, const char* name, const Matrix3d& default_value);

/// The same for an element that is at hand already, in lists and in loops over children.
i32 parseIntText(const TiXmlElement& element);
u32 parseUIntText(const TiXmlElement& element);
u64 parseUInt64Text(const TiXmlElement& element);
float parseFloatText(const TiXmlElement& element);
double parseDoubleText(const TiXmlElement& element);
bool parseBoolText(const TiXmlElement& element);
Vec2d parseVec2Text(const TiXmlElement& element);
Vec3d parseVec3Text(const TiXmlElement& element);
Matrix2d parseMatrix2Text(const TiXmlElement& element);
/// Nine numbers, the text of a `matrix` element.
Matrix3d parseMatrix3Text(const TiXmlElement& element);
/// From an element with a child `matrix` or `axis_rotation`.
Matrix3d parseMatrix3Of(const TiXmlElement& holder);

/// All text of the element joined, whatever comments stand between; "" without text. White space around the
/// text is dropped and several side by side are one blank, but in CDATA. Child elements throw.
std::string elementText(const TiXmlElement& element);

/// The first child element of that name.
const TiXmlElement& childElement(const TiXmlElement& parent, const char* name);
/// Null when there is none.
const TiXmlElement* optionalChildElement(const TiXmlElement& parent, const char* name);
/// The first child element that has one of the names; null when there is none.
const TiXmlElement* firstChildOf(const TiXmlElement& parent, std::initializer_list<const char*> names);
/// The child element that has one of the names; none and a second one throw. Other children don't matter.
const TiXmlElement& checkOnlyOneOf(const TiXmlElement& parent, std::span<const char* const> names);

/// Every child element must have one of the names.
void checkChildrenAreIn(const TiXmlElement& parent, std::span<const char* const> names);
/// Each name once at most.
void checkChildrenAreInOnce(const TiXmlElement& parent, std::span<const char* const> names);

} // namespace Quenza::SceneParseUtils
