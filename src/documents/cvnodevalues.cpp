// The value rules applied to the attributes of a document element.
#include "documents/cvnodevalues.h"

#include "corvelle/mediaparameter.h"
#include "documents/cvschemanames.h"
#include "documents/cvtables.h"
#include "documents/cvvaluerules.h"

namespace Halvorn {
namespace CvNodeValues {

using namespace CvSchema;

String readText(const CvXmlElement& node, const char8* key, const String& defaultValue) {
    const char8* value = node.findAttributeValue(key);
    return value ? String(value) : defaultValue;
}

double readReal(const CvXmlElement& node, const char8* key, double defaultValue) {
    const char8* value = node.findAttributeValue(key);
    return value ? CvValueRules::readReal(value) : defaultValue;
}

uint64 readInteger(const CvXmlElement& node, const char8* key, uint64 defaultValue) {
    const char8* value = node.findAttributeValue(key);
    return value ? CvValueRules::readInteger(value) : defaultValue;
}

bool readBoolean(const CvXmlElement& node, const char8* key, bool defaultValue) {
    const char8* value = node.findAttributeValue(key);
    return value ? CvValueRules::readBoolean(String(value)) : defaultValue;
}

String readId(const CvXmlElement& node) { return readText(node, Attribute::kId, String("0")); }

String readName(const CvXmlElement& node) {
    return readText(node, Attribute::kName, String(node.getName()));
}

CvColor readColor(const CvXmlElement& node) {
    String text = readText(node, Attribute::kColor, String());
    return text.isEmpty() ? CvColor() : CvColor(text);
}

uint32 readInterpolation(const CvXmlElement& node) {
    return interpolationFromString(readText(node, Attribute::kInterpolation,
                                            String(interpolationToString(kInterpolationLinear))));
}

bool readSeconds(const CvXmlElement& node, const char8* key, bool secondsInForce) {
    const char8* value = node.findAttributeValue(key);
    return value ? CvValueRules::isSeconds(String(value)) : secondsInForce;
}

} // namespace CvNodeValues
} // namespace Halvorn
