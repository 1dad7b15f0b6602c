// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

namespace {

class Diff : public Tool {
protected:
    Outcome diff(const std::string& text, const std::vector<std::string>& flags = {}) {
        write("other.qzs", text);
        std::vector<std::string> words = {"diff", path("scene.qzs"), path("other.qzs")};
        words.insert(words.end(), flags.begin(), flags.end());
        return run(words);
    }
    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
        return text;
    }
};

TEST_F(Diff, FindsNoneBetweenEqualScenes) {
    const Outcome outcome = diff(soundScene());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(diff(replaced(soundScene(), ">0.5<", ">5e-1<")).out, "") << "numbers count, not their texts";
}

TEST_F(Diff, NamesNodesAndFields) {
    const struct {
        std::string from;
        std::string to;
        std::string lines;
    } cases[] = {
        {"<radius>0.5", "<radius>0.25", "~ sphere 10 \"Ball\": radius: '0.5' -> '0.25'\n"},
        {"<name>Eye", "<name>Eye 2", "~ camera 3 \"Eye\": name: 'Eye' -> 'Eye 2'\n"},
        {"<pos>0 -10 1.5", "<pos>0 -10 2", "~ camera 3 \"Eye\": keyframe/pos: '0 -10 1.5' -> '0 -10 2'\n"},
        {"<material_uid>7", "<material_uid>6",
         "~ model2 9 \"Floor\": materials/material_uid[2]: '7' -> '6'\n"},
        {"<material_uid>7</material_uid>", "<material_uid>7</material_uid><material_uid>6</material_uid>",
         "~ model2 9 \"Floor\": materials/material_uid[3]: added '6'\n"},
        {"<width>320", "<width>321", "~ renderer_settings 2 \"\": width: '320' -> '321'\n"},
        {"images/wood.png", "images/../images/wood.png",
         "~ material 7 \"Wood\": diffuse/texture/path: 'images/wood.png' -> 'images/../images/wood.png'\n"},
        {"<uid>10</uid>", "<uid>12</uid>", "- sphere 10 \"Ball\"\n+ sphere 12 \"Ball\"\n"},
        {"<author></author>", "<author>two\nlines</author>",
         "~ metadata 1 \"\": author: '' -> 'two\\nlines'\n"},
    };
    for (const auto& test : cases) {
        const Outcome outcome = diff(edited(test.from, test.to));
        EXPECT_EQ(outcome.out, test.lines);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 1);
    }
}

TEST_F(Diff, LooksPastUIDsWhenAsked) {
    std::string renumbered = soundScene();
    for (const int uid : {11, 10, 9, 8, 7, 6})
        renumbered =
            replaced(renumbered, "uid>" + std::to_string(uid) + "<", "uid>" + std::to_string(uid + 30) + "<");
    const Outcome strict = diff(renumbered);
    EXPECT_EQ(strict.status, 1);
    EXPECT_NE(strict.out.find("- sphere 10 \"Ball\"\n"), std::string::npos);
    EXPECT_EQ(diff(renumbered, {"--ignore-uids"}).out, "");
    EXPECT_EQ(diff(renumbered, {"--ignore-uids"}).status, 0);
    // The sphere now refers to the other material.
    const Outcome loose = diff(replaced(renumbered, "<radius>0.5</radius>\n\t\t<material_uid>36",
                                        "<radius>0.5</radius>\n\t\t<material_uid>37"),
                               {"--ignore-uids"});
    EXPECT_EQ(loose.out, "~ sphere 10 \"Ball\": material_uid: '6' -> '37'\n");
    EXPECT_EQ(loose.status, 1);
}

TEST_F(Diff, FailsApartFromDifferences) {
    EXPECT_EQ(run({"diff", path("scene.qzs"), path("none.qzs")}).status, 2);
    const Outcome outcome = diff(edited("<geometry_uid>8", "<geometry_uid>80"));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors,
              "quenza-scene: " + path("other.qzs") +
                  ": While processing node 'Floor', UID 9:  Failed to find geometry for UID 80\n");
}

} // namespace
