// SPDX-License-Identifier: MIT
// The plug-in's own resource folder: numbers and defaults that documents depend on, and texts that nobody may
// miss.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "headless/resources/file_lookup.h"
#include "headless/resources/resource_folder.h"
#include "headless/resources/symbol_table.h"
#include "headless/resources_values.h"
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

struct ExpectedDescription {
    std::string name;
    std::map<int32_t, std::string> values;
};

const std::vector<ExpectedDescription> expectedDescriptions = {
    {"tMyLightTag",
     {{1215, "LONG 1217"},
      {1224, "REAL 6500"},
      {1225, "REAL 1"},
      {1226, "REAL 1"},
      {1227, "COLOR 1 1 1"},
      {1228, "REAL 2.2"},
      {1231, "REAL 300"},
      {1232, "REAL 550"},
      {1233, "REAL 200"},
      {1234, "REAL 0"},
      {1300, "LONG 1305"},
      {1301, "REAL 100"},
      {1307, "BOOL 0"},
      {1308, "FILENAME ''"},
      {1310, "BUTTON -"},
      {1312, "BOOL 0"},
      {1313, "LONG 0"}}},
    {"TMyExitPortal", {{1100, "BOOL 1"}}},
    {"TQuenzaCompositing", {{1100, "BOOL 0"}}},
    {"tSubdivision",
     {{1501, "LONG 3"},
      {1502, "REAL 0"},
      {1503, "REAL 0.1"},
      {1504, "BOOL 0"},
      {1505, "BOOL 0"},
      {1506, "REAL 0"}}},
    {"TCameraTag", {{1917, "LONG 1908"}, {1925, "BOOL 1"},    {1926, "REAL 500"},    {1927, "REAL 16"},
                    {1942, "REAL 200"},  {1943, "REAL 0"},    {1945, "LONG 1947"},   {1949, "REAL 3"},
                    {1950, "REAL 1"},    {1952, "REAL 10"},   {1960, "LONG 2"},      {1961, "BOOL 0"},
                    {1962, "LONG 1982"}, {1963, "LONG 1964"}, {1967, "LONG 6"},      {1968, "REAL 0.4"},
                    {1969, "REAL 3"},    {1970, "REAL 0.2"},  {1971, "FILENAME ''"}, {1977, "LONG 1975"},
                    {1978, "LONG 1974"}, {1979, "BOOL 0"},    {1980, "FILENAME ''"}, {1984, "REAL 0.2"},
                    {1985, "REAL 0.6"},  {1986, "REAL 0"},    {1987, "REAL 1"},      {1988, "BOOL 0"},
                    {1989, "LONG 0"},    {1990, "LONG 150"},  {1991, "LONG 0"},      {1992, "LONG 150"},
                    {1994, "BOOL 0"},    {1999, "REAL 1.6"},  {2000, "BOOL 0"},      {2001, "LONG 0"}}},
    {"Oquenzainstance", {{10000, "LINK -"}, {10011, "LONG 10014"}}},
    {"Oquenzasectionplane",
     {{10016, "BOOL 1"}, {10017, "IN_EXCLUDE -"}, {10018, "LONG 10020"}, {10021, "BOOL 1"}}},
    {"oquenzarendersettings",
     {{1301, "LINK -"},
      {1303, "REAL 2.4"},
      {1330, "LONG 10000"},
      {1331, "LONG 1000"},
      {1332, "REAL -1"},
      {1333, "BOOL 1"},
      {1334, "LONG 1338"},
      {1340, "REAL 1"},
      {1350, "REAL 0.4"},
      {1351, "REAL 0.01"},
      {1352, "BOOL 1"},
      {1353, "REAL 1800"},
      {1354, "REAL 3600"},
      {1355, "BOOL 0"},
      {1356, "BOOL 0"},
      {1357, "LONG -"},
      {1358, "BOOL 1"},
      {1359, "BOOL 0"},
      {1361, "BOOL 0"},
      {1362, "LONG 800"},
      {1368, "LONG 1379"},
      {1381, "BOOL 0"},
      {1382, "REAL -1"},
      {1383, "BOOL 1"},
      {1384, "LINK -"},
      {1386, "LONG -"},
      {1392, "BOOL 0"},
      {1393, "FILENAME ''"},
      {1394, "BOOL 0"},
      {1397, "BOOL 0"},
      {1398, "BOOL 0"},
      {1399, "BOOL 1"},
      {1400, "BOOL 0"},
      {1402, "BOOL 0"},
      {1403, "LONG 7100"},
      {1408, "BOOL 0"},
      {1420, "BOOL 0"},
      {1421, "BOOL -"},
      {1422, "FILENAME -"},
      {1423, "BOOL -"},
      {1424, "COLOR 0.71 0.62 0.53"},
      {1426, "BOOL 0"},
      {1428, "BOOL 0"},
      {1429, "BOOL 0"},
      {1430, "BOOL 1"},
      {1431, "BOOL 1"},
      {1433, "BOOL 0"},
      {1434, "BOOL 1"},
      {1435, "BOOL 0"},
      {1436, "LONG -1"},
      {1437, "BOOL 1"},
      {1410, "STRING 'Layer 1'"},
      {1411, "STRING 'Layer 2'"},
      {1412, "STRING 'Layer 3'"},
      {1413, "STRING 'Layer 4'"},
      {1414, "STRING 'Layer 5'"},
      {1415, "STRING 'Layer 6'"},
      {1416, "STRING 'Layer 7'"},
      {1417, "STRING 'Layer 8'"},
      {1418, "STRING 'Layer 9'"},
      {1419, "STRING 'Layer 10'"}}},
};

TEST(ShippedResources, NumbersTypesAndDefaults) {
    ResourceFolder folder = shippedFolder();
    for (const ExpectedDescription& expected : expectedDescriptions) {
        const auto description = folder.loadDescription(expected.name);
        ASSERT_TRUE(description) << description.error;
        EXPECT_EQ(valuesOf(*description), expected.values) << expected.name;
    }
}

TEST(ShippedResources, CycleValues) {
    struct Case {
        const char* description;
        int32_t id;
        std::vector<int32_t> values;
    };
    std::vector<int32_t> responses;
    for (int32_t i = 0; i < 58; ++i)
        responses.push_back(i);
    const Case cases[] = {
        {"tMyLightTag", 1215, {1217, 1218, 1216, 1219}},
        {"tMyLightTag", 1300, {1302, 1304, 1305, 1306}},
        {"tMyLightTag", 1313, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
        {"TCameraTag", 1917, {1905, 1906, 1907, 1908, 1909, 1910, 1911, 1912, 1913, 1914, 1915, 1916}},
        {"TCameraTag", 1945, {1946, 1947, 1948}},
        {"TCameraTag", 1962, {1982, 1983}},
        {"TCameraTag", 1963, {1964, 1965, 1966}},
        {"TCameraTag", 1977, {1975, 1998, 1974}},
        {"TCameraTag", 1978, {1974, 1975, 1976}},
        {"TCameraTag", 2001, responses},
        {"Oquenzainstance", 10011, {10012, 10013, 10014}},
        {"Oquenzasectionplane", 10018, {10020, 10019}},
        {"oquenzarendersettings", 1334, {1335, 1336, 1337, 1338, 1432, 1438, 1439}},
        {"oquenzarendersettings", 1368, {1379, 1364, 1365}},
        {"oquenzarendersettings", 1386, {1387, 1388, 1389, 1390, 1391}},
        {"oquenzarendersettings", 1436, {}},
    };
    ResourceFolder folder = shippedFolder();
    for (const Case& expected : cases) {
        const Entry* entry = folder.loadDescription(expected.description)->find(expected.id);
        ASSERT_NE(entry, nullptr) << expected.id;
        std::vector<int32_t> values;
        for (const CycleItem& item : entry->cycle)
            values.push_back(item.value);
        EXPECT_TRUE(entry->isCycle) << expected.id;
        EXPECT_EQ(values, expected.values) << expected.description << " " << expected.id;
    }
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

TEST(ShippedResources, GroupsThatThePlugInHidesByNumber) {
    ResourceFolder folder = shippedFolder();
    const auto isInGroup = [&](const char* name, int32_t id, int32_t group) {
        const auto description = folder.loadDescription(name);
        for (const Entry* outer : description->groupPath(*description->find(id)))
            if (outer->id == group)
                return true;
        return false;
    };
    EXPECT_TRUE(isInGroup("oquenzarendersettings", RS_BACKGROUND_LINK, 1366));
    for (const int32_t id :
         {RS_SUN_OBJECT, RS_TURBIDITY, RS_EXTRA_ATMOSPHERIC, RS_SPLIT_SUN_SKY, RS_CAPTURED_SKY})
        EXPECT_TRUE(isInGroup("oquenzarendersettings", id, 1367)) << id;
    for (const int32_t id : {RS_LAYER_NAME_1, RS_LAYER_NAME_10})
        EXPECT_TRUE(isInGroup("oquenzarendersettings", id, 1409)) << id;
    EXPECT_TRUE(isInGroup("oquenzarendersettings", RS_NETWORK_PORT, 1401));
    EXPECT_TRUE(isInGroup("tMyLightTag", LIGHT_LAYER, 1236));
}

TEST(ShippedResources, HiddenEntriesAreTheReservedAndOldOnes) {
    std::vector<int32_t> hidden;
    ResourceFolder folder = shippedFolder();
    for (const char* name : descriptionNames)
        for (const Entry& entry : folder.loadDescription(name)->entries)
            if (entry.hidden)
                hidden.push_back(entry.id);
    EXPECT_EQ(hidden, (std::vector<int32_t>{1359, 1361, 1433, 6145}));
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
