// The document's enumeration texts: lenient reading, exact writing, and round trips. Texts that
// the golden document holds are written there, and those the outline documents hold are read.
#include "documents/cvtables.h"

#include "corvelle/mediaautomation.h"
#include "corvelle/mediadevice.h"
#include "corvelle/mediaparameter.h"
#include "corvelle/mediatrack.h"

#include <gtest/gtest.h>

namespace Halvorn {
namespace {

TEST(Tables, TrackAndChannelTextsReadLeniently) {
    EXPECT_EQ(contentTypeFromString("Audio"), kContentUnknown);
    for (uint32 type : {uint32(kContentTempo), uint32(kContentSignature), 5u})
        EXPECT_STREQ(contentTypeToString(type), "unknown") << type;
    EXPECT_STREQ(contentTypeToString(kContentMarkers), "markers");
    EXPECT_EQ(contentTypeFromString(contentTypeToString(kContentAutomation)), kContentAutomation);

    EXPECT_EQ(channelRoleFromString("group"), kChannelRoleUnknown);
    EXPECT_EQ(channelRoleFromString("vca"), kChannelRoleVca);
    EXPECT_STREQ(channelRoleToString(kChannelRoleUnknown), "");
    EXPECT_STREQ(channelRoleToString(42), "");

    EXPECT_EQ(sendTypeFromString("POST"), kSendPre);
    EXPECT_EQ(sendTypeFromString(""), kSendPre);
}

TEST(Tables, DeviceParameterAndPointTextsReadLeniently) {
    EXPECT_EQ(unitFromString("dB"), kUnitUnknown);
    EXPECT_EQ(unitFromString("bpm"), kUnitBpm);
    EXPECT_STREQ(unitToString(99), "");
    EXPECT_STREQ(unitToString(kUnitUnknown), "");
    EXPECT_STREQ(unitToString(kUnitSemitones), "semitones");
    for (uint32 unit = kUnitLinear; unit <= kUnitBpm; ++unit)
        EXPECT_EQ(unitFromString(unitToString(unit)), unit);

    EXPECT_EQ(deviceTypeFromString("equalizer"), kDeviceUnknown);
    EXPECT_EQ(deviceRoleFromString("noteFX"), kRoleNoteFX);
    EXPECT_EQ(deviceRoleFromString("unknown"), kRoleUnknown);
    EXPECT_STREQ(deviceRoleToString(kRoleUnknown), "");
    EXPECT_STREQ(deviceRoleToString(kRoleAnalyzer), "analyzer");

    EXPECT_EQ(bandTypeFromString("highShelf"), kBandHighShelf);
    EXPECT_EQ(bandTypeFromString("shelf"), kBandUnknown);
    EXPECT_STREQ(bandTypeToString(99), "unknown");
    EXPECT_STREQ(bandTypeToString(kBandNotch), "notch");

    EXPECT_EQ(interpolationFromString("linear"), kInterpolationLinear);
    EXPECT_EQ(interpolationFromString("cubic"), kInterpolationHold);
}

} // namespace
} // namespace Halvorn
