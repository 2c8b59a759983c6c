// CvPluginFactory: the module's factory record, its class row and how they are built.
#include "shell/cvpluginfactory.h"

#include "shell/cvservice.h"
#include "shell/fixedtext.h"

#include <cstring>
#include <mutex>
#include <new>

namespace Halvorn {

namespace {

// C99757FF-07E6-4C38-AFC8-FFDA50EC2041: hosts remember the class by it, so it never changes.
constexpr FUID kServiceClassId = FUID::make(0xC99757FF, 0x07E6, 0x4C38, 0xAFC8, 0xFFDA50EC2041);

FactoryInfo moduleFactoryInfo() {
    FactoryInfo info{};
    copyFixedText(info.vendor, "Halvorn Audio Works");
    copyFixedText(info.url, "https://www.halvorn-audio.com");
    copyFixedText(info.email, "mailto:support@halvorn-audio.com");
    // Bits 8 and 16; they mean something to the host only, the module just reports them.
    info.flags = 8 | 16;
    return info;
}

// The record of the one class, built once whatever thread asks first.
const ClassInfo2& serviceClassRecord() {
    static ClassInfo2 record;
    static std::once_flag built;
    std::call_once(built, [] {
        std::memset(&record, 0, sizeof record);
        std::memcpy(record.cid, kServiceClassId.bytes, sizeof record.cid);
        record.cardinality = 1;
        copyFixedText(record.category, "Project Filter");
        copyFixedText(record.name, "Corvelle");
        record.classFlags = 0;
        copyFixedText(record.subCategories, "");
        copyFixedText(record.vendor, "");
        copyFixedText(record.version, "1.0.30.119");
        copyFixedText(record.sdkVersion, "FPI 3.2");
    });
    return record;
}

} // namespace

CvPluginFactory* CvPluginFactory::make() {
    auto* factory = new (std::nothrow) CvPluginFactory(moduleFactoryInfo());
    if (!factory)
        return nullptr;
    if (!factory->registerClass(&serviceClassRecord(), createService, nullptr)) {
        factory->release();
        return nullptr;
    }
    return factory;
}

} // namespace Halvorn
