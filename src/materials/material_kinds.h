// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

/// A channel that a kind switches on or off, whatever the artist wants.
struct ForcedFlag {
    int32_t flag;
    bool isOn;
};

/// A link to another material. `condition` is the flag of the channel that must be on for the link to count;
/// 0 for none.
struct MaterialLink {
    int32_t link;
    int32_t condition = 0;
};

/// What a kind of material shows, forces and uses.
struct KindInfo {
    /// MAT_KIND_...
    int32_t kind;
    /// Enable flags of the channels that the kind has.
    std::span<const int32_t> visibleFlags;
    std::span<const ForcedFlag> forcedFlags;
    /// Materials that the kind keeps from being removed as unused.
    std::span<const MaterialLink> usedLinks;
    /// Materials whose look is part of this one's.
    std::span<const MaterialLink> referenceLinks;

    bool hasChannel(int32_t flag) const;
};

/// Null for a number that is no kind.
const KindInfo* kindInfo(int32_t kind);

/// An enable flag and the group of the page that it shows.
struct FlagGroup {
    int32_t flag;
    int32_t group;
};

/// All enable flags: of the channels and of groups of settings.
std::span<const FlagGroup> flagGroups();

/// Every link to another material, of whatever kind.
std::span<const int32_t> materialLinks();
