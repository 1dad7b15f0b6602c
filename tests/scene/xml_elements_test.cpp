// SPDX-License-Identifier: MIT
#include "scene/xml_elements.h"

#include "foundation/platform.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Quenza {
namespace {

template <class... Arguments>
std::string written(void (*write)(OStream&, u32, const char*, Arguments...), u32 depth, const char* name,
                    std::type_identity_t<Arguments>... arguments) {
    BufferOStream stream;
    write(stream, depth, name, arguments...);
    return stream.getBuffer().toStdString();
}

std::string stringContent(const String& value) {
    const std::string text = written<const String&>(writeStringElement, 0, "s", value);
    EXPECT_EQ(text.substr(0, 3), "<s>");
    EXPECT_EQ(text.substr(text.size() - 5), "</s>\n");
    return text.substr(3, text.size() - 8);
}

TEST(XMLElementsTest, WritesNumbersInOneLine) {
    EXPECT_EQ(written<double>(writeDoubleElement, 2, "radius", 0.5), "\t\t<radius>0.5</radius>\n");
    EXPECT_EQ(written<double>(writeDoubleElement, 0, "d", -0.0), "<d>0</d>\n");
    EXPECT_EQ(written<double>(writeDoubleElement, 0, "d", std::nan("")), "<d>NaN</d>\n");
    EXPECT_EQ(written<i32>(writeIntElement, 0, "i", std::numeric_limits<i32>::min()), "<i>-2147483648</i>\n");
    EXPECT_EQ(written<u32>(writeUIntElement, 0, "u", 4294967295u), "<u>4294967295</u>\n");
    EXPECT_EQ(written<bool>(writeBoolElement, 0, "b", true), "<b>true</b>\n");
    EXPECT_EQ(written<bool>(writeBoolElement, 1, "b", false), "\t<b>false</b>\n");
    const double values[4] = {1, -2.5, 1e21, 1e-7};
    EXPECT_EQ(written<const double*>(writeVec2Element, 1, "v", values), "\t<v>1 -2.5</v>\n");
    EXPECT_EQ(written<const double*>(writeVec3Element, 0, "v", values), "<v>1 -2.5 1e21</v>\n");
    EXPECT_EQ(written<const double*>(writeVec4Element, 0, "v", values), "<v>1 -2.5 1e21 1e-7</v>\n");
    EXPECT_EQ(written<const Matrix2d&>(writeVec4Element, 0, "m", Matrix2d{{1, 2, 3, 4}}), "<m>1 2 3 4</m>\n");
    const double longest = -3.3333333333333333e-6;
    EXPECT_EQ(written<const Vec3d&>(writeVec3Element, 0, "v", Vec3d{longest, longest, longest}),
              "<v>-0.0000033333333333333333 -0.0000033333333333333333 -0.0000033333333333333333</v>\n");
}

TEST(XMLElementsTest, ChoosesBetweenEscapesAndCDATA) {
    const struct {
        std::string value;
        std::string content;
    } cases[] = {
        {"", ""},
        {"a b", "a b"},
        {"a  b", "<![CDATA[a  b]]>"},
        {" a", "<![CDATA[ a]]>"},
        {"a\n", "<![CDATA[a\n]]>"},
        {" ", "<![CDATA[ ]]>"},
        {"a\t\rb", "<![CDATA[a\t\rb]]>"},
        {"<  ]]> &", "<![CDATA[<  ]]> &]]>"},
        {"a<b>c", "a&lt;b&gt;c"},
        {"\"q\" 'p'", "&quot;q&quot; &apos;p&apos;"},
        {"AT&T", "AT&amp;T"},
        {"AT&amp;T", "AT&amp;amp;T"},
        {"&#x41;&#x42; &", "&#x41;&#x42; &amp;"},
        {"&#65;", "&amp;#65;"},
        {"x&#x", "x&#x"},
        {"a\tb\x01\x1F", "a&#x09;b&#x01;&#x1F;"},
        {"a\vb", "a&#x0B;b"},
        {"\xC3\xA4\x7F\xFF", "\xC3\xA4\x7F\xFF"},
        {std::string("a\0b", 3), "a&#x00;b"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(stringContent(c.value), c.content) << c.value;
}

TEST(XMLElementsTest, JoinsPathsToTheBaseOnDemand) {
    const std::string separator(1, PlatformUtils::SEPARATOR);
    const struct {
        bool absolute;
        std::string base, path, content;
    } cases[] = {
        {false, "base", "tex.png", "tex.png"},
        {true, "base", "tex.png", "base" + separator + "tex.png"},
        {true, "base", "", ""},
        {true, "", "tex.png", "tex.png"},
        {true, "base", separator + "abs.png", separator + "abs.png"},
        {true, "my  base", "a&b", "<![CDATA[my  base" + separator + "a&b]]>"},
    };
    for (const auto& c : cases) {
        XMLWriteOptions options;
        options.base_path = c.base;
        options.write_absolute_paths = c.absolute;
        EXPECT_EQ(
            (written<const String&, const XMLWriteOptions&>(writePathElement, 1, "path", c.path, options)),
            "\t<path>" + c.content + "</path>\n");
    }
}

TEST(OStreamTest, WritesTextsOfAllSizesInOrder) {
    const TempDir dir;
    OFStream file(dir / "f");
    std::string expected;
    for (const u64 size : {1u, 1000u, 262143u, 262144u, 262145u, 5u, 0u, 1000000u, 3u}) {
        const std::string text(size, char('a' + size % 26));
        expected += text;
        file.writeString(text);
    }
    EXPECT_TRUE(file.commit());
    EXPECT_EQ(fileBytes(dir / "f"), expected);
}

TEST(OStreamTest, LosesTextSilentlyAndTellsAtTheEnd) {
    const TempDir dir;
    OFStream unopened(dir / "missing/f");
    unopened.writeString(String(1000000, 'x'));
    unopened.writeDouble(1);
    EXPECT_FALSE(unopened.commit());
    EXPECT_EQ(unopened.failureReason(), noSuchFolder());
    {
        OFStream uncommitted(dir / "f");
        uncommitted.writeString("half");
    }
    EXPECT_FALSE(exists(dir / "f"));
    EXPECT_FALSE(exists(dir / "f.partial"));
}

} // namespace
} // namespace Quenza
