// SPDX-License-Identifier: MIT
#include "headless/runtime/dialog_layout.h"

#include <algorithm>

namespace headless {

namespace {

/// Pixels of a gadget that asks for no size.
constexpr int32_t USUAL_WIDTH = 80;
constexpr int32_t USUAL_HEIGHT = 16;

/// What a gadget or group takes, and for the one with the area what stands beside the area in it.
struct Extent {
    int32_t width = 0;
    int32_t height = 0;
    bool holdsArea = false;

    void putBelow(const Extent& row) {
        width = row.holdsArea ? row.width : holdsArea ? width : std::max(width, row.width);
        height += row.height;
        holdsArea = holdsArea || row.holdsArea;
    }
    void putBeside(const Extent& cell) {
        width += cell.width;
        height = cell.holdsArea ? cell.height : holdsArea ? height : std::max(height, cell.height);
        holdsArea = holdsArea || cell.holdsArea;
    }
};

class Measure {
public:
    Measure(const std::vector<Gadget>& gadgets, int32_t area) : gadgets_(gadgets), area_(area) {}

    /// Up to the end of the group, which is passed over.
    Extent group(int32_t columns) {
        Extent whole;
        Extent row;
        int32_t inRow = 0;
        while (next_ < gadgets_.size() && gadgets_[next_].kind != GADGET_GROUP_END) {
            row.putBeside(cell());
            if (++inRow >= columns) {
                whole.putBelow(row);
                row = Extent();
                inRow = 0;
            }
        }
        whole.putBelow(row);
        ++next_;
        return whole;
    }

private:
    Extent cell() {
        const Gadget& gadget = gadgets_[next_++];
        if (gadget.isGroup()) {
            return group(gadget.columns);
        }
        if (gadget.id == area_) {
            return {0, 0, true};
        }
        return {gadget.width > 0 ? gadget.width : USUAL_WIDTH,
                gadget.height > 0 ? gadget.height : USUAL_HEIGHT, false};
    }

    const std::vector<Gadget>& gadgets_;
    const int32_t area_;
    size_t next_ = 0;
};

} // namespace

AreaSize spaceForArea(const DialogState& dialog, int32_t gadget) {
    const Extent rest = Measure(dialog.gadgets, gadget).group(1);
    return {std::max(dialog.width - rest.width, 0), std::max(dialog.height - rest.height, 0)};
}

} // namespace headless
