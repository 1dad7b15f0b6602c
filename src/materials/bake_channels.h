// SPDX-License-Identifier: MIT
#pragma once

#include "materials/channels.h"

#include <array>

/// A channel that can be baked on an object.
struct BakeChannel {
    ChannelId id;
    /// Its check box in the dialog.
    int32_t checkBox;
    /// Its number in the settings of a bake.
    int32_t setting;
    /// What the dialog's title says meanwhile.
    const char* progress;
};

/// In the order of baking.
inline constexpr std::array<BakeChannel, 7> BAKE_CHANNELS = {{
    {ChannelId::ALBEDO, 10002, 80002, "Baking albedo..."},
    {ChannelId::EXPONENT, 10006, 80004, "Baking exponent..."},
    {ChannelId::BLEND, 10008, 80008, "Baking blend..."},
    {ChannelId::EMISSION, 10003, 80007, "Baking emission..."},
    {ChannelId::BUMP, 10004, 80005, "Baking bump..."},
    {ChannelId::DISPLACEMENT, 10005, 80006, "Baking displacement..."},
    {ChannelId::SIGMA, 10007, 80003, "Baking sigma..."},
}};

/// Number of the chosen file in the settings of a bake.
inline constexpr int32_t BAKE_SETTING_FILE = 80001;
