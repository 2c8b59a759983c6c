// The export suites' fixture: the reference host with the example session, the exporter run
// in-process, and lookups in the exported model through its IMedia interfaces.
#pragma once

#include "corvelle/mediadevice.h"
#include "corvelle/mediaproject.h"
#include "corvelle/mediatrack.h"
#include "refhost/hostfixture.h"

#include <string>

namespace Halvorn {
namespace ExportTest {

// A text from the model as UTF-8; empty for null.
using RefHostTest::utf8;
std::string nameOf(FUnknown* object);
std::string idOf(FUnknown* object);
// The first track with this name, searched depth first through folders; borrowed.
IMediaTrack* findTrack(IMediaProject* project, const std::string& name);
// The project channel with this name; borrowed.
IMediaChannel* findChannel(IMediaProject* project, const std::string& name);
// The channel's first device of this type, or null; borrowed.
IMediaDevice* deviceOfType(IMediaChannel* channel, uint32 type);
// The number in an exported object's id ("id12" is 12).
int idNumber(FUnknown* object);

class ExportTest : public RefHostTest::HostTest {
protected:
    // Runs an exporter on the loaded session; its preset folder lies in the test's folder.
    IPtr<IMediaProject> exportModel();
    // Changes the session and loads it again.
    template <class Edit> void edit(Edit&& change) {
        nlohmann::json session = RefHostTest::exampleSession();
        change(session);
        load(session);
    }
    // The example session's channel or track entry with this id.
    static nlohmann::json& entry(nlohmann::json& list, const std::string& id);
    std::string presetFolder() const { return folder->path() + "/work/Preset"; }
};

} // namespace ExportTest
} // namespace Halvorn
