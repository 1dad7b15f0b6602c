// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

#include <fstream>

namespace headless {

namespace {

using BuildScale = ModelTest;

/// Memory of the process in bytes; zero where the system doesn't tell.
size_t memoryInUse() {
    size_t pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * 4096;
}

TEST_F(BuildScale, holdsAMillionRenderInstancesSlow) {
    constexpr int count = 1000000;
    Object& cube = document->appendObject(createObject(Ocube));
    Object& parent = document->appendObject(createObject(Onull));
    const size_t before = memoryInUse();
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<Object> instance = createObject(Oinstance);
        instance->data.SetLink(INSTANCEOBJECT_LINK, toHost(&cube));
        instance->data.SetBool(INSTANCEOBJECT_RENDERINSTANCE, true);
        instance->matrix.off.x = static_cast<float>(i);
        parent.appendChild(std::move(instance));
    }
    EXPECT_LT((memoryInUse() - before) / count, 1024u);

    build();
    int walked = 0;
    for (const BaseObject* object = toHost(&parent)->GetDown(); object; object = object->GetNext()) {
        ASSERT_EQ(object->GetMl().off.x, static_cast<float>(walked++));
        ASSERT_EQ(object->GetCache(), nullptr);
    }
    EXPECT_EQ(walked, count);
}

} // namespace

} // namespace headless
