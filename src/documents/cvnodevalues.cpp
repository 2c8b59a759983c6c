// The value rules applied to the attributes of a reader node.
#include "documents/cvnodevalues.h"

#include "corvelle/mediaparameter.h"
#include "documents/cvschemanames.h"
#include "documents/cvtables.h"
#include "documents/cvvaluerules.h"

namespace Halvorn {
namespace CvNodeValues {

using namespace CvSchema;

String readText(const CvNode* node, const char8* key, const String& defaultValue) {
    const String* value = node->findAttributeValue(key);
    return value ? *value : defaultValue;
}

double readReal(const CvNode* node, const char8* key, double defaultValue) {
    const String* value = node->findAttributeValue(key);
    return value ? CvValueRules::readReal(*value) : defaultValue;
}

uint64 readInteger(const CvNode* node, const char8* key, uint64 defaultValue) {
    const String* value = node->findAttributeValue(key);
    return value ? CvValueRules::readInteger(*value) : defaultValue;
}

bool readBoolean(const CvNode* node, const char8* key, bool defaultValue) {
    const String* value = node->findAttributeValue(key);
    return value ? CvValueRules::readBoolean(*value) : defaultValue;
}

String readId(const CvNode* node) { return readText(node, Attribute::kId, String("0")); }

String readName(const CvNode* node) {
    return readText(node, Attribute::kName, node->getNodeName());
}

CvColor readColor(const CvNode* node) {
    String text = readText(node, Attribute::kColor, String());
    return text.isEmpty() ? CvColor() : CvColor(text);
}

uint32 readInterpolation(const CvNode* node) {
    return interpolationFromString(readText(node, Attribute::kInterpolation,
                                            String(interpolationToString(kInterpolationLinear))));
}

bool readSeconds(const CvNode* node, const char8* key, bool secondsInForce) {
    const String* value = node->findAttributeValue(key);
    return value ? CvValueRules::isSeconds(*value) : secondsInForce;
}

} // namespace CvNodeValues
} // namespace Halvorn
