// SPDX-License-Identifier: MIT
#include "headless/build/fingerprints.h"

#include "headless/build/content_hash.h"
#include "headless/model/handles.h"
#include "host/inexclude.h"

#include <unordered_set>

namespace headless {

namespace {

void add(ContentHash& hash, const void* pointer) {
    hash.add(reinterpret_cast<uintptr_t>(pointer));
}

void add(ContentHash& hash, const std::string& text) {
    hash.addArray(std::span(text.data(), text.size()));
}

void add(ContentHash& hash, const BaseContainer& container);

void add(ContentHash& hash, const GeData& value) {
    hash.add(static_cast<uint64_t>(value.GetType()));
    switch (value.GetType()) {
    case DA_LONG:
        hash.addBits(value.GetLong());
        break;
    case DA_REAL:
        hash.addBits(value.GetReal());
        break;
    case DA_VECTOR:
        hash.addBits(value.GetVector());
        break;
    case DA_MATRIX:
        hash.addBits(value.GetMatrix());
        break;
    case DA_TIME:
        hash.addBits(value.GetTime().Get());
        break;
    case DA_STRING:
        add(hash, value.GetString().GetUtf8());
        break;
    case DA_FILENAME:
        add(hash, value.GetFilename().GetUtf8());
        break;
    case DA_CONTAINER:
        add(hash, *value.GetContainer());
        break;
    case DA_LINK:
        add(hash, value.GetLink());
        break;
    case DA_VOID:
        add(hash, value.GetVoid());
        break;
    case DA_CUSTOM:
        if (CustomDataType* const custom = value.GetCustomDataType(CUSTOMDATATYPE_INEXCLUDE_LIST)) {
            const auto& list = *static_cast<InExcludeData*>(custom);
            for (int32_t i = 0; i < list.GetObjectCount(); ++i) {
                add(hash, list.ObjectFromIndex(nullptr, i));
                hash.addBits(list.GetFlags(i));
            }
        }
        break;
    default:
        break;
    }
}

void add(ContentHash& hash, const BaseContainer& container) {
    for (int32_t i = 0; i < container.GetCount(); ++i) {
        hash.addBits(container.GetIndexId(i));
        add(hash, container.GetIndexData(i));
    }
}

void add(ContentHash& hash, const BaseSelect& selection) {
    int32_t from = 0, to = 0;
    for (int32_t i = 0; selection.GetRange(i, &from, &to); ++i) {
        hash.addBits(from);
        hash.addBits(to);
    }
}

void add(ContentHash& hash, const Tag& tag) {
    hash.addBits(tag.type());
    add(hash, tag.name);
    add(hash, tag.data);
    if (tag.type() == Ttexture) {
        const auto& texture = static_cast<const TextureTagNode&>(tag);
        add(hash, texture.material());
        hash.addBits(texture.matrix);
    } else if (tag.type() == Tuvw) {
        hash.addArray(std::span(static_cast<const UVWTagNode&>(tag).records));
    } else if (tag.type() == Tpolygonselection) {
        add(hash, static_cast<const SelectionTagNode&>(tag).selection);
    }
}

} // namespace

uint64_t Fingerprints::ofNode(const Node& node) {
    ContentHash hash;
    if (node.kind() == NodeKind::object) {
        const auto& object = static_cast<const Object&>(node);
        hash.add(ofObject(object));
        hash.addBits(object.globalMatrix());
    } else if (node.kind() == NodeKind::tag) {
        add(hash, static_cast<const Tag&>(node));
    } else {
        add(hash, node.name);
        add(hash, node.data);
    }
    return hash.value();
}

uint64_t Fingerprints::ofObject(const Object& object) {
    ContentHash hash;
    hash.addBits(object.type());
    add(hash, object.name);
    hash.add(object.renderMode | object.editorMode << 8 | (object.enabled ? 1 : 0) << 16);
    add(hash, object.layer());
    add(hash, object.data);
    for (const Tag* tag = object.tags().first(); tag; tag = tag->next) {
        add(hash, *tag);
    }
    if (const PolygonNode* const mesh = asPolygons(&object)) {
        hash.addArray(std::span(mesh->points));
        hash.addArray(std::span(mesh->polygons));
        add(hash, mesh->brokenEdges);
    }
    return hash.value();
}

Fingerprints::Branch Fingerprints::makeBranch(const Object& root) {
    Branch branch;
    ContentHash hash;
    for (const Object* object = &root; object; object = object->nextInBranch(root)) {
        ++branch.size;
        hash.add(ofObject(*object));
        // The shape of the tree counts as well: a root's parent lies outside, whoever it is.
        if (object != &root) {
            hash.addBits(object->matrix);
            hash.add(object->children().empty() ? 0 : 1);
            hash.add(object->next ? 0 : 1);
        }
        const_cast<Object*>(object)->visitLinks([&branch](BaseLink& link) {
            if (auto* const linked = static_cast<const Object*>(fromHost(link.GetLink(nullptr, Obase)))) {
                branch.linked.push_back(linked);
            }
        });
    }
    branch.hash = hash.value();
    return branch;
}

const Fingerprints::Branch& Fingerprints::branch(const Object& root) {
    const auto found = branches_.find(&root);
    return found != branches_.end() ? found->second
                                    : branches_.emplace(&root, makeBranch(root)).first->second;
}

uint64_t Fingerprints::ofGenerator(const Object& object) {
    const Branch own = makeBranch(object);
    ContentHash hash;
    hash.add(own.hash);
    std::unordered_set<const Object*> known{&object};
    std::vector<const Object*> waiting = own.linked;
    while (!waiting.empty()) {
        const Object& linked = *waiting.back();
        waiting.pop_back();
        if (known.insert(&linked).second) {
            const Branch& target = branch(linked);
            hash.add(target.hash);
            waiting.insert(waiting.end(), target.linked.begin(), target.linked.end());
        }
    }
    return hash.value();
}

} // namespace headless
