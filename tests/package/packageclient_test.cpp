// CvPackageManagerClient's table and CvPackage's hold on its project.
#include "corvelle/ptr.h"
#include "model/cvproject.h"
#include "package/cvpackage.h"
#include "package/cvpackagemanagerclient.h"

#include <gtest/gtest.h>

using namespace Halvorn;

TEST(PackageClient, KeepsOneRowPerTypeWithTheLatestFolder) {
    CvPackageManagerClient client;
    EXPECT_EQ(client.getPathForFileType(2), nullptr);
    client.setPathForFileType(2, String("/a/Audio"));
    client.setPathForFileType(4, String("/a/Video"));
    client.setPathForFileType(2, String("/b/Audio"));
    EXPECT_EQ(String(client.getPathForFileType(2)), String("/b/Audio"));
    EXPECT_EQ(String(client.getPathForFileType(4)), String("/a/Video"));
    EXPECT_EQ(client.getPathForFileType(3), nullptr);
    EXPECT_EQ(client.getPathForFileType(-1), nullptr);

    auto face = queryInterface<IMediaPackageManagerClient>(static_cast<FObject*>(&client));
    ASSERT_TRUE(face);
    EXPECT_EQ(String(face->getPathForFileType(4)), String("/a/Video"));
}

TEST(Package, HoldsItsProjectUntilItGoes) {
    auto project = newObject<CvProject>(String("App"), String("1"));
    auto* package = new CvPackage(project.get());
    EXPECT_EQ(project->refCount(), 2);
    EXPECT_EQ(package->getProject(), static_cast<IMediaProject*>(project.get()));
    EXPECT_TRUE(queryInterface<IMediaProjectPackage>(static_cast<FObject*>(package)));
    package->release();
    EXPECT_EQ(project->refCount(), 1);

    CvPackage empty(nullptr);
    EXPECT_EQ(empty.getProject(), nullptr);
}
