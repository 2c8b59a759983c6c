// The class row's version text, read through IPluginFactory2.
#include "support/classversion.h"

#include "corvelle/ptr.h"

#include <cstring>

namespace CorvelleSupport {

using namespace Halvorn;

std::string classRowVersion(IPluginFactory& factory) {
    const auto factory2 = queryInterface<IPluginFactory2>(&factory);
    ClassInfo2 row{};
    if (!factory2 || factory.countClasses() < 1 || factory2->getClassInfo2(0, &row) != kResultOk)
        return {};
    // The field is zero-padded, but a foreign module need not end it with a zero.
    return std::string(row.version, strnlen(row.version, sizeof row.version));
}

} // namespace CorvelleSupport
