// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

#include <map>
#include <minizip/unzip.h>

namespace {

/// Entries by name; for a broken archive none.
std::map<std::string, std::string> unpacked(const std::string& path) {
    std::map<std::string, std::string> entries;
    const unzFile zip = unzOpen64(path.c_str());
    for (int more = zip ? unzGoToFirstFile(zip) : UNZ_END_OF_LIST_OF_FILE; more == UNZ_OK;
         more = unzGoToNextFile(zip)) {
        unz_file_info64 info{};
        char name[1024];
        std::string bytes;
        if (unzGetCurrentFileInfo64(zip, &info, name, sizeof name, nullptr, 0, nullptr, 0) != UNZ_OK ||
            unzOpenCurrentFile(zip) != UNZ_OK)
            break;
        bytes.resize(info.uncompressed_size);
        const int count = unzReadCurrentFile(zip, bytes.data(), static_cast<unsigned>(bytes.size()));
        if (unzCloseCurrentFile(zip) == UNZ_OK && count == static_cast<int>(bytes.size()))
            entries[name] = bytes;
    }
    if (zip)
        unzClose(zip);
    return entries;
}

class Pack : public Tool {
protected:
    /// Packs a scene of that text, in a folder below, and unpacks it into "unpacked".
    std::map<std::string, std::string> packed(const std::string& name, const std::string& text) {
        write(name, text);
        const Outcome outcome = run({"pack", path(name), path("out.zip")});
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_FALSE(has("out.zip.partial"));
        std::map<std::string, std::string> entries = unpacked(path("out.zip"));
        std::filesystem::remove_all(path("unpacked"));
        for (const auto& [entry, bytes] : entries)
            write("unpacked/" + entry, bytes);
        return entries;
    }
    static std::vector<std::string> namesOf(const std::map<std::string, std::string>& entries) {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : entries)
            names.push_back(name);
        return names;
    }
    using Names = std::vector<std::string>;
};

TEST_F(Pack, HoldsTheSceneWithAllItsFiles) {
    const auto entries = packed("scene.qzs", soundScene());
    EXPECT_EQ(namesOf(entries), (Names{"images/wood.png", "scene.qzs", "scene_meshes/square.qzmesh"}));
    EXPECT_EQ(entries.at("images/wood.png"), read("images/wood.png"));
    EXPECT_EQ(entries.at("scene_meshes/square.qzmesh"), read("scene_meshes/square.qzmesh"));
    EXPECT_EQ(run({"check", path("unpacked/scene.qzs")}).status, 0);
    EXPECT_EQ(run({"diff", path("scene.qzs"), path("unpacked/scene.qzs")}).out, "");
}

TEST_F(Pack, GivesTheSameBytesAgain) {
    ASSERT_EQ(run({"pack", path("scene.qzs"), path("a.zip")}).status, 0);
    std::filesystem::last_write_time(path("images/wood.png"), std::filesystem::file_time_type{});
    ASSERT_EQ(run({"pack", path("scene.qzs"), path("b.zip")}).status, 0);
    EXPECT_EQ(read("a.zip"), read("b.zip"));
}

TEST_F(Pack, BringsFilesOfOtherFoldersIn) {
    write("deep/er/wood.png", "another image");
    write("deep/er/lamp.ies", "a profile");
    std::string text = edited("images/wood.png", path("images/wood.png"));
    text.replace(text.find("scene_meshes/"), 0, "../../");
    const std::string profiles =
        "<ies_profile><path>lamp.ies</path><material_uid>6</material_uid></ies_profile>"
        "<ies_profile><path>../er/lamp.ies</path><material_uid>7</material_uid></ies_profile>"
        "<ies_profile><path>wood.png</path><material_uid>7</material_uid></ies_profile>"
        "<ies_profile><path>../../images/wood.png</path><material_uid>7</material_uid>"
        "</ies_profile><emission_scale>";
    text.replace(text.find("<emission_scale>"), std::string("<emission_scale>").size(), profiles);
    const auto entries = packed("deep/er/in.qzs", text);
    EXPECT_EQ(namesOf(entries),
              (Names{"external/square.qzmesh", "external/wood.png", "in.qzs", "lamp.ies", "wood.png"}));
    EXPECT_EQ(entries.at("external/wood.png"), read("images/wood.png"));
    EXPECT_EQ(entries.at("wood.png"), "another image");
    std::filesystem::remove_all(path("images"));
    EXPECT_EQ(run({"check", path("unpacked/in.qzs")}).out, path("unpacked/in.qzs") + ": no faults\n");
}

TEST_F(Pack, MakesOneSceneOfIncludes) {
    write("parts/more.qzs",
          "<scenedata><material><uid>20</uid><name>Oak</name><diffuse><texture><path>oak.png</path>"
          "<a>0</a><b>1</b><c>0</c><uv_set_index>0</uv_set_index><exponent>2.2</exponent></texture>"
          "<albedo><texture><texture_index>0</texture_index></texture></albedo></diffuse>"
          "</material></scenedata>");
    write("parts/oak.png", read("images/wood.png"));
    const auto entries = packed(
        "in.qzs", edited("<metadata>", "<include><pathname>parts/more.qzs</pathname></include><metadata>"));
    EXPECT_EQ(namesOf(entries),
              (Names{"images/wood.png", "in.qzs", "parts/oak.png", "scene_meshes/square.qzmesh"}));
    EXPECT_EQ(run({"check", path("unpacked/in.qzs")}).status, 0);
}

TEST_F(Pack, RefusesASceneWithMissingFiles) {
    std::string text = edited("images/wood.png", "images/oak.png");
    text.replace(text.find("square.qzmesh"), 6, "circle");
    write("in.qzs", text);
    write("out.zip", "before");
    const Outcome outcome = run({"pack", path("in.qzs"), path("out.zip")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "quenza-scene: '" + path("in.qzs") +
                                  "' can't be packed, files are missing: 'images/oak.png', "
                                  "'scene_meshes/circle.qzmesh'\n");
    EXPECT_EQ(read("out.zip"), "before");
    write("in.qzs", edited("images/wood.png", "images"));
    EXPECT_EQ(run({"pack", path("in.qzs"), path("out.zip")}).errors,
              "quenza-scene: '" + path("in.qzs") +
                  "' can't be packed, files are missing: 'images' (no ordinary file)\n");
    EXPECT_EQ(run({"pack", path("scene.qzs"), path("no/folder/out.zip")}).status, 1);
}

} // namespace
