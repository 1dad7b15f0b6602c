// SPDX-License-Identifier: MIT
// The plug-in's own resource folder: numbers and defaults that documents depend on, and texts that nobody may
// miss.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "headless/resources/file_lookup.h"
#include "headless/resources/resource_folder.h"
#include "headless/resources/symbol_table.h"
// Plug-in code may include them together, so their names must not collide.
#include "res/c4d_symbols.h"
#include "res/description/Mquenzamaterial.h"
#include "res/description/Oquenzainstance.h"
#include "res/description/Oquenzasectionplane.h"
#include "res/description/TCameraTag.h"
#include "res/description/TMyExitPortal.h"
#include "res/description/TQuenzaCompositing.h"
#include "res/description/oquenzarendersettings.h"
#include "res/description/tMyLightTag.h"
#include "res/description/tSubdivision.h"
#include "res/description/xcquenzaqslshader.h"
#include "res/description/xqslblend.h"
#include "res/description/xqslgradient.h"
#include "res/description/xqslnoise.h"
#include "res/description/xqslnormal.h"

namespace headless::resources {
namespace {

const char* const descriptionNames[] = {
    "tMyLightTag",        "TMyExitPortal",    "TCameraTag",          "tSubdivision",
    "TQuenzaCompositing", "Oquenzainstance",  "Oquenzasectionplane", "oquenzarendersettings",
    "Mquenzamaterial",    "xqslnoise",        "xqslblend",           "xqslgradient",
    "xqslnormal",         "xcquenzaqslshader"};

ResourceFolder shippedFolder() {
    return ResourceFolder(QUENZA_SOURCE_DIR "/res");
}

/// A default as text: a whole number for a switch, quotes around texts, "-" for none.
struct DefaultText {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(bool value) const { return value ? "1" : "0"; }
    std::string operator()(int32_t value) const { return std::to_string(value); }
    std::string operator()(double value) const {
        char text[32];
        std::snprintf(text, sizeof text, "%g", value);
        return text;
    }
    std::string operator()(const std::array<double, 3>& value) const {
        return (*this)(value[0]) + " " + (*this)(value[1]) + " " + (*this)(value[2]);
    }
    std::string operator()(const std::string& value) const { return "'" + value + "'"; }
};

bool isDecoration(const Entry& entry) {
    return entry.kind == EntryKind::group || entry.kind == EntryKind::separator ||
           entry.kind == EntryKind::staticText;
}

/// Of everything that holds a value: number, type, default, values of the cycle and the groups around it that
/// have numbers, by which the plug-in hides them.
std::string outlineOf(const Description& description) {
    std::map<int32_t, std::string> lines;
    for (const Entry& entry : description.entries) {
        if (isDecoration(entry))
            continue;
        std::string& line = lines[entry.id];
        line = entry.keyword + " " + std::visit(DefaultText(), entry.defaultValue);
        line += entry.hidden ? ", hidden" : "";
        line += entry.isCycle ? ", one of" : "";
        for (const CycleItem& item : entry.cycle)
            line += " " + std::to_string(item.value);
        for (const Entry* group : description.groupPath(entry))
            line += group->id != 0 ? ", in " + std::to_string(group->id) : "";
    }
    std::string text = description.name + "\n";
    for (const auto& [id, line] : lines)
        text += "  " + std::to_string(id) + " " + line + "\n";
    return text;
}

TEST(ShippedResources, NumbersTypesDefaultsAndGroups) {
    ResourceFolder folder = shippedFolder();
    std::string text;
    for (const char* name : descriptionNames) {
        const auto description = folder.loadDescription(name);
        ASSERT_TRUE(description) << description.error;
        text += outlineOf(*description);
    }
    EXPECT_EQ(text, readTextFile(QUENZA_SOURCE_DIR "/tests/headless/golden/descriptions.txt"));
}

TEST(ShippedResources, EverythingThatShowsHasALabel) {
    ResourceFolder folder = shippedFolder();
    for (const char* name : descriptionNames) {
        const auto description = folder.loadDescription(name);
        ASSERT_TRUE(description) << description.error;
        EXPECT_NE(description->label, "") << name;
        for (const Entry& entry : description->entries) {
            const bool needsLabel = !isDecoration(entry) || entry.kind == EntryKind::group;
            EXPECT_TRUE(!needsLabel || !entry.label.empty()) << name << " " << entry.symbol;
            EXPECT_NE(entry.kind, EntryKind::other) << name << " " << entry.keyword;
            for (const CycleItem& item : entry.cycle)
                EXPECT_NE(item.label, "") << name << " " << item.symbol;
        }
    }
}

TEST(ShippedResources, DefaultsLieWithinRangesAndCycles) {
    ResourceFolder folder = shippedFolder();
    for (const char* name : descriptionNames) {
        for (const Entry& entry : folder.loadDescription(name)->entries) {
            const int32_t* whole = std::get_if<int32_t>(&entry.defaultValue);
            const double* real = std::get_if<double>(&entry.defaultValue);
            if (whole == nullptr && real == nullptr)
                continue;
            const double value = whole != nullptr ? *whole : *real;
            EXPECT_GE(value, entry.min.value_or(value)) << name << " " << entry.symbol;
            EXPECT_LE(value, entry.max.value_or(value)) << name << " " << entry.symbol;
            bool listed = entry.cycle.empty();
            for (const CycleItem& item : entry.cycle)
                listed = listed || item.value == value;
            EXPECT_TRUE(listed) << name << " " << entry.symbol;
        }
    }
}

TEST(ShippedResources, EveryNameOfAHeaderIsUsedInItsDescription) {
    ResourceFolder folder = shippedFolder();
    for (const char* name : descriptionNames) {
        SymbolTable header;
        const std::string file = std::string(QUENZA_SOURCE_DIR "/res/description/") + name + ".h";
        header.readHeader(readTextFile(file), file);
        std::map<std::string, int32_t> unused(header.all().begin(), header.all().end());
        // The numbered channels of the material come at run time.
        std::erase_if(unused, [](const auto& symbol) {
            return symbol.first.starts_with("MAT_OFFSET_") ||
                   (symbol.first.starts_with("MAT_") && symbol.second >= 10000);
        });
        for (const Entry& entry : folder.loadDescription(name)->entries) {
            unused.erase(entry.symbol);
            for (const CycleItem& item : entry.cycle)
                unused.erase(item.symbol);
        }
        EXPECT_TRUE(unused.empty()) << name << ": " << unused.begin()->first;
    }
}

TEST(ShippedResources, NumberedTexts) {
    ResourceFolder folder = shippedFolder();
    const auto strings = folder.strings();
    ASSERT_TRUE(strings) << strings.error;
    std::vector<int32_t> expected;
    for (int32_t number = 1; number <= 22; ++number)
        expected.push_back(number);
    for (const int32_t number : {10000, 10002, 10005, 10006, 10009, 10010, 10011, 10014, 10016, 10019, 10020,
                                 10022, 10023, 10024, 10025, 10026, 10028})
        expected.push_back(number);
    std::vector<int32_t> numbers;
    for (const auto& [number, text] : strings->all()) {
        numbers.push_back(number);
        EXPECT_NE(text, "") << number;
    }
    EXPECT_EQ(numbers, expected);
    EXPECT_EQ(folder.loadString(IDS_RENDER), "Render with Quenza");
    EXPECT_EQ(folder.loadString(10001), std::nullopt);
}

TEST(ShippedResources, IconsOfTheRegistrations) {
    const ResourceFolder folder = shippedFolder();
    for (const char* name :
         {"LightTag.tif", "ExitPortal.tif", "CameraTag.tif", "subdivtag.tif", "animationtag.tif", "About.tif",
          "ConvertMats.tif", "Export.tif", "instance.tif", "materialhelper.tif", "resume.tif", "pause.tif",
          "convertmats.tif", "tonemapping.tif"}) {
        const auto icon = folder.findIcon(name);
        ASSERT_TRUE(icon) << name;
        const std::string bytes = readTextFile(*icon);
        EXPECT_EQ(bytes.substr(0, 4), std::string("II*\0", 4)) << name;
    }
}

} // namespace
} // namespace headless::resources
