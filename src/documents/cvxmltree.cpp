// CvXmlTree and CvXmlElement: building the compact tree and searching it.
#include "documents/cvxmltree.h"

#include <cstdint>
#include <cstring>
#include <new>

namespace Halvorn {

namespace {

uint32 readNumber(const char8* at) {
    uint32 number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

} // namespace

CvXmlTree::CvXmlTree() = default;

CvXmlTree::~CvXmlTree() = default;

void CvXmlTree::clear() {
    elementBlocks_.clear();
    elementCount_ = 0;
    textBlocks_.clear();
    textBlock_ = nullptr;
    textBlockUsed_ = kTextBlockBytes;
    nameNumbers_.clear();
    names_.clear();
    for (RecentName& recent : recentNames_)
        recent = RecentName();
    openElements_.clear();
    hasRoot_ = false;
}

char8* CvXmlTree::allocateText(size_t bytes) {
    // A long text gets a block of its own, so the shared block isn't left half empty.
    if (bytes > kTextBlockBytes / 4) {
        textBlocks_.emplace_back(new char8[bytes]);
        return textBlocks_.back().get();
    }
    if (kTextBlockBytes - textBlockUsed_ < bytes) {
        textBlocks_.emplace_back(new char8[kTextBlockBytes]);
        textBlock_ = textBlocks_.back().get();
        textBlockUsed_ = 0;
    }
    char8* text = textBlock_ + textBlockUsed_;
    textBlockUsed_ += bytes;
    return text;
}

CvXmlTree::RecentName& CvXmlTree::recentSlot(const char8* text) const {
    RecentName& recent = recentNames_[(reinterpret_cast<uintptr_t>(text) >> 3) % kRecentNames];
    return recent;
}

uint32 CvXmlTree::intern(const char8* text) {
    RecentName& recent = recentSlot(text);
    if (recent.text == text && std::strcmp(names_[recent.number], text) == 0)
        return recent.number;
    const std::string_view name(text);
    const auto found = nameNumbers_.find(name);
    uint32 number;
    if (found != nameNumbers_.end()) {
        number = found->second;
    } else {
        char8* stored = allocateText(name.size() + 1);
        std::memcpy(stored, text, name.size() + 1);
        number = static_cast<uint32>(names_.size());
        names_.push_back(stored);
        nameNumbers_.emplace(std::string_view(stored, name.size()), number);
    }
    recent = RecentName{text, number};
    return number;
}

uint32 CvXmlTree::lookUp(const char8* text) const {
    if (!text)
        return kNoElement;
    RecentName& recent = recentSlot(text);
    if (recent.text == text && std::strcmp(names_[recent.number], text) == 0)
        return recent.number;
    const auto found = nameNumbers_.find(std::string_view(text));
    if (found == nameNumbers_.end())
        return kNoElement;
    recent = RecentName{text, found->second};
    return found->second;
}

uint32 CvXmlTree::addElement(uint32 name) {
    if (elementCount_ == kNoElement)
        throw std::bad_alloc(); // the numbers are spent
    if (elementCount_ % kElementsPerBlock == 0)
        elementBlocks_.emplace_back(new Element[kElementsPerBlock]);
    const uint32 index = elementCount_++;
    element(index).name = name;
    return index;
}

void CvXmlTree::open(const char8* name, const char8* const* attributes, int32 count) {
    const uint32 index = addElement(intern(name));
    if (count > 0) {
        size_t bytes = 0;
        for (int32 i = 0; i < count; ++i)
            bytes += 2 * sizeof(uint32) + std::strlen(attributes[2 * i + 1]) + 1;
        char8* at = allocateText(bytes);
        // Interning may take a new text block; the record's block is already taken.
        Element& added = element(index);
        added.attributes = at;
        added.attributeCount = static_cast<uint32>(count);
        for (int32 i = 0; i < count; ++i) {
            const uint32 key = intern(attributes[2 * i]);
            const auto length = static_cast<uint32>(std::strlen(attributes[2 * i + 1]));
            std::memcpy(at, &key, sizeof key);
            std::memcpy(at + sizeof key, &length, sizeof length);
            at += 2 * sizeof(uint32);
            std::memcpy(at, attributes[2 * i + 1], length + 1);
            at += length + 1;
        }
    }
    if (!openElements_.empty()) {
        OpenElement& parent = openElements_.back();
        if (parent.lastChild == kNoElement)
            element(parent.index).firstChild = index;
        else
            element(parent.lastChild).nextSibling = index;
        parent.lastChild = index;
    }
    openElements_.push_back(OpenElement{index, kNoElement});
}

void CvXmlTree::close() {
    if (openElements_.empty())
        return;
    openElements_.pop_back();
    // Only the outermost element has no parent; the parser reports only one.
    if (openElements_.empty())
        hasRoot_ = true;
}

CvXmlElement CvXmlTree::root() const { return hasRoot_ ? CvXmlElement(this, 0) : CvXmlElement(); }

const char8* CvXmlElement::getName() const {
    return tree_ ? tree_->names_[tree_->element(index_).name] : "";
}

const char8* CvXmlElement::findAttributeValue(const char8* key) const {
    if (!tree_)
        return nullptr;
    const uint32 wanted = tree_->lookUp(key);
    if (wanted == CvXmlTree::kNoElement)
        return nullptr;
    const CvXmlTree::Element& self = tree_->element(index_);
    const char8* at = self.attributes;
    for (uint32 i = 0; i < self.attributeCount; ++i) {
        const char8* value = at + 2 * sizeof(uint32);
        if (readNumber(at) == wanted)
            return value;
        at = value + readNumber(at + sizeof(uint32)) + 1;
    }
    return nullptr;
}

CvXmlElement CvXmlElement::findChild(const char8* name) const {
    if (!tree_)
        return {};
    const uint32 wanted = tree_->lookUp(name);
    if (wanted == CvXmlTree::kNoElement)
        return {};
    for (uint32 i = tree_->element(index_).firstChild; i != CvXmlTree::kNoElement;
         i = tree_->element(i).nextSibling)
        if (tree_->element(i).name == wanted)
            return CvXmlElement(tree_, i);
    return {};
}

CvXmlElement CvXmlElement::findDescendant(const char8* name) const {
    if (!tree_)
        return {};
    const uint32 wanted = tree_->lookUp(name);
    return wanted == CvXmlTree::kNoElement ? CvXmlElement() : findDescendant(wanted);
}

// Recurs once per level; the reader bounds the depth of the tree.
CvXmlElement CvXmlElement::findDescendant(uint32 name) const {
    for (uint32 i = tree_->element(index_).firstChild; i != CvXmlTree::kNoElement;
         i = tree_->element(i).nextSibling) {
        if (tree_->element(i).name == name)
            return CvXmlElement(tree_, i);
        if (CvXmlElement found = CvXmlElement(tree_, i).findDescendant(name))
            return found;
    }
    return {};
}

void CvXmlElement::collect(std::vector<CvXmlElement>& out, uint32 name, bool deep) const {
    for (uint32 i = tree_->element(index_).firstChild; i != CvXmlTree::kNoElement;
         i = tree_->element(i).nextSibling) {
        if (name == CvXmlTree::kNoElement || tree_->element(i).name == name)
            out.push_back(CvXmlElement(tree_, i));
        if (deep)
            CvXmlElement(tree_, i).collect(out, name, true);
    }
}

std::vector<CvXmlElement> CvXmlElement::getChildren() const {
    std::vector<CvXmlElement> result;
    if (tree_)
        collect(result, CvXmlTree::kNoElement, false);
    return result;
}

std::vector<CvXmlElement> CvXmlElement::collectByName(const char8* name, bool deep) const {
    std::vector<CvXmlElement> result;
    const uint32 wanted = tree_ ? tree_->lookUp(name) : CvXmlTree::kNoElement;
    if (wanted != CvXmlTree::kNoElement)
        collect(result, wanted, deep);
    return result;
}

std::vector<CvXmlElement> CvXmlElement::getChildrenByName(const char8* name) const {
    return collectByName(name, false);
}

std::vector<CvXmlElement> CvXmlElement::getDescendantsByName(const char8* name) const {
    return collectByName(name, true);
}

} // namespace Halvorn
