// A host that refuses one interface, as a service and as a face of its objects: the import leaves
// out what needed it, gives every reference back, and closes as usual.
#include "importfixture.h"

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

const char* kStructure =
    "<Track contentType=\"tracks\" id=\"f\" name=\"Folder\"><Channel id=\"cf\" role=\"submix\"/>"
    "<Track contentType=\"audio\" id=\"a\" name=\"Vox\"><Channel id=\"ca\" audioChannels=\"2\">"
    "<Volume id=\"vol\" value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/>"
    "<Pan id=\"pan\" value=\"0.5\" unit=\"normalized\"/><Devices>"
    "<Quor3Plugin id=\"d\" deviceRole=\"audioFX\" deviceID=\"5A1D3C2B7E444B1F9C0D2B8E6F4A1C35\">"
    "<Parameters><RealParameter id=\"thr\" value=\"0.5\" parameterID=\"0\"/></Parameters>"
    "<State path=\"plugins/comp.quorpreset\"/></Quor3Plugin>"
    "<Compressor id=\"c\" deviceRole=\"audioFX\"><AutoMakeup value=\"true\"/></Compressor>"
    "</Devices><Sends><Send id=\"s\" type=\"pre\" destination=\"fx\">"
    "<Volume id=\"lvl\" value=\"1\" unit=\"linear\"/></Send></Sends></Channel></Track>"
    "<Track contentType=\"video\" id=\"v\" name=\"Film\"/></Track>"
    "<Track contentType=\"notes\" id=\"n\" name=\"Keys\"><Channel id=\"cn\"><Devices>"
    "<BuiltinInstrument deviceRole=\"instrument\" deviceID=\"9C3F27D85B104E62A4F30D8B1E7C6A29\">"
    "<Preset name=\"Grand\"/></BuiltinInstrument></Devices></Channel></Track>"
    "<Channel id=\"fx\" name=\"Verb\" role=\"effect\"/>";

const char* kArrangement =
    "<Lanes timeUnit=\"seconds\"><Lanes track=\"a\"><Clips>"
    "<Clip time=\"1\" duration=\"1\"><Clips><Clip><Audio><File path=\"audio/take.wav\"/></Audio>"
    "</Clip></Clips></Clip>"
    "<Clip time=\"3\" duration=\"2\"><Clips><Clip><Audio><File path=\"audio/take.wav\"/></Audio>"
    "</Clip><Clip time=\"1\"><Audio><File path=\"audio/take.wav\"/></Audio></Clip></Clips></Clip>"
    "</Clips>"
    "<Points><Target parameter=\"vol\"/><RealPoint time=\"1\" value=\"1\"/></Points>"
    "<Points><Target parameter=\"pan\"/><RealPoint time=\"1\" value=\"1\"/></Points>"
    "<Points><Target parameter=\"thr\"/><RealPoint time=\"1\" value=\"1\"/></Points>"
    "<Points><Target parameter=\"lvl\"/><RealPoint time=\"1\" value=\"1\"/></Points></Lanes>"
    "<Lanes track=\"v\"><Clips><Clip duration=\"2\"><Video><File path=\"video/film.mp4\"/>"
    "</Video></Clip></Clips></Lanes>"
    "<Lanes track=\"n\"><Clips><Clip duration=\"4\"><Notes><Note time=\"1\" key=\"60\"/></Notes>"
    "</Clip></Clips></Lanes></Lanes>"
    "<TempoAutomation><RealPoint time=\"2\" value=\"100\"/></TempoAutomation>"
    "<TimeSignatureAutomation timeUnit=\"seconds\"><TimeSignaturePoint time=\"2\"/>"
    "</TimeSignatureAutomation>"
    "<Markers timeUnit=\"seconds\"><Marker time=\"1\" name=\"Verse\"/></Markers>";

TEST_F(ImportTest, AHostThatRefusesAnyOneInterfaceLosesOnlyWhatNeedsIt) {
    const std::map<std::string, std::string> files = {
        {"audio/take.wav", RefHostTest::wavBytes(folder->path() + "/take.wav", 4410)},
        {"video/film.mp4", RefHostTest::movieFile(0, 1000, 2000)},
        {"plugins/comp.quorpreset",
         "QUORPRESET 1\n5A1D3C2B-7E44-4B1F-9C0D-2B8E6F4A1C35\n0=0.25\n"}};
    const FUID refusals[] = {IHostProjectManager::iid,
                             IHostEditSession::iid,
                             IHostProgressDialog::iid,
                             IHostObjectRegistry::iid,
                             IHostProjectTools::iid,
                             IHostVolumeCurve::iid,
                             IHostUrl::iid,
                             IHostAudioFile::iid,
                             IHostAudioClip::iid,
                             IHostVideoClip::iid,
                             IAudioEvent::iid,
                             IAudioPart::iid,
                             IMidiPart::iid,
                             IHostNoteEvent::iid,
                             IVideoEvent::iid,
                             IMarkerObject::iid,
                             ITempoObject::iid,
                             ISignatureObject::iid,
                             IHostAutomationPoint::iid};
    size_t complete = 0;
    for (const FUID& refused : refusals) {
        SetUp(); // a fresh empty project; the fixture checks the last one's references
        station->ledger.refuse(refused);
        ASSERT_TRUE(importPackage(document(kStructure, kArrangement), files));
        std::vector<std::string> steps = stepNames();
        bool nothing = refused == IHostProjectManager::iid || refused == IHostEditSession::iid;
        EXPECT_EQ(steps.empty(), nothing);
        if (!nothing) {
            EXPECT_EQ(steps.back(), "Import Corvelle");
            EXPECT_EQ(std::count(steps.begin(), steps.end(), "Import Corvelle"), 1);
            complete += steps.size() > 10 ? 1 : 0;
        }
    }
    EXPECT_EQ(complete, std::size(refusals) - 2);
}

} // namespace
