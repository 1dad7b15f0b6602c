// SPDX-License-Identifier: MIT
// Numbers and defaults of the material and of the shaders, which documents depend on. The material's numbered
// channels are added at run time.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "headless/resources/resource_folder.h"
#include "headless/resources_values.h"

namespace headless::resources {
namespace {

/// Number to "KEYWORD default" of everything that holds a value.
const struct {
    const char* name;
    std::map<int32_t, std::string> values;
} descriptions[] = {
    {"Mquenzamaterial", {{6002, "BOOL -"},       {6003, "BOOL -"},           {6004, "BOOL -"},
                         {6005, "BOOL -"},       {6006, "BOOL -"},           {6007, "BOOL -"},
                         {6008, "BOOL -"},       {6009, "BOOL -"},           {6010, "BOOL -"},
                         {6011, "BOOL -"},       {6024, "LONG 6025"},        {6032, "LONG 6034"},
                         {6038, "REAL 1.6"},     {6039, "BOOL 0"},           {6040, "REAL 1000"},
                         {6041, "LONG 6042"},    {6045, "LONG 10"},          {6046, "REAL 1.6"},
                         {6047, "REAL 0"},       {6048, "BOOL 0"},           {6049, "BOOL 1"},
                         {6052, "SHADERLINK -"}, {6053, "REAL 1"},           {6054, "REAL 0"},
                         {6055, "REAL 1"},       {6056, "REAL 0"},           {6057, "LONG 6104"},
                         {6060, "COLOR 1 1 1"},  {6061, "REAL 1"},           {6062, "REAL 6500"},
                         {6063, "REAL 1"},       {6064, "SHADERLINK -"},     {6065, "REAL 2.2"},
                         {6066, "REAL 0"},       {6067, "REAL 1"},           {6068, "REAL 0"},
                         {6069, "SHADERLINK -"}, {6070, "REAL 1"},           {6071, "REAL 0"},
                         {6072, "REAL 0.001"},   {6073, "REAL 0"},           {6074, "SHADERLINK -"},
                         {6075, "REAL 1"},       {6076, "REAL 0"},           {6077, "REAL 0.001"},
                         {6078, "REAL 0"},       {6079, "REAL 0.2"},         {6080, "BOOL 0"},
                         {6081, "REAL 0.8"},     {6083, "LONG 6084"},        {6088, "REAL 100"},
                         {6089, "REAL 0.8"},     {6090, "LONG 0"},           {6114, "COLOR 1 1 1"},
                         {6115, "REAL 2.2"},     {6118, "SHADERLINK -"},     {6119, "REAL 2.2"},
                         {6120, "REAL 0"},       {6121, "REAL 1"},           {6122, "REAL 0"},
                         {6126, "REAL 0.05"},    {6127, "REAL 0.25"},        {6128, "REAL 0.5"},
                         {6129, "COLOR 1 1 1"},  {6130, "REAL 1"},           {6133, "COLOR 0 0 0"},
                         {6134, "REAL 1"},       {6136, "LONG 6137"},        {6141, "COLOR 0.9 0.9 0.9"},
                         {6142, "REAL 2.2"},     {6144, "BOOL 0"},           {6145, "STRING -"},
                         {6200, "SHADERLINK -"}, {6201, "REAL 1"},           {6202, "REAL 0"},
                         {6203, "REAL 1"},       {6204, "REAL 0"},           {6205, "SHADERLINK -"},
                         {6206, "REAL 1"},       {6207, "REAL 0"},           {6208, "REAL 1"},
                         {6209, "REAL 0"},       {6210, "LONG 6104"},        {6216, "REAL 1"},
                         {6217, "LONG 6107"},    {6223, "REAL 1"},           {6224, "REAL 6500"},
                         {6225, "REAL 1"},       {6226, "REAL 6500"},        {6227, "REAL 1"},
                         {6228, "REAL 0"},       {6229, "REAL 0"},           {6230, "LONG 400"},
                         {6231, "LONG 700"},     {6232, "STRING '0.1 0.1'"}, {6234, "LONG 400"},
                         {6235, "LONG 700"},     {6236, "STRING '0.1 0.1'"}, {6241, "REAL -"},
                         {6242, "REAL -"},       {6243, "STRING ''"},        {6245, "REAL 1"},
                         {6246, "REAL 100"},     {6247, "REAL 600"},         {6248, "REAL 1"},
                         {6249, "REAL 1"},       {6250, "REAL 100"},         {6251, "REAL 600"},
                         {6252, "REAL 1"},       {6253, "REAL 1"},           {6254, "REAL 100"},
                         {6255, "REAL 600"},     {6256, "REAL 1"},           {6257, "REAL 1"},
                         {6259, "LINK -"},       {6260, "REAL 0.5"},         {6261, "BOOL 0"},
                         {6265, "LONG 1024"},    {6266, "LONG 1024"},        {6269, "LINK -"},
                         {6271, "COLOR 1 1 1"},  {6272, "REAL 0.8"},         {6273, "REAL 2.2"},
                         {6274, "SHADERLINK -"}, {6275, "REAL 2.2"},         {6276, "REAL 0"},
                         {6277, "REAL 1"},       {6278, "REAL 0"},           {6280, "BOOL -"},
                         {6281, "BOOL -"},       {6282, "FILENAME -"},       {6284, "REAL 2"},
                         {6285, "VECTOR 0 0 0"}, {6287, "BOOL 0"},           {6288, "BOOL 0"},
                         {6289, "BOOL 0"},       {6290, "BOOL 0"},           {6291, "BOOL 0"},
                         {6292, "BOOL -"},       {6294, "SHADERLINK -"},     {6295, "REAL 1"},
                         {6296, "REAL 0"},       {6297, "REAL 1"},           {6298, "REAL 0"},
                         {6299, "LONG 1"},       {6303, "BOOL -"},           {6304, "REAL 1.5"},
                         {6305, "BOOL 0"},       {6306, "LINK -"},           {6307, "BOOL -"},
                         {6310, "BOOL -"},       {6311, "BOOL -"},           {6313, "BOOL -"},
                         {6315, "BOOL -"},       {6316, "BOOL -"},           {6317, "BOOL -"},
                         {6318, "BOOL -"},       {6319, "BOOL -"},           {6325, "LINK -"},
                         {6326, "LINK -"},       {6327, "REAL 1.5"},         {6328, "BOOL -"},
                         {6329, "STRING ''"},    {6330, "LINK -"},           {6333, "BOOL 0"},
                         {6334, "BOOL 0"}}},
    {"xqslnoise",
     {{1500, "LONG 1501"},
      {1503, "LONG 1504"},
      {1506, "VECTOR 1 1 1"},
      {1507, "REAL 1"},
      {1508, "LONG 1509"},
      {1511, "COLOR 1 1 1"},
      {1512, "COLOR 0 0 0"}}},
    {"xqslblend", {{1600, "SHADERLINK -"}, {1601, "SHADERLINK -"}, {1602, "LONG 1605"}, {1606, "REAL 1"}}},
    {"xqslgradient", {{1600, "REAL 1"}, {1604, "LONG 1601"}, {1605, "COLOR 1 1 1"}, {1606, "COLOR 0 0 0"}}},
    {"xqslnormal", {{1600, "COLOR 1 1 1"}, {1601, "COLOR 0 0 0"}}},
    {"xcquenzaqslshader",
     {{1400, "FILENAME -"}, {1401, "FILENAME -"}, {1402, "FILENAME -"}, {1405, "STRING 'default'"}}},
};

TEST(MaterialResources, NumbersTypesAndDefaults) {
    ResourceFolder folder(QUENZA_SOURCE_DIR "/res");
    for (const auto& expected : descriptions) {
        const auto description = folder.loadDescription(expected.name);
        ASSERT_TRUE(description) << description.error;
        EXPECT_EQ(valuesOf(*description), expected.values) << expected.name;
    }
}

TEST(MaterialResources, CycleValues) {
    const struct {
        const char* description;
        int32_t id;
        std::vector<int32_t> values;
    } cases[] = {
        {"Mquenzamaterial", 6024, {6025, 6026, 6027, 6028, 6029, 6031, 6030, 6262, 6300, 6301}},
        {"Mquenzamaterial", 6032, {6331, 6033, 6034, 6035, 6332}},
        {"Mquenzamaterial", 6041, {6042, 6043, 6044, 6283}},
        {"Mquenzamaterial", 6057, {6104, 6105, 6106, 6107, 6108}},
        {"Mquenzamaterial", 6083, {6084, 6085, 6086, 6087}},
        {"Mquenzamaterial", 6136, {6137, 6138}},
        {"xqslnoise", 1500, {1501, 1502}},
        {"xqslnoise", 1503, {1504, 1505}},
        {"xqslnoise", 1508, {1509, 1510}},
        {"xqslblend", 1602, {1603, 1604, 1605}},
        {"xqslgradient", 1604, {1601, 1602, 1603}},
    };
    ResourceFolder folder(QUENZA_SOURCE_DIR "/res");
    for (const auto& expected : cases) {
        const Entry* entry = folder.loadDescription(expected.description)->find(expected.id);
        ASSERT_NE(entry, nullptr) << expected.id;
        std::vector<int32_t> values;
        for (const CycleItem& item : entry->cycle)
            values.push_back(item.value);
        EXPECT_EQ(values, expected.values) << expected.description << " " << expected.id;
    }
}

/// A flag hides the group that has its number in the plug-in.
TEST(MaterialResources, ParametersLieInTheGroupOfTheirChannel) {
    ResourceFolder folder(QUENZA_SOURCE_DIR "/res");
    const auto description = folder.loadDescription("Mquenzamaterial");
    ASSERT_TRUE(description) << description.error;
    const std::pair<int32_t, std::vector<int32_t>> groups[] = {
        {6013, {6052, 6053, 6054, 6055, 6056, 6259, 6260, 6261, 6269, 6291}},
        {6015, {6081, 6114, 6115, 6118, 6122}},
        {6016, {6038, 6039, 6144, 6145, 6299}},
        {6017, {6069, 6073, 6287}},
        {6018, {6074, 6078, 6290}},
        {6019, {6057, 6060, 6064, 6068, 6090, 6242, 6243, 6257, 6281, 6282, 6328}},
        {6020, {6040, 6200, 6204, 6289}},
        {6021, {6079, 6205, 6209, 6288}},
        {6022, {6041, 6045, 6126, 6210, 6232, 6284, 6285, 6330, 6048}},
        {6132, {6217, 6133, 6236, 6253, 6136, 6142}},
        {6023, {6049, 6329}},
        {6279, {6271, 6274, 6278}},
        {6293, {6294, 6298}},
        {6302, {6304, 6305, 6306}},
        {6314, {6325, 6326, 6327}},
    };
    for (const auto& [group, ids] : groups) {
        for (const int32_t id : ids) {
            const Entry* entry = description->find(id);
            ASSERT_NE(entry, nullptr) << id;
            bool isInside = false;
            for (const Entry* outer : description->groupPath(*entry))
                isInside = isInside || outer->id == group;
            EXPECT_TRUE(isInside) << id << " isn't in " << group;
        }
    }
}

} // namespace
} // namespace headless::resources
