// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

class BaseMaterial;

/// Switches channels on and off as the material's kind demands; to be called after its kind was set by
/// program. False for null and for a material without a container.
bool updateMaterial(BaseMaterial* material);

/// True when `a` shows `b` by one of the links that its kind uses, itself or through other materials of the
/// plug-in. Cycles of links are no harm.
bool materialReferences(BaseMaterial* a, BaseMaterial* b);

/// The materials of a document that reference `material`, in the document's order. It is among them when it
/// references itself.
std::vector<BaseMaterial*> findReferencing(BaseMaterial* material);
