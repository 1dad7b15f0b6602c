// SPDX-License-Identifier: MIT
#include "reading/xml_values.h"

#include "reading/xml_document.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <functional>
#include <string>

namespace Quenza::SceneParseUtils {
namespace {

using Reader = std::function<void(const TiXmlElement&)>;

/// The message of a reader that is given the element "p" around `content`.
std::string messageOf(const Reader& read, const std::string& content) {
    XMLDocument document;
    document.parseText("<p>" + content + "</p>", "text");
    return thrownMessage<SceneParseUtilsExcep>([&] { read(document.rootElement()); });
}

template <class Value>
void expectValue(Value (*read)(const TiXmlElement&, const char*), const std::string& text,
                 const Value& expected) {
    XMLDocument document;
    document.parseText("<p>\n<v>" + text + "</v></p>", "text");
    EXPECT_EQ(read(document.rootElement(), "v"), expected) << text;
}

TEST(XMLValues, AreReadToTheirEnd) {
    expectValue(parseInt, " -5\n", -5);
    expectValue(parseUInt, "4294967295", 4294967295u);
    expectValue(parseUInt64, "18446744073709551615", u64(18446744073709551615u));
    expectValue(parseFloat, "0.1", 0.1f);
    expectValue(parseDouble, "\t-1.5e3 ", -1500.0);
    expectValue(parseDouble, "1<!-- one -->.5<!-- half -->", 1.5);
    expectValue(parseDouble, "<![CDATA[ 2 ]]>", 2.0);
    expectValue(parseBool, "true", true);
    expectValue(parseBool, "false", false);
    expectValue(parseString, "Hel<!-- comment -->lo", std::string("Hello"));
    expectValue(parseString, "one <!-- two --> three", std::string("one three"));
    expectValue(parseString, "<![CDATA[ a  b ]]>", std::string(" a  b "));
    expectValue(parseString, "\n  two \t words\n", std::string("two words"));
    expectValue(parseString, "two&#x0A;lines", std::string("two\nlines"));
    expectValue(parseString, "a &lt;b&gt; &amp;&#x20AC;", std::string("a <b> &\xE2\x82\xAC"));
    expectValue(parseString, "", std::string());
    expectValue(parseVec2, "1\n2", Vec2d{1, 2});
    expectValue(parseVec3, " 1 <!-- , --> 2\t3 ", Vec3d{1, 2, 3});
    expectValue(parseMatrix2, "1 2 3 4", Matrix2d{{1, 2, 3, 4}});
    expectValue(parseMatrix3, "<matrix>1 2 3\n4 5 6\n7 8 9</matrix>", Matrix3d{{1, 2, 3, 4, 5, 6, 7, 8, 9}});
}

/// A reader of the child "v".
template <class Value>
Reader reader(Value (*read)(const TiXmlElement&, const char*)) {
    return [read](const TiXmlElement& parent) { read(parent, "v"); };
}

TEST(XMLValues, TellWhatIsWrongAndWhere) {
    const std::string in_v = "  (In element 'v', around line 2, column 1)";
    const struct {
        Reader read;
        const char* text;
        std::string message;
    } cases[] = {
        {reader(parseInt), "5 x", "Parse error while parsing integer from '5 x'"},
        {reader(parseInt), "5x", "Parse error while parsing integer from '5x'"},
        {reader(parseInt), "1.5", "Parse error while parsing integer from '1.5'"},
        {reader(parseInt), "x", "Failed to parse integer from 'x'"},
        {reader(parseInt), "", "Failed to parse integer from ''"},
        {reader(parseInt), "2147483648", "Failed to parse integer from '2147483648'"},
        {reader(parseInt), " x\n", "Failed to parse integer from 'x'"},
        {reader(parseUInt), "-1", "Failed to parse unsigned integer from '-1'"},
        {reader(parseUInt64), "1 2", "Parse error while parsing unsigned integer from '1 2'"},
        {reader(parseFloat), "1e39", "Failed to parse float from '1e39'"},
        {reader(parseDouble), "", "Failed to parse double from ''"},
        {reader(parseDouble), "NaN", "Failed to parse double from 'NaN'"},
        {reader(parseDouble), "Inf", "Failed to parse double from 'Inf'"},
        {reader(parseDouble), "1,5", "Parse error while parsing double from '1,5'"},
        {reader(parseVec2), "1", "Failed to parse Vec2 from '1'"},
        {reader(parseVec2), "1 2 3", "Parse error while parsing Vec2 from '1 2 3'"},
        {reader(parseVec3), "1 2", "Failed to parse Vec3 from '1 2'"},
        {reader(parseVec3), "1 2-3", "Failed to parse Vec3 from '1 2-3'"},
        {reader(parseVec3), "1 2 3 x", "Parse error while parsing Vec3 from '1 2 3 x'"},
        {reader(parseBool), "<![CDATA[true ]]>", "Invalid boolean value (Should be 'true' or 'false')."},
        {reader(parseBool), "true ", "Invalid boolean value (Should be 'true' or 'false')."},
        {reader(parseBool), "\tfalse", "Invalid boolean value (Should be 'true' or 'false')."},
        {reader(parseBool), "True", "Invalid boolean value (Should be 'true' or 'false')."},
        {reader(parseBool), "", "Invalid boolean value (Should be 'true' or 'false')."},
        {reader(parseMatrix2), "1 2 3", "syntax error while parsing Matrix2."},
        {reader(parseMatrix2), "1 2 3 4 5", "syntax error while parsing Matrix2."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(messageOf(c.read, std::string("\n<v>") + c.text + "</v>"), c.message + in_v);
    EXPECT_EQ(messageOf(reader(parseMatrix3), "<v>\n <matrix>1 2 3</matrix></v>"),
              "syntax error while parsing Matrix.  (In element 'matrix', around line 2, column 2)");
    EXPECT_EQ(messageOf(reader(parseMatrix3), "<v></v>"), "Internal Error.");
    EXPECT_EQ(messageOf(reader(parseInt), "<v>1<w/>2</v>"),
              "Found unexpected element 'w'  (In element 'w', around line 1, column 8)");
}

} // namespace
} // namespace Quenza::SceneParseUtils
