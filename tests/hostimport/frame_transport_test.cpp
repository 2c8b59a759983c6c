// The frame of an import (sessions, progress, the editor setting, the closing step) and the
// transport: the fixed tempo and signature and the merge of tempo and signature events.
#include "importfixture.h"

#include "hostimport/cvhostproject.h"

#include <cstdio>

using namespace Halvorn;
using namespace Halvorn::HostImportTest;
using RefHost::SignatureEvent;
using RefHost::TempoEvent;

namespace {

std::vector<std::pair<double, double>> tempoEvents(RefHost::Track* track) {
    std::vector<std::pair<double, double>> events;
    for (auto& child : track->children())
        if (auto* event = dynamic_cast<TempoEvent*>(child.get()))
            events.emplace_back(event->start, event->bpm);
    return events;
}

TEST_F(ImportTest, AnEmptyModelSetsTheTransportAndClosesWithOneStep) {
    RefHost::Parameter* editors = station->mixer->param("autoOpenPluginEditor");
    ASSERT_EQ(editors->normalized, 1.0);
    int32 notifiedBefore = editors->notifications;
    std::FILE* drawn = std::tmpfile();
    ASSERT_TRUE(drawn);
    station->progressOut = drawn;

    ASSERT_TRUE(importPackage(document("", "",
                                       "<Transport><Tempo unit=\"bpm\" value=\"90\"/>"
                                       "<TimeSignature numerator=\"6\" denominator=\"8\"/>"
                                       "</Transport>")));

    EXPECT_EQ(stepNames(), std::vector<std::string>{"Import Corvelle"});
    std::rewind(drawn);
    char text[4096] = {};
    std::string shown(text, std::fread(text, 1, sizeof text - 1, drawn));
    std::fclose(drawn);
    station->progressOut = nullptr;
    EXPECT_NE(shown.find("Import Corvelle: Import Transport"), std::string::npos) << shown;
    EXPECT_NE(shown.find("Import Corvelle: Import Tracks"), std::string::npos) << shown;
    EXPECT_NE(shown.find("[#"), std::string::npos) << shown;
    auto* tempo = dynamic_cast<RefHost::TempoTrack*>(hostTrack(u"Tempo"));
    auto* signature = dynamic_cast<RefHost::SignatureTrack*>(hostTrack(u"Signature"));
    ASSERT_TRUE(tempo && signature);
    EXPECT_EQ(tempo->fixedTempo, 90.0);
    // Only the event at exactly 0 takes the model's tempo; the one at 8 stays.
    EXPECT_EQ(tempoEvents(tempo),
              (std::vector<std::pair<double, double>>{{0.0, 90.0}, {8.0, 96.0}}));
    EXPECT_EQ(signature->numerator, 6);
    EXPECT_EQ(signature->denominator, 8);
    // Switched off with notice during the import, restored silently at its end.
    EXPECT_EQ(editors->normalized, 1.0);
    EXPECT_EQ(editors->notifications, notifiedBefore + 1);
}

TEST_F(ImportTest, WithoutAnOpenProjectNothingHappens) {
    station->project = nullptr;
    ASSERT_TRUE(importPackage(document("<Track contentType=\"audio\" id=\"a\" name=\"A\"/>")));
    EXPECT_TRUE(station->history.empty());
    EXPECT_EQ(station->mixer->param("autoOpenPluginEditor")->notifications, 0);

    // A null model or host is no fault either.
    auto importer = IPtr<CvHostProject>::adopt(new CvHostProject(nullptr));
    importer->importProject(nullptr);
}

TEST_F(ImportTest, TempoAndSignatureEventsMergeByExactPosition) {
    std::string arrangement =
        "<TempoAutomation>"
        "<RealPoint time=\"8\" value=\"100\" interpolation=\"hold\"/>"   // changes the host's
        "<RealPoint time=\"4\" value=\"140\" interpolation=\"linear\"/>" // a new place
        "<RealPoint time=\"4\" value=\"150\" interpolation=\"hold\"/>"   // and again there
        "<RealPoint time=\"8.0000001\" value=\"70\" interpolation=\"hold\"/>"
        "</TempoAutomation>"
        "<TimeSignatureAutomation timeUnit=\"seconds\">"
        "<TimeSignaturePoint time=\"2\" numerator=\"3\" denominator=\"4\" color=\"#ff0000\"/>"
        "</TimeSignatureAutomation>";
    ASSERT_TRUE(importPackage(document("", arrangement)));

    auto* tempo = hostTrack(u"Tempo");
    std::vector<std::pair<double, double>> events = tempoEvents(tempo);
    std::sort(events.begin(), events.end());
    EXPECT_EQ(events,
              (std::vector<std::pair<double, double>>{
                  {0.0, 120.0}, {4.0, 140.0}, {4.0, 150.0}, {8.0, 100.0}, {8.0000001, 70.0}}));
    auto ramps = itemsOf<TempoEvent>(tempo);
    EXPECT_TRUE(std::any_of(ramps.begin(), ramps.end(),
                            [](TempoEvent* event) { return event->ramp && event->bpm == 140.0; }));

    auto signatures = itemsOf<SignatureEvent>(hostTrack(u"Signature"));
    auto added = std::find_if(signatures.begin(), signatures.end(),
                              [](SignatureEvent* event) { return event->start == 2.0; });
    ASSERT_NE(added, signatures.end());
    EXPECT_EQ((*added)->numerator, 3);
    EXPECT_EQ((*added)->color, 0xFFFF0000u);

    // The host has a tempo track, so it is added (and kept); its signature track isn't.
    std::vector<std::string> steps = stepNames();
    EXPECT_EQ(steps, (std::vector<std::string>{"Import Track", "Import Corvelle"}));
    EXPECT_EQ(actionsOf("Import Track"), std::vector<std::string>{"keep track 'Tempo'"});
}

} // namespace
