// SPDX-License-Identifier: MIT
// The plug-in's own resource folder: numbers and defaults that documents depend on, and texts that nobody may
// miss.

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <string>
#include <variant>

#include "headless/resources/file_lookup.h"
#include "headless/resources/resource_folder.h"
// Plug-in code may include them together, so their names must not collide.
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

} // namespace
} // namespace headless::resources
