// TArray: refusal to grow, the default element for bad indices, removal, references held.
#include "counted.h"
#include "foundation/fstring.h"
#include "foundation/tarray.h"

#include "corvelle/ptr.h"

#include <gtest/gtest.h>

using namespace Halvorn;

TEST(TArray, AStepOfZeroOrBelowMinusOneNeverGrows) {
    for (int32 step : {0, -2}) {
        TArray<int32> fixed(step);
        EXPECT_FALSE(fixed.add(1));
        EXPECT_TRUE(fixed.isEmpty());
    }
}

TEST(TArray, BadIndexGivesAnUnspoiledDefaultAndChangesNothing) {
    TArray<int32> a;
    ASSERT_TRUE(a.add(7));
    EXPECT_EQ(a.at(-1), 0);
    a.at(5) = 99; // writes into the default, not into the array
    EXPECT_EQ(a.at(1), 0);
    const TArray<int32>& view = a;
    EXPECT_EQ(view.at(3), 0);
    EXPECT_EQ(a.total(), 1);
    EXPECT_EQ(a.find(42), 0);
    EXPECT_FALSE(a.removeAt(-1));
    EXPECT_EQ(a.at(0), 7);
}

TEST(TArray, RemovesTheFirstEqualAndShiftsDown) {
    TArray<int32> a;
    for (int32 v : {3, 1, 3, 2})
        ASSERT_TRUE(a.add(v));
    EXPECT_EQ(a.occurrences(3), 2);
    EXPECT_TRUE(a.remove(3));
    EXPECT_EQ(a.at(0), 1);
    EXPECT_EQ(a.indexOf(3), 1);
    TArray<int32> copy(a);
    EXPECT_TRUE(a.removeAt(0));
    EXPECT_EQ(copy.total(), 3);
    EXPECT_EQ(a.at(0), 3);
}

TEST(TArray, AddingItsOwnElementAcrossAGrowth) {
    TArray<String> a;
    for (int32 i = 0; i < 10; ++i)
        ASSERT_TRUE(a.add(String("element")));
    ASSERT_TRUE(a.add(a.at(0))); // the source lives in the buffer that the growth replaces
    EXPECT_STREQ(a.at(10).text8(), "element");
}

TEST(TArray, HoldsReferencesOfIPtrElements) {
    int destroyed = 0;
    auto* object = new Counted(&destroyed);
    {
        TArray<IPtr<Counted>> list;
        ASSERT_TRUE(list.add(IPtr<Counted>(object)));
        ASSERT_TRUE(list.add(IPtr<Counted>(object)));
        EXPECT_EQ(object->refCount(), 3);
        EXPECT_TRUE(list.removeAt(0));
        EXPECT_EQ(object->refCount(), 2);
    }
    EXPECT_EQ(object->refCount(), 1);
    object->release();
    EXPECT_EQ(destroyed, 1);
}
