// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

#include <chrono>
#include <fstream>

namespace headless {

namespace {

using BuildScale = ModelTest;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
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
    Clock::time_point start = Clock::now();
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<Object> instance = createObject(Oinstance);
        instance->data.SetLink(INSTANCEOBJECT_LINK, toHost(&cube));
        instance->data.SetBool(INSTANCEOBJECT_RENDERINSTANCE, true);
        instance->matrix.off.x = static_cast<float>(i);
        parent.appendChild(std::move(instance));
    }
    EXPECT_LT(secondsSince(start), 5.0);
    EXPECT_LT((memoryInUse() - before) / count, 1024u);

    start = Clock::now();
    build();
    EXPECT_LT(secondsSince(start), 1.0);
    start = Clock::now();
    float sum = 0.0f;
    for (const BaseObject* object = toHost(&parent)->GetDown(); object; object = object->GetNext()) {
        sum += object->GetMl().off.x;
    }
    EXPECT_GT(sum, 0.0f);
    EXPECT_LT(secondsSince(start), 1.0);
}

} // namespace

} // namespace headless
