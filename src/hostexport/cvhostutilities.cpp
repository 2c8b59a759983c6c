// CvHostUtilities: children by name, parameters, display texts, colours and media paths.
#include "hostexport/cvhostutilities.h"

#include <cstring>
#include <string>

namespace Halvorn {
namespace CvHostUtilities {

using namespace Quor;

IHostParameterOwner* findChild(IHostParameterOwner* owner, const String& name) {
    if (!owner)
        return nullptr;
    const char8* wanted = name.text8();
    int32 count = owner->getChildCount();
    for (int32 index = 0; index < count; ++index) {
        IHostParameterOwner* child = owner->getChild(index);
        const char8* childName = child ? child->getName() : nullptr;
        if (childName && std::strcmp(childName, wanted) == 0)
            return child;
    }
    return nullptr;
}

IPtr<IHostParameter> findParameter(IHostParameterOwner* owner, const char8* id) {
    return owner ? IPtr<IHostParameter>::adopt(owner->findParameter(id)) : IPtr<IHostParameter>();
}

String parameterText(IHostParameter* parameter, int32 bufferSize) {
    if (!parameter || bufferSize < 1)
        return {};
    std::u16string buffer(size_t(bufferSize), u'\0');
    int32 size = bufferSize;
    if (parameter->getValueText(buffer.data(), &size) != kResultOk || size <= 0)
        return {};
    buffer.back() = 0;
    return String(buffer.c_str());
}

CvColor colorFromArgb(uint32 argb) {
    return CvColor(uint8(argb >> 16), uint8(argb >> 8), uint8(argb), uint8(argb >> 24));
}

CvColor readColor(IHostEditContext* context, FUnknown* object) {
    auto event = ::Halvorn::queryInterface<IHostTimelineEvent>(object);
    uint32 argb = 0;
    if (!event || !context || event->getColor(context, &argb) != kResultOk)
        return CvColor();
    return colorFromArgb(argb);
}

String mediaPath(IHostUrl* location) {
    if (!location)
        return {};
    char16 buffer[IHostUrl::kPathSize] = {};
    if (location->getPath(buffer) != kResultOk)
        return {};
    buffer[IHostUrl::kPathSize - 1] = 0;
    String path(buffer);
    path.replace(String("\\"), String("/"));
    return path;
}

} // namespace CvHostUtilities
} // namespace Halvorn
