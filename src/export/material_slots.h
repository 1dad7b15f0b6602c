// SPDX-License-Identifier: MIT
#pragma once

#include "export/mesh_arrays.h"
#include "foundation/uid.h"
#include "host/baseselect.h"
#include "host/object.h"
#include "host/tag.h"

#include <vector>

struct ExportContext;

/// One material of a polygon object: a polygon selection, or what is in none.
struct MaterialSlot {
    /// Null when no texture tag applies.
    TextureTag* tag = nullptr;
    /// The slot's selection as it is: polygons can stand in more than one slot, and indices can be out of
    /// range.
    BaseSelect polygons;
};

/// The slots in their order: every polygon selection tag that holds polygons, from the left, then the
/// remainder. An object without selections has one slot.
std::vector<MaterialSlot> listMaterialSlots(const PolygonObject* object);

/// The texture tags of the slots, each once, in slot order.
std::vector<TextureTag*> listObjectMaterials(const std::vector<MaterialSlot>& slots);

/// The polygons in the order in which they leave, slot by slot. The first slot wins a polygon that lies in
/// two.
PolygonRuns polygonRuns(const std::vector<MaterialSlot>& slots, int32_t polygonCount);

/// The materials of the slots. A slot without a tag or with a material that isn't in the scene has the
/// default one.
std::vector<Quenza::SceneNodeUID> listSlotMaterials(const ExportContext& context,
                                                    const std::vector<MaterialSlot>& slots,
                                                    bool useLightMaterial);
