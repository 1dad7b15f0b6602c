// SPDX-License-Identifier: MIT
#pragma once

#include "headless/build/caches.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/tables/host_table.h"
#include "host/general.h"

#include <gtest/gtest.h>

inline void PrintTo(const Vector& v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

namespace headless {

/// A document that is looked at as a plug-in does: through the host's classes.
class ModelTest : public ::testing::Test {
protected:
    ModelTest() : previous_(HostTables()) {
        SetHostTables(hostTable());
        document = std::make_unique<Document>();
    }
    ~ModelTest() override {
        document.reset();
        SetHostTables(previous_);
    }

    BaseDocument* doc() const { return toHost(document.get()); }

    /// A new object, last below `parent` or last of the document.
    BaseObject* add(int32_t type, BaseObject* parent = nullptr) {
        BaseObject* const object = BaseObject::Alloc(type);
        BaseObject* last = parent ? parent->GetDown() : doc()->GetFirstObject();
        while (last && last->GetNext()) {
            last = last->GetNext();
        }
        doc()->InsertObject(object, parent, last);
        return object;
    }

    /// A cube without divisions of the given size.
    BaseObject* addCube(BaseObject* parent = nullptr, const Vector& size = {200.0f, 200.0f, 200.0f}) {
        BaseObject* const cube = add(Ocube, parent);
        cube->GetDataInstance()->SetVector(PRIM_CUBE_SIZE, size);
        return cube;
    }

    /// One quad in the XY plane, from the origin to (1, 1, 0).
    ::PolygonObject* addQuad(BaseObject* parent = nullptr) {
        ::PolygonObject* const quad = ::PolygonObject::Alloc(4, 1);
        const Vector corners[] = {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}};
        std::copy(corners, corners + 4, quad->GetPointW());
        quad->GetPolygonW()[0] = CPolygon(0, 1, 2, 3);
        doc()->InsertObject(quad, parent);
        return quad;
    }

    BaseObject* addInstance(BaseObject* target, bool renderInstance, BaseObject* parent = nullptr) {
        BaseObject* const instance = add(Oinstance, parent);
        instance->GetDataInstance()->SetLink(INSTANCEOBJECT_LINK, target);
        instance->GetDataInstance()->SetBool(INSTANCEOBJECT_RENDERINSTANCE, renderInstance);
        return instance;
    }

    /// A bend of a quarter turn around a box of 200 units.
    BaseObject* addBend(BaseObject* parent) {
        BaseObject* const bend = add(Obend, parent);
        bend->GetDataInstance()->SetVector(DEFORM_SIZE, {200.0f, 200.0f, 200.0f});
        bend->GetDataInstance()->SetReal(DEFORM_STRENGTH, 1.5707963f);
        return bend;
    }

    void build() { ASSERT_TRUE(buildCaches(*document)); }

    static void move(BaseObject* object, const Vector& offset) {
        Matrix matrix = object->GetMl();
        matrix.off = offset;
        object->SetMl(matrix);
    }

    static ::PolygonObject* polygons(BaseObject* object) {
        return object && object->IsInstanceOf(Opolygon) ? static_cast<::PolygonObject*>(object) : nullptr;
    }

    std::unique_ptr<Document> document;

private:
    const HostTable* previous_;
};

inline ::testing::AssertionResult isNear(const Vector& actual, const Vector& expected,
                                         float tolerance = 1e-4f) {
    if ((actual - expected).GetLength() <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << ::testing::PrintToString(actual) << " instead of " << ::testing::PrintToString(expected);
}

} // namespace headless
