// SPDX-License-Identifier: MIT
#pragma once

class BaseDocument;
class BaseMaterial;

/// Puts clones of a material of the plug-in, and of all that its look is made of, behind each other at the
/// front of the preview's materials. Links among the clones lead to clones. Each material is cloned once, so
/// that circles of links end. Gives the clone of `material`, or null when it can't be cloned.
BaseMaterial* cloneIntoPreview(const BaseMaterial& material, BaseDocument& stage);
