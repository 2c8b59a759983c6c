// Strict reference counting: owning and borrowed results, leaks and over-releases.
#include "hostfixture.h"
#include "pluginrunner.h"

#include <algorithm>
#include <sstream>

namespace Halvorn {
namespace RefHostTest {

// That borrowed getters add no reference and owning ones give one is what every export and
// import test's clean ledger at teardown shows; here that the ledger sees both faults.
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
    auto leaked = [&report](const std::string& what) {
        return std::any_of(report.leaks.begin(), report.leaks.end(),
                           [&](const std::string& leak) { return leak.find(what) != leak.npos; });
    };
    EXPECT_TRUE(leaked("location '/kept'")) << report.text();
    EXPECT_TRUE(leaked("parameter 'mute'")) << report.text();
    EXPECT_FALSE(leaked("parameter 'volume'")) << report.text();
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
