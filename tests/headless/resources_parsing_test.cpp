// SPDX-License-Identifier: MIT
// The three text formats on their own: values they give, and where and how they report a fault.

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "headless/resources/statement.h"
#include "headless/resources/string_table.h"
#include "headless/resources/symbol_table.h"

namespace headless::resources {
namespace {

/// The text of the error that `action` ends in, or "" when it succeeds.
std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ResourceError& error) {
        return error.what();
    }
    return "";
}

TEST(ResourceHeader, ValuesExplicitAndImplicit) {
    SymbolTable symbols;
    symbols.readHeader("\xEF\xBB\xBF#ifndef A_H // guard\r\n#define A_H\n"
                       "enum\n{\n  ZERO, /* one\n line */ ONE, HEX = 0x1F4, NEXT, // tail\n"
                       "  NEGATIVE = -2, AFTER, SAME = HEX, MASK = 0xFFFFFFFF, OCTAL = 010,\n};\n"
                       "enum Named { LAST = 2147483647 };\n#endif\n",
                       "a.h");
    const std::map<std::string, int32_t> values(symbols.all().begin(), symbols.all().end());
    EXPECT_EQ(values, (std::map<std::string, int32_t>{{"ZERO", 0},
                                                      {"ONE", 1},
                                                      {"HEX", 500},
                                                      {"NEXT", 501},
                                                      {"NEGATIVE", -2},
                                                      {"AFTER", -1},
                                                      {"SAME", 500},
                                                      {"MASK", -1},
                                                      {"OCTAL", 8},
                                                      {"LAST", 2147483647}}));
}

TEST(ResourceHeader, FaultsNamePlaceAndCure) {
    const std::map<std::string, std::string> cases = {
        {"enum { A = 1\n  B };", "a.h:2:3: expected ',' but found 'B'"},
        {"enum { A = 1.5 };",
         "a.h:1:12: '1.5' is no value; write a 32-bit whole number or the name of an earlier entry"},
        {"enum { A = LATER };",
         "a.h:1:12: 'LATER' is no value; write a 32-bit whole number or the name of an earlier entry"},
        {"enum { A = 2147483648 };",
         "a.h:1:12: '2147483648' is no value; write a 32-bit whole number or the name of an earlier entry"},
        {"enum { A = 2147483647, B };",
         "a.h:1:24: the number of 'B' is beyond 32 bits; give it a smaller one"},
        {"enum { A = 1, A = 2 };", "a.h:1:15: 'A' has another number already; choose another name"},
        {"enum { A", "a.h:1:9: expected ',' but found the end of the file"},
        {"int a;", "a.h:1:1: expected 'enum' but found 'int'; a resource header holds nothing else"},
        {"enum {} /* open", "a.h:1:9: this comment has no end; close it with '*/'"},
    };
    for (const auto& [text, message] : cases) {
        SymbolTable symbols;
        EXPECT_EQ(errorOf([&] { symbols.readHeader(text, "a.h"); }), message) << text;
    }
}

TEST(ResourceStrings, EscapesAndUnicode) {
    const auto texts = parseStringFile(
        "STRINGTABLE a // of a\n{ A \"one\\ntwo\\t\\\"\\\\\"; B \"m\\u00B2 \\u20AC \\uD83D\\uDE00\";\n"
        "  C \"gr\xC3\xBC\xC3\x9F // no comment\"; D \"\"; }",
        "a.str");
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_EQ(texts[0].text, "one\ntwo\t\"\\");
    EXPECT_EQ(texts[1].text, "m\xC2\xB2 \xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_EQ(texts[2].text, "gr\xC3\xBC\xC3\x9F // no comment");
    EXPECT_EQ(texts[3].text, "");
}

TEST(ResourceStrings, FaultsNamePlaceAndCure) {
    const std::string noEnd =
        "this text has no end; close it with '\"' on the same line, and write a line break as \\n";
    const std::string halfPair =
        "half a surrogate pair is no character; write both halves, the high one first";
    const std::map<std::string, std::string> cases = {
        {"", "a.str: is empty; it must hold STRINGTABLE { ... }"},
        {"TABLE { }", "a.str:1:1: expected STRINGTABLE { ... }"},
        {"STRINGTABLE { } STRINGTABLE { }", "a.str:1:17: a second statement; one file holds one STRINGTABLE"},
        {"STRINGTABLE { A \"x\n\"; }", "a.str:1:17: " + noEnd},
        {"STRINGTABLE { A \"x", "a.str:1:17: " + noEnd},
        {"STRINGTABLE { A \"\xC3\xBC\\q\"; }",
         "a.str:1:19: unknown escape; write a backslash itself as \\\\"},
        {"STRINGTABLE { A \"\\u12G4\"; }", "a.str:1:18: \\u takes four hexadecimal digits"},
        {"STRINGTABLE { A \"\\uD83D!\"; }", "a.str:1:18: " + halfPair},
        {"STRINGTABLE { A \"\\uDE00\\uD83D\"; }", "a.str:1:18: " + halfPair},
        {"STRINGTABLE { A \"\xFC\"; }", "a.str:1:18: this byte is not UTF-8; save the file as UTF-8"},
        {"STRINGTABLE { A \"\xED\xA0\x80\"; }", "a.str:1:18: this byte is not UTF-8; save the file as UTF-8"},
        {"STRINGTABLE {\n  A \"x\"\n  B \"y\";\n}",
         "a.str:2:3: expected a name, its text in double quotes and ';'"},
        {"STRINGTABLE { A \"x\"; A \"y\"; }", "a.str:1:22: 'A' has a text already; remove one of the two"},
        {"STRINGTABLE { A \"x\" }", "a.str:1:21: expected ';' but found '}'; end the statement before it"},
        {"STRINGTABLE { A \"x\";", "a.str:1:21: expected '}' but found the end of the file"},
        {"STRINGTABLE { } }", "a.str:1:17: this '}' closes nothing; remove it"},
        {"STRINGTABLE { \xE2\x82\xAC }", "a.str:1:15: unexpected character '\xE2\x82\xAC'; remove it"},
    };
    for (const auto& [text, message] : cases)
        EXPECT_EQ(errorOf([&] { parseStringFile(text, "a.str"); }), message) << text;
}

TEST(ResourceStrings, NumbersComeFromTheHeader) {
    SymbolTable symbols;
    symbols.readHeader("enum { A = 7, B = 9, C = 9 };", "a.h");
    StringTable table;
    table.read("STRINGTABLE { B \"b\"; A \"a\"; }", "a.str", symbols);
    EXPECT_EQ(table.all(), (std::map<int32_t, std::string>{{7, "a"}, {9, "b"}}));
    EXPECT_EQ(errorOf([&] { table.read("STRINGTABLE { X \"x\"; }", "b.str", symbols); }),
              "b.str:1:15: 'X' has no number; add it to c4d_symbols.h");
    EXPECT_EQ(errorOf([&] { table.read("STRINGTABLE { C \"c\"; }", "b.str", symbols); }),
              "b.str:1:15: the number of 'C' has a text already; give it a free one");
}

TEST(ResourceStatements, NestingIsBounded) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i)
            text += "G {";
        return text + std::string(static_cast<size_t>(depth), '}');
    };
    EXPECT_EQ(errorOf([&] { parseStatements(nested(maxStatementDepth), "a.res"); }), "");
    EXPECT_EQ(errorOf([&] { parseStatements(nested(maxStatementDepth + 1), "a.res"); }),
              "a.res:1:195: blocks lie more than 64 deep; flatten the groups");
    const std::string flood(500000, '{');
    EXPECT_EQ(errorOf([&] { parseStatements(flood, "a.res"); }),
              "a.res:1:65: blocks lie more than 64 deep; flatten the groups");
}

TEST(ResourceStatements, EveryTruncationEndsInAnErrorOrAValue) {
    const std::string text =
        "\xEF\xBB\xBF#if A\nenum E { A = -0x1F, B }; /* c */ // d\n"
        "STRINGTABLE t { S \"\xE2\x82\xAC\\u20AC\\uD83D\\uDE00\\n\"; R -1.5e-3; C~1 { } }";
    for (size_t length = 0; length <= text.size(); ++length) {
        // Its own allocation of this very size, so that a sanitizer sees a read past the end.
        const std::vector<char> bytes(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
        const std::string_view part(bytes.data(), bytes.size());
        SymbolTable symbols;
        EXPECT_NO_THROW({
            errorOf([&] { symbols.readHeader(part, "a.h"); });
            errorOf([&] { parseStatements(part, "a.res"); });
            errorOf([&] { parseStringFile(part, "a.str"); });
        }) << length;
    }
}

} // namespace
} // namespace headless::resources
