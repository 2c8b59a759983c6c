// CvNode and CvColor: children, attributes, colour parsing and search.
#include "model/cvnode.h"

#include "model/cvlist.h"

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

// A plain element may have a great many children: doubling keeps adding them linear.
struct CvNode::Tree {
    TArray<IPtr<CvNode>> children{-1};
    TArray<CvNodeAttribute> attributes;
};

struct CvNode::Details {
    explicit Details(CvNode& node) : color(node) {}

    String id;
    String name;
    ColorFace color;
    std::unique_ptr<Tree> tree;
};

namespace {

// What a node without details answers. Each thread has its own empty String, since reading
// a String may convert it in place.
const String& noText() {
    static thread_local const String empty;
    return empty;
}

// The colour of every node without details: all zero, read-only, and living as long as the
// module, so its count is never needed.
struct NoColorFace final : IMediaColor {
    tresult queryInterface(const FUID& iid, void** object) override {
        if (!object)
            return kInvalidArgument;
        *object = iid == FUnknown::iid || iid == IMediaColor::iid ? this : nullptr;
        return *object ? kResultOk : kNoInterface;
    }
    uint32 addRef() override { return 1; }
    uint32 release() override { return 1; }
    uint8 getRed() override { return 0; }
    uint8 getGreen() override { return 0; }
    uint8 getBlue() override { return 0; }
    uint8 getAlpha() override { return 0; }
};

IMediaColor* noColorFace() {
    static NoColorFace none;
    return &none;
}

const CvColor& noColor() {
    static const CvColor none;
    return none;
}

} // namespace

CvNode::CvNode(const String& name, const String& id) {
    if (!name.isEmpty() || !id.isEmpty()) {
        details_.reset(new Details(*this));
        details_->id = id;
        details_->name = name;
    }
}

CvNode::~CvNode() = default;

tresult CvNode::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaObject)
    return CvObject::queryInterface(iid, object);
}

CvNode::Details& CvNode::details() {
    if (!details_)
        details_.reset(new Details(*this));
    return *details_;
}

const char16* CvNode::getId() { return details_ ? details_->id.text16() : u""; }

const char16* CvNode::getName() { return details_ ? details_->name.text16() : u""; }

IMediaColor* CvNode::getColor() { return details_ ? &details_->color : noColorFace(); }

const String& CvNode::getNodeId() const { return details_ ? details_->id : noText(); }

const String& CvNode::getNodeName() const { return details_ ? details_->name : noText(); }

void CvNode::setName(const String& name) {
    if (details_ || !name.isEmpty())
        details().name = name;
}

const CvColor& CvNode::getNodeColor() const {
    return details_ ? details_->color.value : noColor();
}

void CvNode::setColor(const CvColor& color) {
    if (details_ || color.isValid())
        details().color.value = color;
}

CvNode::Tree& CvNode::tree() {
    Details& own = details();
    if (!own.tree)
        own.tree.reset(new Tree);
    return *own.tree;
}

CvNode::Tree* CvNode::findTree() const { return details_ ? details_->tree.get() : nullptr; }

void CvNode::addChild(CvNode* child) {
    if (child)
        addToList(tree().children, child);
}

void CvNode::collect(TArray<CvNode*>& out, const String* name, bool deep) const {
    Tree* own = findTree();
    if (!own)
        return;
    for (const IPtr<CvNode>& child : own->children) {
        if (!name || child->getNodeName() == *name)
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
    if (Tree* own = findTree())
        for (const IPtr<CvNode>& child : own->children)
            if (child->getNodeName() == name)
                return child.get();
    return nullptr;
}

CvNode* CvNode::findDescendant(const String& name) const {
    if (Tree* own = findTree())
        for (const IPtr<CvNode>& child : own->children) {
            if (child->getNodeName() == name)
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
    if (Tree* own = findTree())
        for (CvNodeAttribute& attribute : own->attributes)
            if (attribute.key == key)
                return &attribute;
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

String CvNode::getAttribute(const String& key, const String& defaultValue) const {
    CvNodeAttribute* attribute = findAttribute(key);
    return attribute ? attribute->value : defaultValue;
}

bool CvNode::hasAttribute(const String& key) const { return findAttribute(key) != nullptr; }

} // namespace Halvorn
