// SPDX-License-Identifier: MIT
#include "reading/parsed_element.h"
#include "reading/scene_fixture.h"

#include <sstream>
#include <string>
#include <vector>

namespace Quenza {

namespace {

class Grammar : public SceneFiles {
protected:
    /// Elements with their children as the writer gives them, and others that it gives in another form or
    /// order.
    const std::vector<std::string> written = elementsOf("elements_written.txt"),
                                   only_read = elementsOf("elements_read.txt");

    static std::string sceneOf(const std::string& element) {
        return MATERIALS + (TRIANGLE + element) +
               "<parametric_surface><uid>31</uid><shader><shader>s</shader></shader></parametric_surface>";
    }
    /// Of a file, one a line.
    static std::vector<std::string> elementsOf(const std::string& file) {
        std::istringstream text(fileBytes(std::string(QUENZA_SOURCE_DIR "/tests/reading/golden/") + file));
        std::vector<std::string> elements;
        for (std::string line; std::getline(text, line);)
            elements.push_back(line);
        return elements;
    }

    static std::string onOneLine(const std::string& text) {
        std::string line;
        for (const char c : text)
            if (c != '\n' && c != '\t')
                line += c;
        return line;
    }
};

TEST_F(Grammar, ElementsAreReadWithAllTheirChildren) {
    EXPECT_FALSE(written.empty() || only_read.empty());
    for (const std::string& element : written) {
        const Ref<SceneNodeRoot> root = readElements(sceneOf(element));
        bind(*root);
        std::string text;
        for (const Ref<SceneNode>& node : root->getChildren())
            if (node->getUID().value() == 70)
                text += onOneLine(xmlOf(*node));
        EXPECT_EQ(text, element);
    }
    for (const std::string& element : only_read)
        EXPECT_EQ(refusal(sceneOf(element)), "no exception") << element;
}

/// Wherever it stands, an element that nobody knows is told.
TEST_F(Grammar, UnknownChildrenAreRefusedEverywhere) {
    for (const std::vector<std::string>& elements : {written, only_read})
        for (const std::string& element : elements)
            for (const std::string& strange : withStrangers(element))
                EXPECT_TRUE(refusal(sceneOf(strange)).starts_with(STRANGER)) << strange << "\n"
                                                                             << refusal(sceneOf(strange));
}

} // namespace

} // namespace Quenza
