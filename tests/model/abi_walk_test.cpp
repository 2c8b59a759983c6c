// Walks a model as a caller outside the library does: public headers and queryInterface only.
#include "corvelle/corvelle.h"

#include "documents/cvxmlreader.h"
#include "foundation/ffilesystem.h"
#include "foundation/fuid.h"
#include "model/cvproject.h"
#include "support/utf.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace Halvorn {
namespace {

// A face is a table pointer and nothing else: no data, no virtual destructor.
template <class... I> constexpr bool allBareTables() {
    return ((sizeof(I) == sizeof(void*) && std::is_abstract<I>::value &&
             !std::has_virtual_destructor<I>::value && std::is_base_of<FUnknown, I>::value) &&
            ...);
}
static_assert(
    allBareTables<IMediaObject, IMediaColor, IMediaProject, IMediaSignature, IMediaTrack,
                  IMediaChannel, IMediaSend, IMediaParameter, IMediaParameterContainer,
                  IMediaDevice, IMediaEqualizer, IMediaEqualizerBand, IMediaBuiltinInstrument,
                  IMediaTime, IMediaEvent, IMediaClip, IMediaAudioEvent, IMediaVideoEvent,
                  IMediaMidiEvent, IMediaMidiNoteEvent, IMediaMarkerEvent, IMediaTempoEvent,
                  IMediaSignatureEvent, IMediaWarpPoint, IMediaAutomation, IMediaAutomationPoint>(),
    "every IMedia interface is a bare table of operations");

using CorvelleSupport::toUtf8;

// Calls the operation in table slot `slot` (FUnknown's three count first) of a face, the way a
// caller compiled from an independent copy of the listed operation order would.
template <class R, class I, class... Args> R callSlot(I* face, int slot, Args... args) {
    using Operation = R (*)(I*, Args...);
    Operation* table = *reinterpret_cast<Operation**>(face);
    return table[slot](face, args...);
}

// The project of the writer's golden document, read back: one reference, the caller releases.
FUnknown* readGoldenProject() {
    const FUrl url(String(CORVELLE_TEST_DATA "/golden/project.xml"), false);
    FStream* stream = gFNFileSystem->openStream(url, FStream::kRead);
    if (!stream)
        return nullptr;
    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    CvProject* project = reader->readProject(stream);
    gFNFileSystem->closeStream(stream);
    return project ? static_cast<IMediaProject*>(project) : nullptr;
}

TEST(AbiWalk, IdentifiersMatchTheirRegistryForm) {
    struct Known {
        FUID iid;
        const char* text;
    };
    const Known known[] = {
        {IMediaObject::iid, "D36B04AA-5BA8-4952-8074-489E95542EC7"},
        {IMediaColor::iid, "8AABED9A-574C-4EEC-BAEC-66B8E104E86B"},
        {IMediaProject::iid, "6B502064-7B64-467A-BCCD-E7F9FEAE9FCF"},
        {IMediaSignature::iid, "952E9533-3065-4700-BA95-FCE27C097FAE"},
        {IMediaTrack::iid, "8A170F49-CA46-4BED-8846-D9342EF0A0D8"},
        {IMediaChannel::iid, "CD6B13FD-FF08-4BFE-9E72-6B53E4FABD10"},
        {IMediaSend::iid, "9238FCE4-2BA8-45F1-A24E-7556B92C0817"},
        {IMediaParameter::iid, "1B7F9CBB-033E-4A17-A9C9-0D26308BBFAD"},
        {IMediaParameterContainer::iid, "2E96755A-05F2-404C-86C3-77398A886E0C"},
        {IMediaDevice::iid, "3EEDDDC1-F4B5-4E3D-AB6A-E93873D79F6F"},
        {IMediaEqualizer::iid, "D14744C0-9AD2-4D64-A49A-39AE770EA2B7"},
        {IMediaEqualizerBand::iid, "1FAC4294-5704-4C32-A783-AB0F97A45E86"},
        {IMediaBuiltinInstrument::iid, "2CF2B774-DDE5-4D54-9232-091948FB5864"},
        {IMediaTime::iid, "8E1D8319-81E0-48AF-950E-F854F7DEBF8E"},
        {IMediaEvent::iid, "68A1A115-9E79-4730-A6E8-701DB817DDFE"},
        {IMediaClip::iid, "CAABC9FF-6706-46A7-973C-59D5B55E6397"},
        {IMediaAudioEvent::iid, "9CAF3BD5-8504-4575-9FEE-3E797B239203"},
        {IMediaVideoEvent::iid, "D891615A-580D-4A8D-85EA-A61BF54549B3"},
        {IMediaMidiEvent::iid, "B887A472-2CA4-40A7-B3A7-6D7F1EF85158"},
        {IMediaMidiNoteEvent::iid, "8EFAEC27-4D7F-4E70-81EB-DB910CA47775"},
        {IMediaMarkerEvent::iid, "F1B4E908-30A5-43FF-9EAE-F24594F84BBD"},
        {IMediaTempoEvent::iid, "44C731F4-CC4F-45A3-9CB2-E047CB77FD6F"},
        {IMediaSignatureEvent::iid, "21CC4C02-BA71-41D3-8070-BD9D6EA47C95"},
        {IMediaWarpPoint::iid, "4D9D69AB-0778-4273-BE02-C020C22A9B27"},
        {IMediaAutomation::iid, "A9D74D84-6BCE-43C4-9DDE-3F3BFBC410A5"},
        {IMediaAutomationPoint::iid, "1D79F25C-F14F-4092-9F11-390916B8A5B8"},
    };
    // The printed form reads the GUID byte layout, which the identifier tests pin.
    for (const Known& entry : known)
        EXPECT_EQ(printFuid(entry.iid, FuidForm::kRegistry).text8(),
                  "{" + std::string(entry.text) + "}");
}

TEST(AbiWalk, OperationsSitInTheirListedSlots) {
    FUnknown* root = readGoldenProject();
    ASSERT_NE(root, nullptr);
    {
        auto project = queryInterface<IMediaProject>(root);
        ASSERT_TRUE(project);
        EXPECT_FALSE(queryInterface<IMediaObject>(root)); // the project has no node identity
        IMediaProject* p = project.get();
        EXPECT_EQ(toUtf8(callSlot<const char16*>(p, 3)), "Corvelle Test");
        EXPECT_EQ(toUtf8(callSlot<const char16*>(p, 4)), "2.1");
        EXPECT_EQ(callSlot<uint32>(p, 5), 5u);
        EXPECT_EQ(callSlot<uint32>(p, 9), 4u);
        const char16* returnId = u"id21";
        EXPECT_EQ(callSlot<IMediaChannel*>(p, 11, returnId), p->getChannel(3));

        IMediaParameter* tempo = callSlot<IMediaParameter*>(p, 7);
        ASSERT_EQ(tempo, p->getTempo());
        callSlot<void>(tempo, 12, 10.0);  // setMin
        callSlot<void>(tempo, 13, 200.0); // setMax
        callSlot<void>(tempo, 14, 7u);    // setParameterId
        callSlot<void>(tempo, 15, 3u);    // setStepCount
        EXPECT_EQ(callSlot<uint32>(tempo, 3), kUnitBpm);
        EXPECT_EQ(callSlot<double>(tempo, 4), 128.5);
        EXPECT_EQ(callSlot<double>(tempo, 5), 10.0);
        EXPECT_EQ(callSlot<double>(tempo, 6), 200.0);
        EXPECT_EQ(callSlot<uint32>(tempo, 7), 7u);
        EXPECT_DOUBLE_EQ(callSlot<double>(tempo, 8), 118.5 / 190.0);
        EXPECT_FALSE(callSlot<bool>(tempo, 9));
        EXPECT_EQ(callSlot<uint32>(tempo, 10), 3u);
        callSlot<void>(tempo, 11, 50.0); // setValue
        EXPECT_EQ(tempo->getValue(), 50.0);
        EXPECT_EQ(callSlot<IMediaSignature*>(p, 8)->getNumerator(), 3);

        IMediaTrack* guitar = p->getTrack(0)->getTrack(0);
        EXPECT_EQ(callSlot<uint32>(guitar, 3), kContentAudio);
        EXPECT_EQ(callSlot<uint32>(guitar, 4), 0u);
        EXPECT_EQ(callSlot<uint32>(guitar, 6), 1u);
        EXPECT_EQ(callSlot<FUnknown*>(guitar, 9), nullptr);
        EXPECT_TRUE(callSlot<bool>(guitar, 10));
        EXPECT_EQ(callSlot<uint32>(guitar, 11), 1u);

        IMediaChannel* channel = callSlot<IMediaChannel*>(guitar, 8);
        ASSERT_EQ(channel, guitar->getChannel());
        EXPECT_EQ(callSlot<uint32>(channel, 3), 1u); // kind
        EXPECT_EQ(callSlot<uint32>(channel, 4), kChannelRoleRegular);
        EXPECT_EQ(callSlot<uint32>(channel, 5), 2u); // devices
        EXPECT_EQ(callSlot<uint32>(channel, 9), 2u); // audio channels
        EXPECT_EQ(toUtf8(callSlot<const char16*>(channel, 10)), "id20");
        EXPECT_EQ(callSlot<uint32>(channel, 11), 2u); // sends

        IMediaClip* clip = guitar->getClip(0);
        EXPECT_EQ(callSlot<uint32>(clip, 3), kEventAudio);
        EXPECT_EQ(callSlot<uint32>(clip, 5), 2u); // the clip without media is dropped
        EXPECT_EQ(callSlot<double>(clip, 7), 0.1);
        EXPECT_EQ(callSlot<double>(clip, 8), 0.0);
        auto take = queryInterface<IMediaAudioEvent>(clip->getEvent(0));
        ASSERT_TRUE(take);
        EXPECT_EQ(callSlot<uint32>(take.get(), 4), 2u);
        EXPECT_DOUBLE_EQ(callSlot<double>(take.get(), 6), 0.8); // read warps swap their times

        IMediaAutomation* lane = guitar->getAutomation(0);
        EXPECT_EQ(callSlot<uint32>(lane, 3), kUnitLinear);
        EXPECT_EQ(toUtf8(callSlot<const char16*>(lane, 4)), "id4");
        EXPECT_EQ(callSlot<uint32>(lane, 5), 3u);

        auto object = queryInterface<IMediaObject>(guitar);
        EXPECT_EQ(toUtf8(callSlot<const char16*>(object.get(), 3)), "id2");
        EXPECT_EQ(toUtf8(callSlot<const char16*>(object.get(), 4)), "Guitar");
        EXPECT_EQ(callSlot<uint8>(callSlot<IMediaColor*>(object.get(), 5), 4), 128); // green
    }
    EXPECT_EQ(root->release(), 0u);
}

} // namespace
} // namespace Halvorn
