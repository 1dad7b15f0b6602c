// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

class BaseContainer;

/// A channel that a kind switches on or off, whatever the artist wants.
struct ForcedFlag {
    int32_t flag;
    bool isOn;
};

/// A link to another material, by the number of the parameter.
struct MaterialLink {
    int32_t link;
    /// Flag of the channel that must be on for the link to count; 0 for none.
    int32_t condition = 0;
    /// What a flag that was never set stands for.
    bool isOnByDefault = false;

    /// False when the material's channel is off that has the link.
    bool counts(const BaseContainer& material) const;
};

/// What a kind of material shows, forces and uses.
struct KindInfo {
    /// MAT_KIND_...
    int32_t kind;
    /// Enable flags of the channels that the kind has.
    std::span<const int32_t> visibleFlags;
    std::span<const ForcedFlag> forcedFlags;
    std::span<const MaterialLink> usedLinks;
    std::span<const MaterialLink> referenceLinks;

    bool hasChannel(int32_t flag) const;
};

/// Null for a number that is no kind.
const KindInfo* kindInfo(int32_t kind);

// A number that is no kind has links too: the scene mixes such a material with its partner.

/// Links to the materials that a kind keeps from being removed as unused.
std::span<const MaterialLink> usedLinks(int32_t kind);
/// Links to the materials whose look is part of a material's of a kind.
std::span<const MaterialLink> referenceLinks(int32_t kind);

/// An enable flag and the group of the page that it shows.
struct FlagGroup {
    int32_t flag;
    int32_t group;
};

/// All enable flags: of the channels and of groups of settings.
std::span<const FlagGroup> flagGroups();

/// Every link to another material, of whatever kind.
std::span<const int32_t> materialLinks();
