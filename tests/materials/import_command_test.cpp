// SPDX-License-Identifier: MIT
#include "host/document.h"
#include "materials/import_fixture.h"

#include <filesystem>
#include <minizip/zip.h>

// The command: which files it takes, which materials it makes of them, and what it tells.

namespace {

using Lines = std::vector<std::string>;

class ImportCommand : public ImportTest {
protected:
    /// An archive of stored files.
    std::string pack(const char* name, const std::vector<std::pair<std::string, std::string>>& entries) {
        const std::string file = folder() + "/" + name;
        std::filesystem::remove(file);
        const zipFile zip = zipOpen64(file.c_str(), APPEND_STATUS_CREATE);
        for (const auto& [entry, content] : entries) {
            EXPECT_EQ(
                zipOpenNewFileInZip64(zip, entry.c_str(), nullptr, nullptr, 0, nullptr, 0, nullptr, 0, 0, 0),
                ZIP_OK);
            EXPECT_EQ(zipWriteInFileInZip(zip, content.data(), unsigned(content.size())), ZIP_OK);
            EXPECT_EQ(zipCloseFileInZip(zip), ZIP_OK);
        }
        zipClose(zip, nullptr);
        return file;
    }
    std::string unpacked(const std::string& file) const {
        return Quenza::nativeText(folder() + "/config/Quenza for Cinema 4D/materials/" + file);
    }
};

std::string blend(int uid, const char* name, int a, int b) {
    return "<material><uid>" + std::to_string(uid) + "</uid><name>" + name + "</name><blend><a_mat_uid>" +
           std::to_string(a) + "</a_mat_uid><b_mat_uid>" + std::to_string(b) +
           "</b_mat_uid></blend></material>";
}
std::string diffuse(int uid, const char* name) {
    return "<material><uid>" + std::to_string(uid) + "</uid><name>" + name +
           "</name><diffuse></diffuse></material>";
}

TEST_F(ImportCommand, LinksMaterialsByTheirNames) {
    // The first refers to what comes behind it, the last to what was made already.
    EXPECT_TRUE(import(
        blend(1, "Mix", 2, 3) + diffuse(3, "Wood") + blend(2, "Inner", 3, 4) + diffuse(4, "Stone") +
        "<material><uid>5</uid><name>Lacquer</name><coating><substrate_material_uid>3</"
        "substrate_material_uid>"
        "</coating></material>"
        "<material><uid>6</uid><name>Leaf</name><double_sided_thin><front_material_uid>3</front_material_uid>"
        "<back_material_uid>4</back_material_uid></double_sided_thin></material>"))
        << ::testing::PrintToString(lines());
    EXPECT_EQ(names(), "Mix Inner Wood Stone Lacquer Leaf ");
    EXPECT_EQ(nameOfLink(find("Mix"), 6259), "Inner");
    EXPECT_EQ(nameOfLink(find("Mix"), 6269), "Wood");
    EXPECT_EQ(nameOfLink(find("Inner"), 6259), "Wood");
    EXPECT_EQ(nameOfLink(find("Inner"), 6269), "Stone");
    EXPECT_EQ(nameOfLink(find("Lacquer"), 6306), "Wood");
    EXPECT_EQ(nameOfLink(find("Leaf"), 6325), "Wood");
    EXPECT_EQ(nameOfLink(find("Leaf"), 6326), "Stone");
    // The kind forces its channels.
    EXPECT_TRUE(data(find("Mix")).GetBool(6002));
    EXPECT_FALSE(data(find("Mix")).GetBool(6003));

    EXPECT_TRUE(document()->DoUndo());
    EXPECT_EQ(names(), "");
}

TEST_F(ImportCommand, EndsCircles) {
    EXPECT_TRUE(import(blend(1, "A", 2, 1) + blend(2, "B", 3, 3) + blend(3, "C", 1, 2)))
        << ::testing::PrintToString(lines());
    EXPECT_EQ(names(), "A B C ");
    EXPECT_EQ(nameOfLink(find("A"), 6259), "B");
    EXPECT_EQ(nameOfLink(find("A"), 6269), "A");
    EXPECT_EQ(nameOfLink(find("C"), 6259), "A");
    EXPECT_EQ(nameOfLink(find("C"), 6269), "B");
}

TEST_F(ImportCommand, MakesOneMaterialOfAName) {
    EXPECT_TRUE(import(diffuse(1, "Twin") +
                       "<material><uid>2</uid><name>Twin</name><specular></specular></material>" +
                       blend(3, "Mix", 2, 1)));
    EXPECT_EQ(names(), "Twin Mix ");
    EXPECT_EQ(data(find("Twin")).GetLong(MAT_KIND), 6025);
    EXPECT_EQ(nameOfLink(find("Mix"), 6259), "Twin");
    // Only those of one import count.
    EXPECT_TRUE(import(diffuse(1, "Twin")));
    EXPECT_EQ(names(), "Twin Mix Twin ");
}

TEST_F(ImportCommand, LeavesOutWhatTheMaterialCantBe) {
    EXPECT_TRUE(import("<material><uid>1</uid><name>Air</name><null_material></null_material></material>"
                       "<material><uid>2</uid><name>Door</name><exit_portal></exit_portal></material>" +
                       blend(3, "Mix", 1, 2)));
    EXPECT_EQ(names(), "Mix ");
    EXPECT_EQ(nameOfLink(find("Mix"), 6259) + nameOfLink(find("Mix"), 6269), "");
    EXPECT_EQ(lines(), Lines{"Material \"Door\" of type exit_portal can't be imported."});
    EXPECT_TRUE(host().messages().empty());
}

TEST_F(ImportCommand, GathersAllWarningsInOneBox) {
    const std::string blackbody =
        "<constant><blackbody><temperature>3000</temperature></blackbody></constant>";
    EXPECT_TRUE(
        import(material("Lamp &amp; Co", "<diffuse><albedo>" + blackbody +
                                             "</albedo><bump><constant>1</constant></bump><emission>" +
                                             blackbody + "</emission></diffuse>") +
               material("Glass", "<specular><absorption_layer_transmittance>" + blackbody +
                                     "</absorption_layer_transmittance></specular>")));
    EXPECT_EQ(host().messages(),
              Lines{"Import warnings:\n"
                    "- Albedo blackbody spectrum in Material \"Lamp & Co\" not supported.\n"
                    "- Bump constant in Material \"Lamp & Co\" not supported.\n"
                    "- Emission blackbody spectrum in Material \"Lamp & Co\" not supported.\n"
                    "- Absorption layer blackbody spectrum in Material \"Glass\" not supported."});
}

TEST_F(ImportCommand, ReadsTexturesBesideTheFileAndByFullPaths) {
    std::filesystem::create_directory(folder() + "/sub");
    const std::string image = addImageFile("sub/tex/wood.png");
    const std::string full = addImageFile("full.png");
    const auto texture = [](const std::string& path) {
        return "<texture><path>" + path + "</path></texture>";
    };
    const auto use = [](const char* name, int index) {
        return std::string("<") + name + "><texture><texture_index>" + std::to_string(index) +
               "</texture_index></texture></" + name + ">";
    };
    EXPECT_TRUE(import(material("M", "<diffuse>" + texture("tex\\wood.png") + texture(full) +
                                         texture("C:\\maps\\gone.png") + texture("") + use("bump", 0) +
                                         use("displacement", 1) + use("normal_map", 2) + use("emission", 3) +
                                         use("albedo", 0) + "</diffuse>"),
                       "/sub/in.qzm"));
    const Lines found = lines();
    EXPECT_EQ(found, (Lines{"Loaded texture: " + image, "Loaded texture: " + image, "Loaded texture: " + full,
                            "Failed to load texture from: C:\\maps\\gone.png",
                            "Failed to load texture from: " + Quenza::nativeText(folder() + "/sub/")}));
}

TEST_F(ImportCommand, UnpacksArchivesIntoAFolderEach) {
    addImageFile("wood.png");
    const std::string image = Quenza::fileBytes(folder() + "/wood.png");
    const std::string content =
        "<scenedata>" +
        material("Packed",
                 "<diffuse><texture><path>wood.png</path></texture><albedo><texture><texture_index>0"
                 "</texture_index></texture></albedo></diffuse>") +
        "</scenedata>";
    const std::string archive = pack(
        "Nice.PQZM",
        {{"b.qzm", "<scenedata></scenedata>"}, {"wood.png", image}, {"a.QZM", content}, {"readme.txt", ""}});
    for (const char* const name : {"Nice.PQZM1000000", "Nice.PQZM1000001"}) {
        SCOPED_TRACE(name);
        clear();
        EXPECT_TRUE(runImport(archive));
        const std::string wood = unpacked(std::string(name) + "/wood.png");
        EXPECT_EQ(lines(), (Lines{"a.QZM", "b.qzm", "readme.txt", "wood.png", "Loaded texture: " + wood}));
        ASSERT_EQ(names(), "Packed ");
        EXPECT_EQ(data(shaderOf(find("Packed"), 6118)).GetFilename(BITMAPSHADER_FILENAME).GetUtf8(), wood);
    }
}

TEST_F(ImportCommand, SaysWhyItMakesNothing) {
    const auto file = [this](const char* name, const std::string& content) {
        Quenza::writeBytes(folder() + "/" + name, content);
        return folder() + "/" + name;
    };
    const std::string scene = "<scenedata>" + diffuse(1, "Made") + "<nonsense/></scenedata>";
    const struct {
        std::string file;
        Lines lines;
    } cases[] = {
        {file("in.txt", "<scenedata></scenedata>"), {"no qzm"}},
        {pack("none.pqzm", {{"a.txt", "x"}, {"deep/in.qzm", "<scenedata></scenedata>"}}),
         {"a.txt", "deep", "no qzm"}},
        {file("broken.pqzm", "PK"), {"Could not unpack " + folder() + "/broken.pqzm", "no qzm"}},
        {pack("evil.pqzm", {{"../evil.qzm", "<scenedata></scenedata>"}}),
         {"Could not unpack " + folder() + "/evil.pqzm", "no qzm"}},
    };
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.file);
        EXPECT_FALSE(runImport(entry.file));
        EXPECT_EQ(lines(), entry.lines);
    }
    EXPECT_FALSE(runImport(file("in.qzm", scene)));
    ASSERT_EQ(lines().size(), 1u);
    EXPECT_NE(lines()[0].find("Unknown element type"), std::string::npos) << lines()[0];
    EXPECT_FALSE(runImport(folder() + "/gone.qzm"));
    EXPECT_EQ(lines().size(), 1u);
    EXPECT_EQ(names(), "");
    EXPECT_TRUE(host().messages().empty());

    EXPECT_FALSE(ImportMaterialsCommand().Execute(document()));
    EXPECT_EQ(host().user().interactions().back().text, "Select .qzm/.pqzm file");
    EXPECT_EQ(host().user().interactions().back().answer, std::nullopt);
    EXPECT_FALSE(ImportMaterialsCommand().Execute(nullptr));
}

} // namespace
