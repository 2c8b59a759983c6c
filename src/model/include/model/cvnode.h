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

// One attribute of a plain node. Held by value: a node owns its attributes alone and never
// hands them out, so a reference count and a heap object each would only cost time and memory.
struct CvNodeAttribute {
    String key;
    String value;
};

// A named node: the base of the typed model classes, and on its own a plain element tree with
// children and attributes (the document reader keeps a compact tree of its own instead).
// getNodeId and getNodeName give the String; through IMediaObject getId and getName give
// UTF-16 text. Names and keys compare case-sensitively.
class CvNode : public CvObject, public IMediaObject {
public:
    CV_DECLARE_TYPE(CvNode, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    explicit CvNode(const String& name = String(), const String& id = String());

    tresult queryInterface(const FUID& iid, void** object) override;

    const char16* getId() override;
    const char16* getName() override;
    // Borrowed, valid while the node lives; a reference taken on it counts on the node.
    IMediaColor* getColor() override;

    const String& getNodeId() const;
    const String& getNodeName() const;
    void setName(const String& name);
    const CvColor& getNodeColor() const;
    void setColor(const CvColor& color);

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
    // The value, or defaultValue when the key is absent; a present empty value stays empty.
    String getAttribute(const String& key, const String& defaultValue = String()) const;
    bool hasAttribute(const String& key) const;

protected:
    ~CvNode() override;

private:
    struct Tree;
    struct Details;

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
    Details& details();
    Tree& tree();
    // Null while the node has neither child nor attribute.
    Tree* findTree() const;
    void collect(TArray<CvNode*>& out, const String* name, bool deep) const;

    // Id, name, colour, children and attributes, made on the first that is set. Most nodes of
    // a large project are notes and automation points, which set none of them, so each of
    // those pays one pointer here instead of about sixty bytes.
    std::unique_ptr<Details> details_;
};

} // namespace Halvorn
