// CvNode, the base of every model object with an identity, with its colour and attributes.
#pragma once

#include "corvelle/mediaobject.h"
#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "foundation/tarray.h"
#include "model/cvobject.h"

#include <memory>

namespace Halvorn {

// Four bytes of colour, a plain value. All zero means that no colour is set.
class CvColor {
public:
    CvColor() = default;
    CvColor(uint8 red, uint8 green, uint8 blue, uint8 alpha)
        : red_(red), green_(green), blue_(blue), alpha_(alpha) {}
    // "#rrggbb", "#rrggbbX" or "#rrggbbaa"; any other text gives the all-zero colour.
    explicit CvColor(const String& text);

    uint8 red() const { return red_; }
    uint8 green() const { return green_; }
    uint8 blue() const { return blue_; }
    uint8 alpha() const { return alpha_; }

    bool isValid() const { return red_ || green_ || blue_ || alpha_; }
    // "#rrggbbaa", lower case.
    String toString() const;
    bool operator==(const CvColor& other) const;
    bool operator!=(const CvColor& other) const { return !(*this == other); }

private:
    uint8 red_ = 0;
    uint8 green_ = 0;
    uint8 blue_ = 0;
    uint8 alpha_ = 0;
};

// One attribute of a reader node. Held by value: a node owns its attributes alone and never
// hands them out, so a reference count and a heap object each would only cost time and memory.
struct CvNodeAttribute {
    String key;
    String value;
};

// A named node: the base of the typed model classes, and on its own the plain element tree the
// document reader parses into. getNodeId and getNodeName give the String; through IMediaObject
// getId and getName give UTF-16 text. Names and keys compare case-sensitively.
class CvNode : public CvObject, public IMediaObject {
public:
    CV_DECLARE_TYPE(CvNode, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    explicit CvNode(const String& name = String(), const String& id = String());

    tresult queryInterface(const FUID& iid, void** object) override;

    const char16* getId() override { return id_.text16(); }
    const char16* getName() override { return name_.text16(); }
    // Borrowed, valid while the node lives; a reference taken on it counts on the node.
    IMediaColor* getColor() override { return &color_; }

    const String& getNodeId() const { return id_; }
    const String& getNodeName() const { return name_; }
    void setName(const String& name) { name_ = name; }
    const CvColor& getNodeColor() const { return color_.value; }
    void setColor(const CvColor& color) { color_.value = color; }

    // Plain add: appends, null does nothing, no test for duplicates.
    void addChild(CvNode* child);
    TArray<CvNode*> getChildren() const;
    // All descendants, depth first: each child directly before its own descendants.
    TArray<CvNode*> getAllChildren() const;
    CvNode* findChild(const String& name) const;
    CvNode* findDescendant(const String& name) const;
    TArray<CvNode*> getChildrenByName(const String& name) const;
    TArray<CvNode*> getDescendantsByName(const String& name) const;

    // Overwrites the value of an existing key in its place, else appends.
    void setAttribute(const String& key, const String& value);
    void setAttribute(String&& key, String&& value);
    // Room for count attributes in one allocation, for a caller that knows how many will come.
    void reserveAttributes(int32 count);
    // The value, or defaultValue when the key is absent; a present empty value stays empty.
    String getAttribute(const String& key, const String& defaultValue = String()) const;
    bool hasAttribute(const String& key) const;
    // The value held under an 8-bit key, or null when absent; no String is made for the key.
    const String* findAttributeValue(const char8* key) const;

protected:
    ~CvNode() override;

private:
    struct Tree;

    // The node's colour behind IMediaColor: it has no count of its own, its node's serves.
    class ColorFace : public IMediaColor {
    public:
        explicit ColorFace(CvNode& node) : node_(node) {}
        ColorFace(const ColorFace&) = delete;
        ColorFace& operator=(const ColorFace&) = delete;

        tresult queryInterface(const FUID& iid, void** object) override;
        uint32 addRef() override;
        uint32 release() override;
        uint8 getRed() override { return value.red(); }
        uint8 getGreen() override { return value.green(); }
        uint8 getBlue() override { return value.blue(); }
        uint8 getAlpha() override { return value.alpha(); }

        CvColor value;

    private:
        CvNode& node_;
    };

    CvNodeAttribute* findAttribute(const String& key) const;
    Tree& tree();
    void collect(TArray<CvNode*>& out, const String* name, bool deep) const;

    String id_;
    String name_;
    ColorFace color_{*this};
    // Only the reader's plain nodes have children and attributes, so typed objects pay one
    // pointer for them instead of two arrays.
    std::unique_ptr<Tree> tree_;
};

} // namespace Halvorn
