// CvHostProjectExporter: a plug-in in a slot as a device, with its class and its state file.
#include "hostexport/cvhostprojectexporter.h"

#include "foundation/ffilesystem.h"
#include "foundation/fuid.h"


namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {
// The plug-in's name as its slot shows it.
constexpr int32 kDeviceNameSize = 256;
constexpr int32 kPresetFileType = 1;
} // namespace

CvDevice* CvHostProjectExporter::exportDevice(IHostParameterOwner* slot,
                                              IHostParameterOwner* plugin, uint32 type,
                                              uint32 role) {
    if (!slot || !plugin)
        return nullptr;
    auto effectType = findParameter(slot, "effectType");
    if (!effectType)
        return nullptr;
    String name = parameterText(effectType.get(), kDeviceNameSize);
    FUID classId{};
    if (!tools_ || tools_->getPluginClass(effectType.get(), classId) != kResultOk)
        return nullptr;
    IPtr<CvDevice> device;
    if (type == kDeviceEqualizer)
        device = IPtr<CvDevice>::adopt(new CvEqualizer(role, newId()));
    else
        device = newObject<CvDevice>(type, role, newId());
    device->setName(name);
    if (auto on = findParameter(slot, "on"))
        device->setEnabled(on->getValue() > 0.0f);
    registerContainer(device.get(), plugin);
    device->setDeviceId(printFuid(classId, FuidForm::kPlain));
    writeStateFile(plugin, *device);
    return device.release();
}

void CvHostProjectExporter::writeStateFile(IHostParameterOwner* plugin, CvDevice& device) {
    const char16* presetFolder = client_->getPathForFileType(kPresetFileType);
    String path(presetFolder ? presetFolder : u"");
    path.replace(String("\\"), String("/"));
    if (!path.endsWith(String("/")))
        path.append("/");
    // The name says nothing of the plug-in or its track: host names never become file names.
    String name = printFuid(generateFuid(), FuidForm::kRegistry);
    path.append(name.text16() + 1, name.length() - 2);
    path.append(".quorpreset");
    FStream* stream = gFNFileSystem->createStream(FUrl(path, false), FStream::kWrite);
    if (!stream)
        return;
    if (auto state = ::Halvorn::queryInterface<IHostPluginState>(plugin))
        state->saveState(static_cast<IBStream*>(stream));
    gFNFileSystem->closeStream(stream);
    // Referred to whatever saveState gave: a plug-in that can't save leaves an empty file.
    device.setStateFile(path, true);
}

} // namespace Halvorn
