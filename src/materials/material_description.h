// SPDX-License-Identifier: MIT
#pragma once

class BaseList2D;
class Description;

/// Shapes the loaded page of a material by its values: the parameters of the numbered channels, the lists of
/// light layers and of measured metals, and what is hidden. Puts MAT_PHONG_NK_INDEX right. False without a
/// container.
bool describeMaterial(BaseList2D& material, Description& description);
