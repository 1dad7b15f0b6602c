// SPDX-License-Identifier: MIT
#include "foundation/ref_counted.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace Quenza {
namespace {

template <class Base>
struct Counted : Base {
    explicit Counted(int& deletions_) : deletions(deletions_) {}
    ~Counted() override { ++deletions; }
    int& deletions;
};

template <class Base>
class RefTest : public testing::Test {};
using Bases = testing::Types<RefCounted, ThreadSafeRefCounted>;
TYPED_TEST_SUITE(RefTest, Bases);

TYPED_TEST(RefTest, DeletesOnceWhenTheLastHandleGoes) {
    int deletions = 0;
    Ref<Counted<TypeParam>> first = new Counted<TypeParam>(deletions);
    {
        const Ref<TypeParam> as_base = first;
        Ref<Counted<TypeParam>> moved = first;
        const Ref<Counted<TypeParam>> taken = std::move(moved);
        EXPECT_TRUE(moved.isNull());
        EXPECT_EQ(first->getRefCount(), 3u);
    }
    EXPECT_EQ(first->getRefCount(), 1u);
    EXPECT_EQ(deletions, 0);
    first = nullptr;
    EXPECT_EQ(deletions, 1);
}

TYPED_TEST(RefTest, SurvivesAssignmentOfItself) {
    int deletions = 0;
    Ref<Counted<TypeParam>> ref = new Counted<TypeParam>(deletions);
    const Ref<Counted<TypeParam>>& alias = ref;
    ref = alias;
    ref = ref.getPointer();
    EXPECT_EQ(deletions, 0);
    EXPECT_EQ(ref->getRefCount(), 1u);
}

// The old object owns the new one: releasing before retaining would delete both.
TEST(RefTest, RetainsTheNewObjectBeforeItReleasesTheOld) {
    struct Link : RefCounted {
        Ref<Link> next;
        int value = 7;
    };
    Ref<Link> head = new Link;
    head->next = new Link;
    head = head->next;
    EXPECT_EQ(head->value, 7);
    EXPECT_EQ(head->getRefCount(), 1u);
}

TEST(RefTest, CountsFromSeveralThreads) {
    int deletions = 0;
    Ref<Counted<ThreadSafeRefCounted>> shared = new Counted<ThreadSafeRefCounted>(deletions);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([shared] {
            for (int i = 0; i < 20000; ++i)
                const Ref<Counted<ThreadSafeRefCounted>> copy = shared;
        });
    for (std::thread& thread : threads)
        thread.join();
    threads.clear();
    EXPECT_EQ(shared->getRefCount(), 1u);
    shared = nullptr;
    EXPECT_EQ(deletions, 1);
}

} // namespace
} // namespace Quenza
