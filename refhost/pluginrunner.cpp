// The module walk of "corvelle-host plugin".
#include "pluginrunner.h"
#include "corvelle/factory.h"
#include "corvelle/filter.h"
#include "corvelle/ptr.h"
#include "corvelle/version.h"
#include "moduleloader.h"
#include "support/classversion.h"
#include "text.h"
#include "workstation.h"

#include <cstring>
#include <sstream>
#include <string>

namespace Halvorn {
namespace RefHost {

namespace {

// A fixed-size field of a record: up to its first zero, never past its end.
std::string field(const char* text, size_t size) { return std::string(text, strnlen(text, size)); }

std::string field(const char16* text, size_t size) {
    size_t length = 0;
    while (length < size && text[length])
        ++length;
    return toUtf8(std::u16string(text, length));
}

std::string cidText(const uint8* cid) {
    FUID id{};
    std::memcpy(id.bytes, cid, 16);
    return fuidText(id);
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

void printClass(IPluginFactory& factory, int32 index, std::ostream& out) {
    ClassInfo info{};
    out << "class " << index << "\n";
    if (factory.getClassInfo(index, &info) == kResultOk)
        out << "  ClassInfo      cid " << cidText(info.cid) << "  cardinality " << info.cardinality
            << "  category " << quoted(field(info.category, sizeof info.category)) << "  name "
            << quoted(field(info.name, sizeof info.name)) << "\n";
    if (auto factory2 = queryInterface<IPluginFactory2>(&factory)) {
        ClassInfo2 info2{};
        if (factory2->getClassInfo2(index, &info2) == kResultOk)
            out << "  ClassInfo2     cid " << cidText(info2.cid) << "  cardinality "
                << info2.cardinality << "  category "
                << quoted(field(info2.category, sizeof info2.category)) << "  name "
                << quoted(field(info2.name, sizeof info2.name)) << "\n"
                << "                 classFlags " << info2.classFlags << "  subCategories "
                << quoted(field(info2.subCategories, sizeof info2.subCategories)) << "  vendor "
                << quoted(field(info2.vendor, sizeof info2.vendor)) << "  version "
                << quoted(field(info2.version, sizeof info2.version)) << "  sdkVersion "
                << quoted(field(info2.sdkVersion, sizeof info2.sdkVersion)) << "\n";
    }
    if (auto factory3 = queryInterface<IPluginFactory3>(&factory)) {
        ClassInfoWide wide{};
        if (factory3->getClassInfoUnicode(index, &wide) == kResultOk)
            out << "  ClassInfoWide  cid " << cidText(wide.cid) << "  cardinality "
                << wide.cardinality << "  category "
                << quoted(field(wide.category, sizeof wide.category)) << "  name "
                << quoted(field(wide.name, ClassInfoWide::kNameSize)) << "\n"
                << "                 classFlags " << wide.classFlags << "  subCategories "
                << quoted(field(wide.subCategories, sizeof wide.subCategories)) << "  vendor "
                << quoted(field(wide.vendor, ClassInfoWide::kVendorSize)) << "  version "
                << quoted(field(wide.version, ClassInfoWide::kVersionSize)) << "  sdkVersion "
                << quoted(field(wide.sdkVersion, ClassInfoWide::kVersionSize)) << " (16-bit)\n";
    }
}

// Creates the service of a project filter row, gives it the host and lets it go again.
void runService(IPluginFactory& factory, const ClassInfo& info, Workstation& station,
                std::ostream& out) {
    void* object = nullptr;
    tresult result = factory.createInstance(info.cid, IPluginBase::iid, &object);
    if (result != kResultOk || !object) {
        out << "service: the module offers no service yet (createInstance gave "
            << resultText(result) << ")\n";
        return;
    }
    auto service = IPtr<IPluginBase>::adopt(static_cast<IPluginBase*>(object));
    out << "service: created; initialize with the host context gave "
        << resultText(service->initialize(station.context())) << ", terminate gave "
        << resultText(service->terminate()) << "\n";
}

} // namespace

int runPlugin(const std::string& modulePath, std::ostream& out, std::ostream& err) {
    LoadedModule module;
    if (!module.open(modulePath, err))
        return 1;
    out << "module   " << modulePath << "\n";
    out << "InitDll  " << (module.initResult() ? "true" : "false") << "\n";
    IPluginFactory* factory = module.factory();
    if (!factory) {
        err << "corvelle-host: GetPluginFactory gave no factory\n";
        return 1;
    }
    LedgerReport report;
    {
        Workstation station;
        FactoryInfo info{};
        factory->getFactoryInfo(&info);
        out << "FactoryInfo  vendor " << quoted(field(info.vendor, sizeof info.vendor)) << "\n"
            << "             url    " << quoted(field(info.url, sizeof info.url)) << "\n"
            << "             email  " << quoted(field(info.email, sizeof info.email)) << "\n"
            << "             flags  " << info.flags << "\n";
        int32 count = factory->countClasses();
        out << "classes  " << count << "\n";
        for (int32 index = 0; index < count; ++index) {
            printClass(*factory, index, out);
            ClassInfo row{};
            if (factory->getClassInfo(index, &row) == kResultOk &&
                field(row.category, sizeof row.category) == "Project Filter")
                runService(*factory, row, station, out);
        }
        out << "factory released, count now " << factory->release() << "\n";
        report = station.close();
    }
    out << "ExitDll  " << (module.finish() ? "true" : "false") << "\n";
    out << "leak check: " << report.text();
    if (!report.clean()) {
        err << "corvelle-host: the host's objects were not given back as they should be\n";
        return 1;
    }
    return 0;
}

std::string versionLine(const std::string& modulePath) {
    std::ostringstream ignored; // the line itself says when the module can't be loaded
    std::string version = "unknown: can't load " + modulePath;
    LoadedModule module;
    if (module.open(modulePath, ignored)) {
        {
            // Let go of the factory before the module closes.
            const auto factory = IPtr<IPluginFactory>::adopt(module.factory());
            const std::string row = factory ? CorvelleSupport::classRowVersion(*factory) : "";
            version = row.empty() ? "unknown" : row;
        }
        module.finish();
    }
    return std::string("corvelle-host ") + CORVELLE_VERSION + " (module class version " + version +
           ")";
}

} // namespace RefHost
} // namespace Halvorn
