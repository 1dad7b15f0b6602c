// SPDX-License-Identifier: MIT
// Descriptions read from folders that the tests write.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "headless/resources/resource_folder.h"
#include "support/temp_dir.h"

namespace headless::resources {
namespace {

namespace fs = std::filesystem;

/// A resource folder that lives as long as the test.
class TestFolder {
public:
    void write(const std::string& name, const std::string& text) const {
        fs::create_directories((root() / name).parent_path());
        Quenza::writeBytes(dir_ / name, text);
    }

    /// Writes the three files of a description. `entries` goes into the enum, `body` into the container.
    void writeDescription(const std::string& name, const std::string& entries, const std::string& body,
                          const std::string& labels = "") const {
        write("description/" + name + ".h", "enum {" + entries + "};");
        write("description/" + name + ".res", "CONTAINER " + name + "\n{\n" + body + "\n}\n");
        write("strings_us/description/" + name + ".str", "STRINGTABLE " + name + " {" + labels + "}");
    }

    fs::path root() const { return dir_.path().toStdString(); }

    /// An error text with the folder's own path taken out.
    std::string relative(std::string text) const {
        const std::string prefix = root().generic_string() + "/";
        for (size_t at = text.find(prefix); at != std::string::npos; at = text.find(prefix))
            text.erase(at, prefix.size());
        return text;
    }

    std::string errorOf(const std::string& description) const {
        return relative(ResourceFolder(root()).loadDescription(description).error);
    }

private:
    const Quenza::TempDir dir_;
};

TEST(DescriptionFile, FaultsNamePlaceAndCure) {
    struct Case {
        const char* body;
        const char* message;
    };
    const Case cases[] = {
        {"BOOL C { }", "3:6: 'C' has no number; add it to Tx.h"},
        {"BOOL ZERO { }", "3:6: the number of 'ZERO' is 0; entries have numbers above 0"},
        {"BOOL { }", "3:1: BOOL needs a name; only groups, separators and static texts go without"},
        {"BOOL A { }\n BOOL A { }", "4:2: the number 10 of 'A' belongs to 'A' already; give it a free one"},
        {"BOOL A { }\n GROUP A { }", "4:2: the number 10 of 'A' belongs to 'A' already; give it a free one"},
        {"BOOL A { DEFAULT 2; }", "3:18: the default of BOOL is 0 or 1"},
        {"LONG A { DEFAULT 1.5; }", "3:18: '1.5' is no whole number and no name of the header"},
        {"LONG A { DEFAULT \"3\"; }", "3:18: the text \"3\" is no whole number and no name of the header"},
        {"REAL A { MAX 1e999; }", "3:14: '1e999' is no number and no name of the header"},
        {"REAL A { DEFAULT 1 MIN 0; }", "3:10: DEFAULT takes exactly one value and a ';' behind it"},
        {"COLOR A { DEFAULT 1 1; }", "3:11: the default of COLOR is three numbers"},
        {"LINK A { DEFAULT 1; }", "3:10: LINK takes no default; remove it"},
        {"LONG A { CYCLE { C; } }", "3:18: 'C' has no number; add it to the header of the description"},
        {"LONG A { CYCLE { A; A; } }",
         "3:21: the value of 'A' is in this cycle already; give it its own number"},
        {"REAL A { MIN 0 }", "3:16: expected ';' but found '}'; end the statement before it"},
        {"GROUP { BOOL A { ", "5:1: expected '}' but found the end of the file"},
        {"BOOL A B { }", "3:1: BOOL takes one name; put a ';' or a block in braces behind it"},
        {"\"text\" { }", "3:1: expected an element, such as BOOL, with its name and a block in braces"},
        {"HIDE A;", "3:1: HIDE takes the name of an entry that stands above it"},
        {"INCLUDE Tx;", "3:1: 'Tx' is included already, by itself or by another; remove this line"},
        {"INCLUDE Tnone;", "3:1: there is no description 'Tnone', neither here nor among the host's own"},
    };
    for (const Case& fault : cases) {
        const TestFolder files;
        files.writeDescription("Tx", "ZERO, A = 10", fault.body);
        EXPECT_EQ(files.errorOf("Tx"), std::string("description/Tx.res:") + fault.message) << fault.body;
    }
}

TEST(DescriptionFile, FaultsOfTheFilesBesideIt) {
    const TestFolder files;
    files.writeDescription("Tx", "A = 10", "BOOL A { }", "A \"a\"; B \"b\";");
    EXPECT_EQ(files.errorOf("Tx"),
              "strings_us/description/Tx.str:1:24: 'B' is not in Tx.h; correct the name or add it there");
    files.write("description/Ty.res", "CONTAINER Tz { }");
    EXPECT_EQ(files.errorOf("Ty"),
              "description/Ty.h: there is no such file; every description has a .res, a .h and a .str file");
    files.write("description/Ty.h", "");
    files.write("strings_us/description/Ty.str", "STRINGTABLE Ty { }");
    EXPECT_EQ(files.errorOf("Ty"),
              "description/Ty.res:1:11: the container is called 'Tz'; give it the name of its file");
    files.write("description/Ty.res", std::string((1u << 20) + 1, ' '));
    EXPECT_EQ(files.errorOf("Ty"),
              "description/Ty.res: is larger than 1 MiB, which no resource file is; check what it holds");
}

TEST(DescriptionFile, IncludeCyclesAndChainsAreBounded) {
    const TestFolder files;
    files.writeDescription("Ta", "", "INCLUDE Tb;");
    files.writeDescription("Tb", "", "INCLUDE Ta;");
    EXPECT_EQ(files.errorOf("Ta"),
              "description/Tb.res:3:1: 'Ta' is included already, by itself or by another; remove this line");
    for (int i = 0; i < 40; ++i)
        files.writeDescription("Tc" + std::to_string(i), "", "INCLUDE Tc" + std::to_string(i + 1) + ";");
    EXPECT_EQ(files.errorOf("Tc0"),
              "description/Tc16.res:3:1: descriptions include each other more than 16 deep; include fewer");
}

TEST(ResourceFolder, MissingFilesAreTexts) {
    const TestFolder files;
    ResourceFolder folder(files.root() / "nowhere");
    EXPECT_FALSE(folder.strings());
    EXPECT_EQ(files.relative(folder.strings().error),
              "nowhere/c4d_symbols.h: can't be read: No such file or directory");
    EXPECT_EQ(folder.loadString(10000), std::nullopt);
    EXPECT_EQ(
        files.relative(folder.loadDescription("../Tx").error),
        "nowhere/description/../Tx.res: there is no such file; every description has a .res, a .h and a "
        ".str file");
    EXPECT_EQ(folder.findIcon("About.tif"), std::nullopt);
}

} // namespace
} // namespace headless::resources
