// Fixture of the import tests: a workstation whose project is empty, packages made in the test
// from a project document and files, read by the package manager into the project's folders and
// imported with CvHostProject; the host's state and history are checked afterwards.
#pragma once

#include "refhost/hostfixture.h"

#include <map>
#include <string>
#include <vector>

namespace Halvorn {
namespace HostImportTest {

using RefHostTest::HostTest;

// project.xml with a transport at 120 and 4/4 unless another is given.
std::string document(const std::string& structure, const std::string& arrangement = {},
                     const std::string& transport =
                         "<Transport><Tempo unit=\"bpm\" value=\"120\"/>"
                         "<TimeSignature numerator=\"4\" denominator=\"4\"/></Transport>");

// The host's fader value for a gain at its default top gain of 2: gain = 2 v^3.
float faderFor(double gain);

// The example session with its project emptied: the tempo and signature tracks, the input and
// output channels, the plug-in catalogue and the channel strip; its project folder is
// "project".
nlohmann::json emptySession();

class ImportTest : public HostTest {
protected:
    void SetUp() override;

    // Packs project.xml and the files (package path to bytes), reads the package into the
    // project's folders and imports its model. False when the package couldn't be read.
    bool importPackage(const std::string& projectXml,
                       const std::map<std::string, std::string>& files = {});
    std::string projectFolder() const { return folder->path() + "/project"; }

    // The names of the undo history's steps, oldest first.
    std::vector<std::string> stepNames() const;
    // The actions of the last step with this name; empty when there is none.
    std::vector<std::string> actionsOf(const std::string& name) const;
    // Any track of the project by name (folders' tracks included), or null.
    RefHost::Track* hostTrack(const std::u16string& name) const;
    // The track's children as the host's objects of class T.
    template <class T> std::vector<T*> itemsOf(RefHost::TimelineNode* node) const {
        std::vector<T*> items;
        for (auto& child : node->children())
            if (auto* item = dynamic_cast<T*>(child.get()))
                items.push_back(item);
        return items;
    }
};

} // namespace HostImportTest
} // namespace Halvorn
