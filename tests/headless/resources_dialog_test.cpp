// SPDX-License-Identifier: MIT
// Dialogs read from folders that the tests write.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "headless/resources/resource_folder.h"
#include "support/temp_dir.h"

namespace headless::resources {
namespace {

namespace fs = std::filesystem;

class DialogFile : public ::testing::Test {
protected:
    DialogFile() {
        write("c4d_symbols.h", "enum { OTHER = 100, IDD_A = 100, IDC_X = 101, IDC_Y, IDD_LOST = 200 };");
    }
    void write(const std::string& name, const std::string& text) const {
        fs::create_directories((root() / name).parent_path());
        Quenza::writeBytes(dir_ / name, text);
    }
    /// `text` with the folder's own path taken out.
    std::string relative(std::string text) const {
        const std::string prefix = root().generic_string() + "/";
        return text.starts_with(prefix) ? text.substr(prefix.size()) : text;
    }
    std::string errorOf(int32_t number) const {
        return relative(ResourceFolder(root()).loadDialog(number).error);
    }
    fs::path root() const { return dir_.path().toStdString(); }

    const Quenza::TempDir dir_;
};

TEST_F(DialogFile, FaultsNamePlaceAndCure) {
    write("strings_us/dialogs/idd_a.str", "STRINGTABLE { IDC_X \"Ex\"; }");
    EXPECT_EQ(
        errorOf(99),
        "c4d_symbols.h: no name has the number 99 of a dialog; add one, and the dialog's files under it");
    EXPECT_EQ(errorOf(200),
              "dialogs/idd_lost.res: there is no such file; every dialog has a .res and a .str file");
    const struct {
        const char* layout;
        const char* error;
    } cases[] = {
        {"", " is empty; it must hold DIALOG name { ... }"},
        {"GROUP IDD_A { }", "1:1: expected DIALOG name { ... }"},
        {"DIALOG IDD_B { }", "1:8: the dialog is called 'IDD_B'; give it the name of its file"},
        {"DIALOG IDD_A { BUTTN IDC_X; }", "1:16: 'BUTTN' is neither a gadget nor a property that can stand "
                                          "here; correct the word or remove it"},
        {"DIALOG IDD_A { BUTTON IDC_X { CHILDS { } } }",
         "1:31: 'CHILDS' is neither a gadget nor a property that can stand here; correct the word or remove "
         "it"},
        {"DIALOG IDD_A { { } }",
         "1:16: '{' is neither a gadget nor a property that can stand here; correct the word or remove it"},
        {"DIALOG IDD_A {\nBUTTON; }",
         "2:1: BUTTON needs a name; only groups, separators and static texts go without"},
        {"DIALOG IDD_A { BUTTON IDC_Z; }", "1:23: 'IDC_Z' has no number; add it to c4d_symbols.h"},
        {"DIALOG IDD_A { BUTTON 0; }", "1:23: gadgets have numbers above 0"},
        {"DIALOG IDD_A { BUTTON IDC_X; CHECKBOX 101; }", "1:39: the number 101 belongs to 'IDC_X' already"},
        {"DIALOG IDD_A { BUTTON IDC_X { NAME IDC_Y; } }",
         "1:36: 'IDC_Y' has no text; add it to the dialog's .str file"},
        {"DIALOG IDD_A { EDITNUMBER IDC_X { MIN 3; MAX 2; } }", "1:42: MIN is above MAX; exchange them"},
        {"DIALOG IDD_A { USERAREA IDC_X { SIZE 3; } }",
         "1:33: SIZE takes a width, a ',' and a height in pixels"},
        {"DIALOG IDD_A { USERAREA IDC_X { SIZE 99999, 1; } }",
         "1:38: '99999' is no whole number from 0 to 10000"},
        {"DIALOG IDD_A { RADIOGROUP IDC_X { CHILDS { IDC_X; } } }",
         "1:44: expected the name of an entry, a ',', the name of its text and a ';'"},
        {"DIALOG IDD_A { RADIOGROUP IDC_X { CHILDS { 1, IDC_X; 1, IDC_X; } } }",
         "1:54: the number of '1' is in this list already; give it its own number"},
    };
    for (const auto& test : cases) {
        write("dialogs/idd_a.res", test.layout);
        EXPECT_EQ(errorOf(100), std::string("dialogs/idd_a.res:") + test.error) << test.layout;
    }
}

} // namespace
} // namespace headless::resources
