// Strict reference counting: owning and borrowed results, leaks and over-releases.
#include "hostfixture.h"
#include "pluginrunner.h"

#include <sstream>

namespace Halvorn {
namespace RefHostTest {

TEST_F(HostTest, BorrowedResultsCarryNoReferenceAndOwningOnesOne) {
    // Borrowed getters asked many times leave nothing behind; owning results given back once
    // each leave nothing either. A getter that added a reference shows up as a leak, an owning
    // one without its reference as an over-release.
    for (int round = 0; round < 3; ++round) {
        IHostProject* active = project();
        active->getTempoTrack();
        active->getSignatureTrack();
        active->getMediaPool();
        active->getProjectFolder();
        IHostParameterOwner* drums = channel(u"Drums");
        queryInterface<IHostChannelModules>(drums)->findModule("Channel Compressor");
        drums->getChild(0);
        static_cast<IHostObjectType*>(track(u"Drums"))->getAutomationFolder();
        IPtr<IHostParameter>::adopt(drums->findParameter("volume"));
        IPtr<IHostParameter>::adopt(drums->getParameterByTag(1));
        IPtr<IHostEditContext>::adopt(active->getEditContext(0));
        IPtr<IHostIterator>::adopt(queryInterface<IHostTimelineObject>(active)->getChildren());
        auto browser = service<IPathBrowser>();
        IPtr<IHostPathBrowserOptions>::adopt(browser->createOptions());
    }
    RefHost::LedgerReport report = station->close();
    EXPECT_TRUE(report.clean()) << report.text();
    EXPECT_EQ(station->ledger.liveCount(), 0);
}

TEST_F(HostTest, LeaksAndOverReleasesAreReported) {
    void* out = nullptr;
    ASSERT_EQ(host()->getInterface(IHostUrl::iid, &out), kResultOk);
    auto* url = static_cast<IHostUrl*>(out);
    static_cast<IHostUrl*>(out)->setPath(u"/kept", 0);
    IHostParameter* held = channel(u"Main")->findParameter("mute");
    RefHost::LedgerReport open = station->ledger.report();
    EXPECT_TRUE(open.faults.empty());

    IHostParameterOwner* drums = channel(u"Drums");
    IHostParameter* volume = drums->findParameter("volume");
    volume->release();
    volume->release();
    IHostEditContext* context = project()->getEditContext(0);
    context->release();
    context->release();

    RefHost::LedgerReport report = station->close();
    EXPECT_FALSE(report.clean());
    ASSERT_EQ(report.faults.size(), 2u) << report.text();
    EXPECT_NE(report.faults[0].find("over-release of edit context"), std::string::npos);
    // The volume lost its channel's reference; that shows when the channel gives it back.
    EXPECT_NE(report.faults[1].find("over-release of parameter 'volume'"), std::string::npos);
    bool urlLeak = false, parameterLeak = false, volumeLeak = false;
    for (const std::string& leak : report.leaks) {
        urlLeak |= leak.find("location '/kept'") != std::string::npos;
        parameterLeak |= leak.find("parameter 'mute'") != std::string::npos;
        volumeLeak |= leak.find("parameter 'volume'") != std::string::npos;
    }
    EXPECT_TRUE(urlLeak) << report.text();
    EXPECT_TRUE(parameterLeak) << report.text();
    EXPECT_FALSE(volumeLeak) << report.text();
    url->release();
    held->release();
    station.reset();
}

TEST(CorvelleHost, WalksTheModuleAndChecksItsReferences) {
    std::ostringstream out, err;
    ASSERT_EQ(RefHost::runPlugin(CORVELLE_MODULE_PATH, out, err), 0) << err.str();
    std::string text = out.str();
    EXPECT_NE(text.find("cid C99757FF-07E6-4C38-AFC8-FFDA50EC2041"), std::string::npos) << text;
    EXPECT_NE(text.find("ClassInfoWide"), std::string::npos) << text;
    EXPECT_NE(text.find("sdkVersion \"FPI 3.2\""), std::string::npos) << text;
    EXPECT_NE(text.find("vendor \"Halvorn Audio Works\""), std::string::npos) << text;
    EXPECT_NE(text.find("leak check: no leaks, no over-releases"), std::string::npos) << text;

    std::ostringstream none, why;
    EXPECT_EQ(RefHost::runPlugin("/no/such/module.so", none, why), 1);
    EXPECT_NE(why.str().find("can't load the module"), std::string::npos);
}

} // namespace RefHostTest
} // namespace Halvorn
