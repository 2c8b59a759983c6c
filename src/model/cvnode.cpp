// CvNode and CvColor: children, attributes, colour parsing and search.
#include "model/cvnode.h"

#include "model/cvlist.h"

#include <cstring>
#include <utility>

namespace Halvorn {

namespace {

int hexDigit(char16 c) {
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

// Scans two characters as a hexadecimal byte: a first non-digit is skipped, a second one ends
// the number, and without any digit the byte is 255.
uint8 scanPair(char16 first, char16 second) {
    int high = hexDigit(first);
    int low = hexDigit(second);
    if (high >= 0)
        return static_cast<uint8>(low >= 0 ? high * 16 + low : high);
    return static_cast<uint8>(low >= 0 ? low : 255);
}

} // namespace

CvColor::CvColor(const String& text) {
    // Widen first: the length counts UTF-16 units only then.
    const char16* t = text.text16();
    int32 length = text.length();
    if (length < 7 || length > 9 || t[0] != u'#')
        return;
    red_ = scanPair(t[1], t[2]);
    green_ = scanPair(t[3], t[4]);
    blue_ = scanPair(t[5], t[6]);
    alpha_ = length == 9 ? scanPair(t[7], t[8]) : 255;
}

tresult CvNode::ColorFace::queryInterface(const FUID& iid, void** object) {
    if (!object)
        return kInvalidArgument;
    if (iid == FUnknown::iid || iid == IMediaColor::iid) {
        addRef();
        *object = static_cast<IMediaColor*>(this);
        return kResultOk;
    }
    *object = nullptr;
    return kNoInterface;
}

uint32 CvNode::ColorFace::addRef() { return node_.addRef(); }

uint32 CvNode::ColorFace::release() { return node_.release(); }

String CvColor::toString() const {
    String text;
    text.printf("#%02x%02x%02x%02x", red_, green_, blue_, alpha_);
    return text;
}

bool CvColor::operator==(const CvColor& other) const {
    return red_ == other.red_ && green_ == other.green_ && blue_ == other.blue_ &&
           alpha_ == other.alpha_;
}

// A reader's plain element may have a great many children: doubling keeps adding them linear.
struct CvNode::Tree {
    TArray<IPtr<CvNode>> children{-1};
    TArray<CvNodeAttribute> attributes;
};

CvNode::CvNode(const String& name, const String& id) : id_(id), name_(name) {}

CvNode::~CvNode() = default;

tresult CvNode::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaObject)
    return CvObject::queryInterface(iid, object);
}

CvNode::Tree& CvNode::tree() {
    if (!tree_)
        tree_.reset(new Tree);
    return *tree_;
}

void CvNode::addChild(CvNode* child) {
    if (child)
        addToList(tree().children, child);
}

void CvNode::collect(TArray<CvNode*>& out, const String* name, bool deep) const {
    if (!tree_)
        return;
    for (const IPtr<CvNode>& child : tree_->children) {
        if (!name || child->name_ == *name)
            out.add(child.get());
        if (deep)
            child->collect(out, name, true);
    }
}

TArray<CvNode*> CvNode::getChildren() const {
    TArray<CvNode*> result(-1);
    collect(result, nullptr, false);
    return result;
}

TArray<CvNode*> CvNode::getAllChildren() const {
    TArray<CvNode*> result(-1);
    collect(result, nullptr, true);
    return result;
}

CvNode* CvNode::findChild(const String& name) const {
    if (tree_)
        for (const IPtr<CvNode>& child : tree_->children)
            if (child->name_ == name)
                return child.get();
    return nullptr;
}

CvNode* CvNode::findDescendant(const String& name) const {
    if (tree_)
        for (const IPtr<CvNode>& child : tree_->children) {
            if (child->name_ == name)
                return child.get();
            if (CvNode* found = child->findDescendant(name))
                return found;
        }
    return nullptr;
}

TArray<CvNode*> CvNode::getChildrenByName(const String& name) const {
    TArray<CvNode*> result(-1);
    collect(result, &name, false);
    return result;
}

TArray<CvNode*> CvNode::getDescendantsByName(const String& name) const {
    TArray<CvNode*> result(-1);
    collect(result, &name, true);
    return result;
}

CvNodeAttribute* CvNode::findAttribute(const String& key) const {
    if (tree_)
        for (CvNodeAttribute& attribute : tree_->attributes)
            if (attribute.key == key)
                return &attribute;
    return nullptr;
}

const String* CvNode::findAttributeValue(const char8* key) const {
    if (tree_ && key)
        for (const CvNodeAttribute& attribute : tree_->attributes)
            if (std::strcmp(attribute.key.text8(), key) == 0)
                return &attribute.value;
    return nullptr;
}

void CvNode::setAttribute(const String& key, const String& value) {
    setAttribute(String(key), String(value));
}

void CvNode::setAttribute(String&& key, String&& value) {
    if (CvNodeAttribute* attribute = findAttribute(key)) {
        attribute->value = std::move(value);
        return;
    }
    tree().attributes.add(CvNodeAttribute{std::move(key), std::move(value)});
}

void CvNode::reserveAttributes(int32 count) {
    Tree& nodeTree = tree();
    if (nodeTree.attributes.isEmpty() && count > 0)
        nodeTree.attributes = TArray<CvNodeAttribute>(count);
}

String CvNode::getAttribute(const String& key, const String& defaultValue) const {
    CvNodeAttribute* attribute = findAttribute(key);
    return attribute ? attribute->value : defaultValue;
}

bool CvNode::hasAttribute(const String& key) const { return findAttribute(key) != nullptr; }

} // namespace Halvorn
