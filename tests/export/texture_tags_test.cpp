// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "export/texture_tags.h"
#include "host/ids.h"

using TextureTags = ExporterTest;

TEST_F(TextureTags, RightmostMatchWinsAndAnUnrestrictedTagEndsTheSearch) {
    // Texture tags from left to right by their restriction, first the parent's. The found one is given by its
    // place: p for the parent's, o for the object's.
    const struct {
        std::vector<const char*> parent;
        std::vector<const char*> object;
        const char* forSelection;
        const char* forRest;
    } cases[] = {
        {{}, {}, "", ""},
        {{}, {""}, "o0", "o0"},
        {{}, {"", ""}, "o1", "o1"},
        {{}, {"", "wall"}, "o1", "o0"},
        {{}, {"wall", ""}, "o1", "o1"},
        {{}, {"wall", "wall", "floor"}, "o1", ""},
        {{}, {"Wall"}, "", ""},
        {{""}, {"floor"}, "p0", "p0"},
        {{"wall", "floor"}, {"floor"}, "p0", ""},
        {{"", "wall"}, {""}, "o0", "o0"},
    };
    for (const auto& c : cases) {
        BaseObject* const parent = add(Onull, "parent");
        PolygonObject* const object = addQuad("object", parent);
        const SelectionTag* const selection = addSelection(object, "wall", {0});
        std::vector<std::pair<const TextureTag*, std::string>> places{{nullptr, ""}};
        for (const char* const restriction : c.parent) {
            places.emplace_back(addTexture(parent, restriction), "p" + std::to_string(places.size() - 1));
        }
        const size_t before = places.size();
        for (const char* const restriction : c.object) {
            places.emplace_back(addTexture(object, restriction),
                                "o" + std::to_string(places.size() - before));
        }
        const auto placeOf = [&places](const TextureTag* tag) {
            for (const auto& [known, place] : places) {
                if (known == tag) {
                    return place;
                }
            }
            return std::string("unknown");
        };
        EXPECT_EQ(placeOf(findTextureTag(object, selection)), c.forSelection) << &c - cases;
        EXPECT_EQ(placeOf(findTextureTag(object, nullptr)), c.forRest) << &c - cases;
    }
}
