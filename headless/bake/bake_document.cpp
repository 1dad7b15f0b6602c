// SPDX-License-Identifier: MIT
#include "headless/bake/bake.h"

#include "headless/build/caches.h"
#include "headless/model/node_copies.h"
#include "headless/model/tag.h"

namespace headless {

namespace {

UVWTagNode* uvwOf(const Object& object) {
    for (Tag* tag = object.tags().first(); tag; tag = tag->next) {
        if (tag->type() == Tuvw) {
            return static_cast<UVWTagNode*>(tag);
        }
    }
    return nullptr;
}

/// The first polygon object of a branch with texture coordinates.
Object* texturedIn(Object* branch) {
    for (Object* object = branch; object; object = object->nextInBranch(*branch)) {
        if (asPolygons(object) && uvwOf(*object)) {
            return object;
        }
    }
    return nullptr;
}

/// Finds the polygons, and the texture coordinates where the bake's document has none yet.
bool findPolygons(BakeDocument& document) {
    Object* object = document.uvw ? document.uvw->object() : document.texture->object();
    if (!document.uvw && !asPolygons(object)) {
        buildCaches(*object);
        object = texturedIn(object->cache());
    }
    if (object && !document.uvw) {
        document.uvw = uvwOf(*object);
    }
    document.polygons = asPolygons(object);
    return document.uvw && document.polygons;
}

/// A polygon object is copied alone; a generator needs what is below it.
Owned neededOf(const Object& object) {
    return asPolygons(&object) ? Owned::parts : Owned::all;
}

} // namespace

std::unique_ptr<BakeDocument> makeBakeDocument(const Document& source, const TextureTagNode* texture,
                                               const UVWTagNode* uvw, int32_t& error) {
    const Object* const object = texture ? texture->object() : nullptr;
    const Object* const owner = uvw && uvw->object() ? uvw->object() : object;
    const Material* const material = texture ? texture->material() : nullptr;
    error = !object ? BAKE_TEX_ERR_NO_TEXTURE_TAG : !material ? BAKE_TEX_ERR_NO_MATERIAL : BAKE_TEX_ERR_NONE;
    if (error != BAKE_TEX_ERR_NONE) {
        return nullptr;
    }
    auto made = std::make_unique<BakeDocument>();
    made->assign(source);
    NodeCopies copies;
    std::unique_ptr<Node> objectCopy = copies.copy(*object, neededOf(*object));
    std::unique_ptr<Node> ownerCopy = owner != object ? copies.copy(*owner, neededOf(*owner)) : nullptr;
    std::unique_ptr<Node> materialCopy = copies.copy(*material);
    copies.redirectLinks();
    made->appendOwned(std::move(materialCopy));
    made->appendOwned(std::move(objectCopy));
    if (ownerCopy) {
        made->appendOwned(std::move(ownerCopy));
    }
    made->texture = static_cast<TextureTagNode*>(copies.copyOf(texture));
    made->uvw = static_cast<UVWTagNode*>(copies.copyOf(uvw));
    if (!findPolygons(*made)) {
        error = BAKE_TEX_ERR_NO_UVW_TAG;
        return nullptr;
    }
    return made;
}

} // namespace headless
