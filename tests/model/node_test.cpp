// CvNode and CvColor: children, attributes, search, colour texts and the query rules.
#include "model/cvnode.h"
#include "modeltest.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

std::string names(const TArray<CvNode*>& nodes) {
    std::string result;
    for (const CvNode* node : nodes)
        result += std::string(String(node->getNodeName()).text8()) + " ";
    return result;
}

TEST(Node, ColourTextsParseLeniently) {
    CvColor orange("#FF8000");
    EXPECT_EQ(orange, CvColor(255, 128, 0, 255));
    EXPECT_EQ(CvColor("#ff800080"), CvColor(255, 128, 0, 128));
    EXPECT_EQ(CvColor("#ff8000Z"), CvColor(255, 128, 0, 255)); // eight characters: opaque
    EXPECT_EQ(CvColor(u"#0a0B0c"), CvColor(10, 11, 12, 255));
    EXPECT_FALSE(CvColor("red").isValid());
    EXPECT_FALSE(CvColor("#12").isValid());
    EXPECT_FALSE(CvColor("ff8000ff").isValid());
    EXPECT_FALSE(CvColor("#ff8000ff0").isValid());
    EXPECT_FALSE(CvColor("").isValid());
    // A first non-digit is skipped, a second ends the number, none gives 255.
    EXPECT_EQ(CvColor("#xAAx!!").red(), 0xA);
    EXPECT_EQ(CvColor("#xAAx!!").green(), 0xA);
    EXPECT_EQ(CvColor("#xAAx!!").blue(), 255);
    EXPECT_EQ(CvColor("#éF00000A"), CvColor(15, 0, 0, 10)); // é is one character, two bytes

    EXPECT_EQ(String(orange.toString()), String("#ff8000ff"));
    EXPECT_EQ(CvColor(orange.toString()), orange);
    EXPECT_EQ(String(CvColor().toString()), String("#00000000"));
    EXPECT_FALSE(CvColor(0, 0, 0, 0).isValid());
    EXPECT_TRUE(CvColor(0, 0, 0, 1).isValid());
}

TEST(Node, ColourIsAValueThatLivesInItsNode) {
    auto node = newObject<CvNode>("Track", "t1");
    IMediaColor* color = static_cast<IMediaObject*>(node.get())->getColor();
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->getRed() | color->getGreen() | color->getBlue() | color->getAlpha(), 0);
    node->setColor(CvColor(1, 2, 3, 4));
    EXPECT_EQ(static_cast<IMediaObject*>(node.get())->getColor(), color);
    EXPECT_EQ(color->getRed(), 1);
    EXPECT_EQ(color->getAlpha(), 4);
    EXPECT_EQ(node->getNodeColor(), CvColor(1, 2, 3, 4));
    // Its count is the node's: a reference held on the colour keeps the node alive.
    auto held = queryInterface<IMediaColor>(color);
    EXPECT_EQ(held.get(), color);
    EXPECT_EQ(node->refCount(), 2);
    node = nullptr;
    EXPECT_EQ(held->getBlue(), 3);
}

TEST(Node, ChildrenAndDepthFirstSearch) {
    auto root = newObject<CvNode>("root");
    EXPECT_EQ(root->getChildren().total(), 0);
    EXPECT_EQ(root->getAllChildren().total(), 0);
    EXPECT_EQ(root->findChild("a"), nullptr);
    EXPECT_EQ(root->findDescendant("a"), nullptr);

    auto a = newObject<CvNode>("a");
    auto b = newObject<CvNode>("b");
    auto deepB = newObject<CvNode>("b", "deep");
    auto c = newObject<CvNode>("c");
    a->addChild(deepB.get());
    deepB->addChild(c.get());
    root->addChild(a.get());
    root->addChild(b.get());
    root->addChild(b.get()); // plain add keeps duplicates
    root->addChild(nullptr);

    EXPECT_EQ(names(root->getChildren()), "a b b ");
    EXPECT_EQ(names(root->getAllChildren()), "a b c b b ");
    EXPECT_EQ(root->findChild("b"), b.get());
    EXPECT_EQ(root->findChild("c"), nullptr);
    EXPECT_EQ(root->findChild("B"), nullptr);
    EXPECT_EQ(root->findDescendant("b"), deepB.get()); // depth first: a's child comes first
    EXPECT_EQ(root->findDescendant("c"), c.get());
    EXPECT_EQ(root->getChildrenByName("b").total(), 2);
    EXPECT_EQ(root->getDescendantsByName("b").total(), 3);
    EXPECT_EQ(root->getDescendantsByName("b")[0], deepB.get());
    EXPECT_EQ(b->refCount(), 3);
    EXPECT_EQ(utf8(static_cast<IMediaObject*>(deepB.get())->getId()), "deep");
}

TEST(Node, AttributesOverwriteInPlace) {
    auto node = newObject<CvNode>("Element");
    EXPECT_FALSE(node->hasAttribute("id"));
    EXPECT_EQ(node->getAttribute("id", "fallback"), String("fallback"));
    node->setAttribute("id", "1");
    node->setAttribute("name", "");
    node->setAttribute("id", "2");
    node->setAttribute("ID", "3");
    EXPECT_EQ(node->getAttribute("id", "x"), String("2"));
    EXPECT_EQ(node->getAttribute("ID"), String("3"));
    EXPECT_TRUE(node->hasAttribute("name"));
    EXPECT_EQ(node->getAttribute("name", "x"), String("")); // present and empty stays empty
    EXPECT_EQ(node->getAttribute("missing"), String(""));
}

TEST(Node, QueryAnswersForOwnAndBaseFacesElseNoInterface) {
    auto node = newObject<CvNode>("n", "id");
    IMediaObject* face = node.get();
    void* out = nullptr;
    ASSERT_EQ(face->queryInterface(IMediaObject::iid, &out), kResultOk);
    EXPECT_EQ(out, face);
    EXPECT_EQ(node->refCount(), 2);
    static_cast<IMediaObject*>(out)->release();
    ASSERT_EQ(face->queryInterface(FUnknown::iid, &out), kResultOk);
    static_cast<FUnknown*>(out)->release();
    EXPECT_EQ(fobjectCast<CvNode>(face), node.get());
    EXPECT_EQ(face->queryInterface(IMediaColor::iid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(node->refCount(), 1);
    // One count behind every face.
    face->addRef();
    static_cast<FObject*>(node.get())->addRef();
    EXPECT_EQ(node->refCount(), 3);
    face->release();
    static_cast<FObject*>(node.get())->release();
    EXPECT_TRUE(node->isTypeOf("CvNode", false));
    EXPECT_TRUE(node->isTypeOf("FObject"));
}

} // namespace
} // namespace Halvorn
