// CvXmlTree, the reader's element tree in compact form, and CvXmlElement, a view of one element.
#pragma once

#include "corvelle/base.h"
#include "foundation/fstring.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Halvorn {

class CvXmlTree;

// A borrowed view of one element, valid while its tree lives and isn't cleared. The empty view
// has no name, no attributes and no children. Names and keys compare case-sensitively.
class CvXmlElement {
public:
    CvXmlElement() = default;

    explicit operator bool() const { return tree_ != nullptr; }

    const char8* getName() const;
    // The value of the attribute, or null when the element doesn't have it.
    const char8* findAttributeValue(const char8* key) const;

    CvXmlElement findChild(const char8* name) const;
    // The first descendant of that name, depth first.
    CvXmlElement findDescendant(const char8* name) const;
    // Direct children in document order: all, or those of one name.
    std::vector<CvXmlElement> getChildren() const;
    std::vector<CvXmlElement> getChildrenByName(const char8* name) const;
    // All descendants of that name, depth first: each directly before its own descendants.
    std::vector<CvXmlElement> getDescendantsByName(const char8* name) const;

private:
    friend class CvXmlTree;
    CvXmlElement(const CvXmlTree* tree, uint32 index) : tree_(tree), index_(index) {}

    // name is a number of this element's tree; CvXmlTree::kNoElement takes every name.
    void collect(std::vector<CvXmlElement>& out, uint32 name, bool deep) const;
    CvXmlElement findDescendant(uint32 name) const;
    std::vector<CvXmlElement> collectByName(const char8* name, bool deep) const;

    const CvXmlTree* tree_ = nullptr;
    uint32 index_ = 0;
};

// The elements of one document as the parser reports them, built in document order. Each name
// and attribute key is stored once per document and elements refer to it by number; attribute
// values lie together in blocks of text; an element links its first child and next sibling by
// index, so a child costs no allocation of its own. The memory grows in blocks and is freed as
// a whole by clear.
class CvXmlTree {
public:
    static constexpr uint32 kNoElement = 0xFFFFFFFFu;

    CvXmlTree();
    ~CvXmlTree();
    CvXmlTree(const CvXmlTree&) = delete;
    CvXmlTree& operator=(const CvXmlTree&) = delete;

    // Opens an element below the innermost open one, with the first count pairs of the
    // parser's attribute list. Throws std::bad_alloc when memory runs out.
    void open(const char8* name, const char8* const* attributes, int32 count);
    // Closes the innermost open element; closing the outermost one makes it the root.
    void close();
    int32 openDepth() const { return static_cast<int32>(openElements_.size()); }

    // The root once the outermost element has closed, else the empty view.
    CvXmlElement root() const;
    // Frees everything.
    void clear();

private:
    friend class CvXmlElement;

    struct Element {
        uint32 name;
        uint32 firstChild = kNoElement;
        uint32 nextSibling = kNoElement;
        uint32 attributeCount = 0;
        // attributeCount records, each the key's number and the value's length (4 bytes each)
        // and the value's text with its terminating zero.
        const char8* attributes = nullptr;
    };
    struct OpenElement {
        uint32 index;
        uint32 lastChild;
    };
    // A name text the parser passed lately, and its number.
    struct RecentName {
        const char8* text = nullptr;
        uint32 number = 0;
    };

    static constexpr uint32 kElementsPerBlock = 4096;
    static constexpr size_t kTextBlockBytes = 256 * 1024;
    static constexpr size_t kRecentNames = 64;

    const Element& element(uint32 index) const {
        return elementBlocks_[index / kElementsPerBlock][index % kElementsPerBlock];
    }
    Element& element(uint32 index) {
        return elementBlocks_[index / kElementsPerBlock][index % kElementsPerBlock];
    }
    uint32 addElement(uint32 name);
    // The number of a name or key, stored on its first use.
    uint32 intern(const char8* text);
    // The number of a name, or kNoElement when the document never used it.
    uint32 lookUp(const char8* text) const;
    // The recent-name slot for a text's address.
    RecentName& recentSlot(const char8* text) const;
    char8* allocateText(size_t bytes);

    std::vector<std::unique_ptr<Element[]>> elementBlocks_;
    uint32 elementCount_ = 0;
    std::vector<std::unique_ptr<char8[]>> textBlocks_;
    // The block that small texts are taken from, and how much of it is taken.
    char8* textBlock_ = nullptr;
    size_t textBlockUsed_ = kTextBlockBytes;
    std::unordered_map<std::string_view, uint32> nameNumbers_;
    std::vector<const char8*> names_;
    // The parser tends to pass the same name at the same address, so a text found here (and
    // checked to be the same) needs no hashing.
    // Look-ups fill it too: their texts are the reader's constants. The tree belongs to one
    // reading, so a const look-up may update it.
    mutable RecentName recentNames_[kRecentNames];
    std::vector<OpenElement> openElements_;
    bool hasRoot_ = false;
};

} // namespace Halvorn
