// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

#include <ctime>
#include <fstream>

namespace headless {

namespace {

using BuildScale = ModelTest;

/// Time of the processor, which other programs on the machine don't stretch.
double secondsSince(std::clock_t start) {
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

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
    std::clock_t start = std::clock();
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<Object> instance = createObject(Oinstance);
        instance->data.SetLink(INSTANCEOBJECT_LINK, toHost(&cube));
        instance->data.SetBool(INSTANCEOBJECT_RENDERINSTANCE, true);
        instance->matrix.off.x = static_cast<float>(i);
        parent.appendChild(std::move(instance));
    }
    EXPECT_LT(secondsSince(start), 5.0);
    EXPECT_LT((memoryInUse() - before) / count, 1024u);

    start = std::clock();
    build();
    EXPECT_LT(secondsSince(start), 1.0);
    start = std::clock();
    float sum = 0.0f;
    for (const BaseObject* object = toHost(&parent)->GetDown(); object; object = object->GetNext()) {
        sum += object->GetMl().off.x;
    }
    EXPECT_GT(sum, 0.0f);
    EXPECT_LT(secondsSince(start), 1.0);
}

} // namespace

} // namespace headless
