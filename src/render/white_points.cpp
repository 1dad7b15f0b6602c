// SPDX-License-Identifier: MIT
#include "render/white_points.h"

#include "c4d_symbols.h"

#include <algorithm>
#include <iterator>

namespace {

struct WhitePointEntry {
    int32_t entry;
    Chromaticity white;
};

// The dialog's own values, which are not to the digit those of the camera tag's list.
constexpr WhitePointEntry ENTRIES[] = {
    {IDC_WHITE_POINT_E, {0.33304f, 0.33304f}},     {IDC_WHITE_POINT_D50, {0.34546f, 0.35834f}},
    {IDC_WHITE_POINT_D55, {0.33212f, 0.3473f}},    {IDC_WHITE_POINT_D65, {0.31234f, 0.3289f}},
    {IDC_WHITE_POINT_D75, {0.299f, 0.31464f}},     {IDC_WHITE_POINT_A, {0.44712f, 0.4071f}},
    {IDC_WHITE_POINT_B, {0.34822f, 0.35144f}},     {IDC_WHITE_POINT_C, {0.31004f, 0.31602f}},
    {IDC_WHITE_POINT_9300K, {0.28474f, 0.29302f}}, {IDC_WHITE_POINT_F2, {0.37168f, 0.3749f}},
    {IDC_WHITE_POINT_F7, {0.3128f, 0.3289f}},      {IDC_WHITE_POINT_F11, {0.38042f, 0.37674f}},
};

} // namespace

Chromaticity whitePointOfEntry(int32_t entry) {
    const auto found = std::ranges::find(ENTRIES, entry, &WhitePointEntry::entry);
    return found != std::end(ENTRIES) ? found->white : whitePointOfEntry(IDC_WHITE_POINT_D65);
}

int32_t entryOfWhitePoint(const Chromaticity& white) {
    const auto found = std::ranges::find_if(ENTRIES, [&](const WhitePointEntry& candidate) {
        return candidate.white.x == white.x && candidate.white.y == white.y;
    });
    return found != std::end(ENTRIES) ? found->entry : 0;
}
