// SPDX-License-Identifier: MIT
#include "materials/material_kinds.h"

#include "host/basecontainer.h"
#include "materials/channels.h"
#include "shared/parameter_ids.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int32_t DIFFUSE_FLAGS[] = {MAT_BLEND_ENABLED,        MAT_ALBEDO_ENABLED,   MAT_BUMP_ENABLED,
                                     MAT_DISPLACEMENT_ENABLED, MAT_EMISSION_ENABLED, MAT_NORMAL_MAP_ENABLED};
constexpr int32_t ORENNAYAR_FLAGS[] = {MAT_BLEND_ENABLED,        MAT_ALBEDO_ENABLED,   MAT_BUMP_ENABLED,
                                       MAT_DISPLACEMENT_ENABLED, MAT_EMISSION_ENABLED, MAT_SIGMA_ENABLED,
                                       MAT_NORMAL_MAP_ENABLED};
constexpr int32_t PHONG_FLAGS[] = {MAT_BLEND_ENABLED,    MAT_ALBEDO_ENABLED,       MAT_PHONG_ENABLED,
                                   MAT_BUMP_ENABLED,     MAT_DISPLACEMENT_ENABLED, MAT_EMISSION_ENABLED,
                                   MAT_EXPONENT_ENABLED, MAT_NORMAL_MAP_ENABLED,   MAT_CHANNEL_13000_ENABLED};
constexpr int32_t DIFFUSE_TRANSMITTER_FLAGS[] = {
    MAT_BLEND_ENABLED,    MAT_ALBEDO_ENABLED, MAT_BUMP_ENABLED,      MAT_DISPLACEMENT_ENABLED,
    MAT_EMISSION_ENABLED, MAT_MEDIUM_ENABLED, MAT_NORMAL_MAP_ENABLED};
constexpr int32_t SPECULAR_FLAGS[] = {
    MAT_BLEND_ENABLED,  MAT_BUMP_ENABLED,     MAT_DISPLACEMENT_ENABLED,     MAT_EMISSION_ENABLED,
    MAT_MEDIUM_ENABLED, MAT_SPECULAR_ENABLED, MAT_ABSORPTION_LAYER_ENABLED, MAT_NORMAL_MAP_ENABLED};
constexpr int32_t GLOSSY_TRANSPARENT_FLAGS[] = {
    MAT_BLEND_ENABLED,    MAT_BUMP_ENABLED,   MAT_DISPLACEMENT_ENABLED,     MAT_EMISSION_ENABLED,
    MAT_EXPONENT_ENABLED, MAT_MEDIUM_ENABLED, MAT_ABSORPTION_LAYER_ENABLED, MAT_NORMAL_MAP_ENABLED};
constexpr int32_t BLEND_FLAGS[] = {MAT_BLEND_ENABLED};
constexpr int32_t NULL_FLAGS[] = {MAT_BLEND_ENABLED};
constexpr int32_t COATING_FLAGS[] = {
    MAT_BLEND_ENABLED,         MAT_BUMP_ENABLED,         MAT_DISPLACEMENT_ENABLED,  MAT_EMISSION_ENABLED,
    MAT_NORMAL_MAP_ENABLED,    MAT_COATING_ENABLED,      MAT_CHANNEL_10000_ENABLED, MAT_CHANNEL_11000_ENABLED,
    MAT_CHANNEL_12000_ENABLED, MAT_CHANNEL_13000_ENABLED};
constexpr int32_t THIN_FLAGS[] = {
    MAT_BLEND_ENABLED,         MAT_BUMP_ENABLED,          MAT_DISPLACEMENT_ENABLED,
    MAT_EMISSION_ENABLED,      MAT_NORMAL_MAP_ENABLED,    MAT_CHANNEL_12000_ENABLED,
    MAT_THIN_ENABLED,          MAT_CHANNEL_13000_ENABLED, MAT_CHANNEL_14000_ENABLED,
    MAT_CHANNEL_15000_ENABLED, MAT_CHANNEL_16000_ENABLED, MAT_CHANNEL_17000_ENABLED};

constexpr ForcedFlag ALBEDO_ON[] = {{MAT_ALBEDO_ENABLED, true}};
constexpr ForcedFlag ALBEDO_WITHOUT_PHONG[] = {{MAT_ALBEDO_ENABLED, true}, {MAT_PHONG_ENABLED, false}};
constexpr ForcedFlag ALBEDO_OFF[] = {{MAT_ALBEDO_ENABLED, false}};
constexpr ForcedFlag MASK_ALONE[] = {{MAT_BLEND_ENABLED, true}, {MAT_ALBEDO_ENABLED, false}};

// A material of any kind can be mixed with another.
constexpr MaterialLink MIXED_WITH = {MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED};

constexpr MaterialLink MIX_LINKS[] = {MIXED_WITH};
constexpr MaterialLink BLEND_LINKS[] = {{MAT_BLEND_MATERIAL_A}, {MAT_BLEND_MATERIAL_B}};
constexpr MaterialLink COATING_LINKS[] = {{MAT_COATING_SUBSTRATE}, MIXED_WITH};
constexpr MaterialLink THIN_USED[] = {{MAT_THIN_FRONT}, {MAT_THIN_BACK}, {MAT_COATING_SUBSTRATE}, MIXED_WITH};
constexpr MaterialLink THIN_REFERENCES[] = {{MAT_THIN_FRONT}, {MAT_THIN_BACK}, MIXED_WITH};
constexpr MaterialLink MEDIUM_LINKS[] = {{MAT_MEDIUM_SOURCE}, MIXED_WITH};
// Its medium is in the scene unless the channel was switched off.
constexpr MaterialLink TRANSMITTER_LINKS[] = {{MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, true}, MIXED_WITH};

constexpr KindInfo KINDS[] = {
    {MAT_KIND_DIFFUSE, DIFFUSE_FLAGS, ALBEDO_ON, MIX_LINKS, MIX_LINKS},
    {MAT_KIND_ORENNAYAR, ORENNAYAR_FLAGS, ALBEDO_ON, MIX_LINKS, MIX_LINKS},
    {MAT_KIND_PHONG, PHONG_FLAGS, ALBEDO_ON, MIX_LINKS, MIX_LINKS},
    {MAT_KIND_DIFFUSE_TRANSMITTER, DIFFUSE_TRANSMITTER_FLAGS, ALBEDO_WITHOUT_PHONG, MIX_LINKS,
     TRANSMITTER_LINKS},
    {MAT_KIND_SPECULAR, SPECULAR_FLAGS, ALBEDO_OFF, MIX_LINKS, MEDIUM_LINKS},
    {MAT_KIND_BLEND, BLEND_FLAGS, MASK_ALONE, BLEND_LINKS, BLEND_LINKS},
    {MAT_KIND_GLOSSY_TRANSPARENT, GLOSSY_TRANSPARENT_FLAGS, ALBEDO_OFF, MIX_LINKS, MEDIUM_LINKS},
    {MAT_KIND_NULL, NULL_FLAGS, ALBEDO_OFF, MIX_LINKS, MIX_LINKS},
    {MAT_KIND_COATING, COATING_FLAGS, ALBEDO_OFF, COATING_LINKS, COATING_LINKS},
    {MAT_KIND_DOUBLE_SIDED_THIN, THIN_FLAGS, ALBEDO_OFF, THIN_USED, THIN_REFERENCES},
};

constexpr int32_t MATERIAL_LINKS[] = {MAT_BLEND_MATERIAL_A, MAT_BLEND_MATERIAL_B, MAT_COATING_SUBSTRATE,
                                      MAT_THIN_FRONT,       MAT_THIN_BACK,        MAT_MEDIUM_SOURCE};

/// Groups of settings that are no channel.
constexpr FlagGroup SETTINGS_GROUPS[] = {{MAT_PHONG_ENABLED, MAT_GROUP_PHONG},
                                         {MAT_MEDIUM_ENABLED, MAT_GROUP_MEDIUM},
                                         {MAT_SPECULAR_ENABLED, MAT_GROUP_SPECULAR},
                                         {MAT_COATING_ENABLED, MAT_GROUP_COATING},
                                         {MAT_THIN_ENABLED, MAT_GROUP_THIN}};

std::vector<FlagGroup> allFlagGroups() {
    std::vector<FlagGroup> all;
    for (const Channel& entry : channels()) {
        all.push_back({entry.enable, entry.group});
    }
    all.insert(all.end(), std::begin(SETTINGS_GROUPS), std::end(SETTINGS_GROUPS));
    return all;
}

} // namespace

bool MaterialLink::counts(const BaseContainer& material) const {
    return condition == 0 || material.GetBool(condition, isOnByDefault);
}

bool KindInfo::hasChannel(int32_t flag) const {
    return std::ranges::find(visibleFlags, flag) != visibleFlags.end();
}

const KindInfo* kindInfo(int32_t kind) {
    const KindInfo* const found = std::ranges::find(KINDS, kind, &KindInfo::kind);
    return found != std::end(KINDS) ? found : nullptr;
}

std::span<const MaterialLink> usedLinks(int32_t kind) {
    const KindInfo* const info = kindInfo(kind);
    return info ? info->usedLinks : MIX_LINKS;
}

std::span<const MaterialLink> referenceLinks(int32_t kind) {
    const KindInfo* const info = kindInfo(kind);
    return info ? info->referenceLinks : MIX_LINKS;
}

std::span<const FlagGroup> flagGroups() {
    static const std::vector<FlagGroup> all = allFlagGroups();
    return all;
}

std::span<const int32_t> materialLinks() {
    return MATERIAL_LINKS;
}
