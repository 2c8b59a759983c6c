// The value rules applied to the attributes of a reader node.
#include "documents/cvnodevalues.h"

#include "corvelle/mediaparameter.h"
#include "documents/cvschemanames.h"
#include "documents/cvvaluerules.h"
#include "model/cvtables.h"

namespace Halvorn {
namespace CvNodeValues {

using namespace CvSchema;

namespace {

// The attribute's text; false when the node has no such attribute.
bool findText(const CvNode* node, const char8* key, String& text) {
    String name(key);
    if (!node->hasAttribute(name))
        return false;
    text = node->getAttribute(name);
    return true;
}

} // namespace

String readText(const CvNode* node, const char8* key, const String& defaultValue) {
    return node->getAttribute(String(key), defaultValue);
}

double readReal(const CvNode* node, const char8* key, double defaultValue) {
    String text;
    return findText(node, key, text) ? CvValueRules::readReal(text) : defaultValue;
}

uint64 readInteger(const CvNode* node, const char8* key, uint64 defaultValue) {
    String text;
    return findText(node, key, text) ? CvValueRules::readInteger(text) : defaultValue;
}

bool readBoolean(const CvNode* node, const char8* key, bool defaultValue) {
    String text;
    return findText(node, key, text) ? CvValueRules::readBoolean(text) : defaultValue;
}

String readId(const CvNode* node) { return readText(node, Attribute::kId, String("0")); }

String readName(const CvNode* node) { return readText(node, Attribute::kName, node->getName()); }

CvColor readColor(const CvNode* node) {
    String text = readText(node, Attribute::kColor, String());
    return text.isEmpty() ? CvColor() : CvColor(text);
}

uint32 readInterpolation(const CvNode* node) {
    return interpolationFromString(readText(node, Attribute::kInterpolation,
                                            String(interpolationToString(kInterpolationLinear))));
}

bool readSeconds(const CvNode* node, const char8* key, bool secondsInForce) {
    String text;
    return findText(node, key, text) ? CvValueRules::isSeconds(text) : secondsInForce;
}

} // namespace CvNodeValues
} // namespace Halvorn
