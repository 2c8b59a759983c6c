// FObject and IPtr: counts, the class-name chain, queryInterface answers, handle semantics.
#include "counted.h"

#include "corvelle/ptr.h"

#include <gtest/gtest.h>

using namespace Halvorn;

TEST(FObject, ClassNameChainAndCasts) {
    IPtr<CountedLeaf> leaf = newObject<CountedLeaf>();
    EXPECT_STREQ(leaf->isTypeName(), "CountedLeaf");
    EXPECT_TRUE(leaf->isTypeOf("Counted"));
    EXPECT_TRUE(leaf->isTypeOf("FObject"));
    EXPECT_FALSE(leaf->isTypeOf("Counted", false));
    EXPECT_FALSE(leaf->isA("Counted"));
    EXPECT_TRUE(leaf->isA("CountedLeaf"));
    EXPECT_FALSE(leaf->isTypeOf(nullptr));

    IPtr<Counted> base = newObject<Counted>();
    EXPECT_EQ(fobjectCast<Counted>(leaf.get()), leaf.get());
    EXPECT_EQ(fobjectCast<CountedLeaf>(base.get()), nullptr);
    EXPECT_EQ(fobjectCast<Counted>(nullptr), nullptr);
    EXPECT_EQ(leaf->refCount(), 1); // the cast lends, it keeps no reference
    EXPECT_FALSE(leaf->isEqualInstance(base.get()));
}

TEST(FObject, QueryInterfaceAnswersItsThreeIdentifiers) {
    IPtr<Counted> object = newObject<Counted>();
    for (const FUID& iid : {FUnknown::iid, IDependent::iid, FObject::iid}) {
        void* face = nullptr;
        ASSERT_EQ(object->queryInterface(iid, &face), kResultOk);
        EXPECT_NE(face, nullptr);
        EXPECT_EQ(object->release(), 1u); // the answer carried one reference
    }
    void* face = &face;
    EXPECT_EQ(object->queryInterface(FUID::make(1, 2, 3, 4, 5), &face), kNoInterface);
    EXPECT_EQ(face, nullptr);
    EXPECT_EQ(object->queryInterface(FUnknown::iid, nullptr), kInvalidArgument);
    EXPECT_EQ(object->refCount(), 1);
    EXPECT_FALSE(queryInterface<IDependent>(nullptr));
}

TEST(IPtr, CopyAssignAdoptReleaseAndDestruction) {
    int destroyed = 0;
    auto* first = new Counted(&destroyed);
    auto* second = new Counted(&destroyed);
    {
        IPtr<Counted> a(first); // shares: 2
        IPtr<Counted> b = a;    // 3
        EXPECT_EQ(first->refCount(), 3);
        b = first; // the same pointer changes nothing
        EXPECT_EQ(first->refCount(), 3);
        b = second; // releases first, shares second
        EXPECT_EQ(first->refCount(), 2);
        EXPECT_EQ(second->refCount(), 2);
        IPtr<Counted> c = IPtr<Counted>::adopt(second); // takes over the creator's reference
        EXPECT_EQ(second->refCount(), 2);
        IPtr<Counted> moved(std::move(c));
        Counted* handed = moved.release();
        EXPECT_FALSE(moved);
        EXPECT_EQ(handed, second);
        IPtr<Counted>::adopt(handed); // and gives it back at once
        b = nullptr;
        EXPECT_EQ(destroyed, 1);
    }
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(first->release(), 0u);
    EXPECT_EQ(destroyed, 2);
}
