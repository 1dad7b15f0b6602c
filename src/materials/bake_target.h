// SPDX-License-Identifier: MIT
#pragma once

class BaseDocument;
class BaseMaterial;
class BaseObject;
class TextureTag;
class UVWTag;

/// The selected texture tag, when it alone is selected, carries a material of the plug-in and lies on a
/// polygon object; else null.
TextureTag* findBakeTag(const BaseDocument* document);

/// The texture coordinates that a bake of `tag` uses, on the tag's object. A tag that isn't projected by
/// coordinates gets coordinates of its own from its projection, and uses these from then on. All of it can be
/// undone within the undo step that is open. Null when the host can't make them.
UVWTag* prepareBakeUVW(BaseDocument* document, TextureTag* tag);

/// What the artist is told when there is nothing to bake to.
inline constexpr const char* NO_BAKE_UVW = "The object has no texture coordinates to bake to.";

/// The copies that a bake works on, in the document, so that the artist's own object and material stay as
/// they are.
struct BakeTarget {
    BaseObject* object = nullptr;
    BaseMaterial* material = nullptr;
    TextureTag* tag = nullptr;
    UVWTag* uvw = nullptr;
};

/// Makes the copies within the undo step that is open. Members are null when that failed.
BakeTarget makeBakeTarget(BaseDocument* document, const TextureTag* tag);
