// SPDX-License-Identifier: MIT
// A dialog from a resource: its gadgets, its user area and its group that is filled anew.
#include "headless/runtime_fixture.h"
#include "headless_plugin/res/c4d_symbols.h"

#include <cmath>

namespace headless {
namespace {

using namespace std::chrono_literals;

class Gadgets : public RuntimeTest {
protected:
    Gadgets() {
        HostOptions options;
        options.drivenClock = true;
        start(std::move(options)).loadPlugin(testPlugin("gadgets"));
        host().open(std::make_unique<Document>());
        newLines();
    }
    Dialogs& dialogs() { return host().dialogs(); }
    GeDialog& open() {
        EXPECT_TRUE(host().executeCommand(TEST_GADGETS));
        newLines();
        return *dialogs().openDialogWith(IDC_AREA);
    }
    /// The numbers of the gadgets from the group on that is filled anew.
    std::vector<int32_t> rows(const GeDialog& dialog) {
        std::vector<int32_t> ids;
        for (const Gadget& gadget : dialogs().state(&dialog)->gadgets) {
            if (!ids.empty() || gadget.id == IDC_ROWS) {
                ids.push_back(gadget.id);
            }
        }
        return ids;
    }
};

TEST_F(Gadgets, TakeWhatAUserCanEnter) {
    GeDialog& dialog = open();
    EXPECT_EQ(dialogs().state(&dialog)->title, String("Gadgets"));
    const struct {
        int32_t gadget;
        GeData value;
        const char* line;
    } cases[] = {
        {IDC_NUMBER, GeData(0.31), "6104 = 31%"},
        {IDC_NUMBER, GeData(7), "6104 = 46%"},
        {IDC_NUMBER, GeData(-1e30), "6104 = 24%"},
        {IDC_NUMBER, GeData(std::nan("")), nullptr},
        {IDC_METHOD, GeData(int32_t{IDC_SECOND}), "6101 = 610300%"},
        {IDC_METHOD, GeData(int32_t{IDC_METHOD}), nullptr},
        {IDC_AREA, GeData(1), nullptr},
        {IDC_ROWS, GeData(1), nullptr},
        {IDC_CHECK, GeData(true), "6105 = 100%"},
        {IDC_COLOUR, GeData(Vector(2.0f, 0.0f, 0.0f)), "colour 100%, brightness 100%"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(dialogs().enter(&dialog, test.gadget, test.value), test.line != nullptr) << test.gadget;
        EXPECT_EQ(newLines(), test.line ? Lines{test.line} : Lines{});
    }
    EXPECT_TRUE(dialogs().press(&dialog, IDC_CHECK)) << "turns it over";
    EXPECT_TRUE(dialogs().enterColour(&dialog, IDC_COLOUR, Vector(0.5f, 0.0f, 0.0f), 9.0f));
    EXPECT_FALSE(dialogs().enterColour(&dialog, IDC_CHECK, Vector(), 1.0f));
    EXPECT_EQ(newLines(), (Lines{"6105 = 0%", "colour 50%, brightness 500%"}));
}

TEST_F(Gadgets, AreFoundByNameAndTextFromAScript) {
    host().user().addDialogActions({{1ms, UserAction::Kind::press, 0, GeData(), nullptr, "idc_check"},
                                    {2ms, UserAction::Kind::press, 0, GeData(), nullptr, "Check"},
                                    {3ms, UserAction::Kind::press, 0, GeData(), nullptr, "Chuck"}});
    open();
    host().advance(5ms);
    EXPECT_EQ(newLines(), (Lines{"6105 = 100%", "6105 = 0%"}));
    EXPECT_EQ(host().errors().lines(), Lines{"The dialog \"Gadgets\" has no gadget Chuck that can be used"});
}

TEST_F(Gadgets, OfAGroupAreFilledAnew) {
    GeDialog& dialog = open();
    EXPECT_EQ(rows(dialog), (std::vector<int32_t>{IDC_ROWS, IDC_ROW, 0, IDC_REBUILD}));
    dialogs().press(&dialog, IDC_REBUILD);
    EXPECT_EQ(rows(dialog), (std::vector<int32_t>{IDC_ROWS, 6210, IDC_ROW, 6310, 0, 0, IDC_REBUILD}));
    dialogs().press(&dialog, IDC_REBUILD);
    EXPECT_EQ(rows(dialog),
              (std::vector<int32_t>{IDC_ROWS, 6210, IDC_ROW, 6310, 0, 6211, 6111, 6311, 0, 0, IDC_REBUILD}));
    EXPECT_TRUE(dialogs().press(&dialog, IDC_ROW + 1));
}

/// The area lies beside the number, in the lower row of a group, with five rows outside.
TEST_F(Gadgets, LeaveTheirWindowToAnAreaThatDrawsItself) {
    EXPECT_TRUE(host().executeCommand(TEST_GADGETS));
    EXPECT_EQ(newLines(), (Lines{"sized 240 150", "changed"}));
    GeDialog& dialog = *dialogs().openDialogWith(IDC_AREA);
    UserAreas& areas = dialogs().areas();
    const UserAreaState& area = *areas.find(&dialog, IDC_AREA);
    const auto pixel = [&](int32_t x, int32_t y) {
        const Vector colour = area.image.pixel(x, y);
        return std::vector<int>{toByte(colour.x), toByte(colour.y), toByte(colour.z)};
    };
    using Pixel = std::vector<int>;
    EXPECT_EQ(area.drawings, 1);
    EXPECT_EQ(pixel(0, 0), (Pixel{0, 0, 255})) << "a part of the bitmap";
    EXPECT_EQ(pixel(1, 0), (Pixel{255, 255, 255}));
    EXPECT_EQ(pixel(239, 149), (Pixel{255, 0, 0})) << "the bitmap, cut off";

    host().advance(250ms);
    EXPECT_EQ(area.drawings, 3) << "two turns of the timer";
    EXPECT_EQ(pixel(120, 70), (Pixel{153, 153, 153}));
    EXPECT_TRUE(areas.resize(&dialog, IDC_AREA, 8, 4));
    EXPECT_FALSE(areas.resize(&dialog, IDC_AREA, 0, 4));
    EXPECT_FALSE(areas.resize(&dialog, IDC_AREA, 1 << 20, 1 << 20));
    EXPECT_EQ(newLines(), Lines{"sized 8 4"});
    EXPECT_EQ(pixel(7, 3), (Pixel{255, 0, 0}));

    EXPECT_TRUE(dialogs().requestClose(&dialog));
    EXPECT_FALSE(areas.find(&dialog, IDC_AREA));
    host().advance(1s);
    EXPECT_TRUE(host().restoreLayout(TEST_GADGETS, 10, 10));
    EXPECT_EQ(newLines(), Lines{"sized 30 20"}) << "what it needs at least";
}

} // namespace
} // namespace headless
