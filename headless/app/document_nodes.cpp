// SPDX-License-Identifier: MIT
#include "headless/app/document_nodes.h"

namespace headless {

std::vector<Object*> objectsOf(const Document& document) {
    std::vector<Object*> objects;
    Object* object = document.objects().first();
    while (object) {
        objects.push_back(object);
        if (object->children().first()) {
            object = object->children().first();
            continue;
        }
        while (object && !object->next) {
            object = object->parent();
        }
        object = object ? object->next : nullptr;
    }
    return objects;
}

std::vector<Material*> materialsOf(const Document& document) {
    std::vector<Material*> materials;
    for (Material* material = document.materials().first(); material; material = material->next) {
        materials.push_back(material);
    }
    return materials;
}

} // namespace headless
