// Fuzz target: the whole read road, readPackage on arbitrary bytes with a client whose folders
// lie in the scratch folder. Beyond the sanitizers it checks that no extraction folder stays.
#include "corvelle/ptr.h"
#include "fuzzsupport.h"
#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"

#include <cstdlib>

using namespace CorvelleFuzz;
using namespace Halvorn;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (!writeInput(data, size, "input.corvelle"))
        return 0;
    const std::string host = scratchFolder() + "/host";
    CvPackageManagerClient client;
    const char* const folders[] = {"/Preset", "/Audio", "/Midi", "/Video"}; // file types 1 to 4
    for (int32 type = 1; type <= 4; ++type)
        client.setPathForFileType(type, String((host + folders[type - 1]).c_str()));
    CvPackageManager manager;
    const String path((scratchFolder() + "/input.corvelle").c_str());
    const auto package =
        IPtr<IMediaProjectPackage>::adopt(manager.readPackage(path.text16(), &client));
    if (countEntries(scratchFolder() + "/temp") != 0)
        std::abort();
    removeTree(host);
    return 0;
}
