// FUrl: path forms, name parts, special folders and the free-name search.
#include "common/testfiles.h"
#include "foundation/furl.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

using namespace Halvorn;
using namespace TestSupport;

namespace {

FUrl::FreeNameTest takenAre(std::set<std::string> taken) {
    return [taken](const String& path) { return taken.count(path.text8()) == 0; };
}

} // namespace

TEST(FUrl, NormalisesPathsAndSplitsNames) {
    FUrl file(String("C:\\Projects\\song.take 2.xml"), false);
    EXPECT_STREQ(file.getPath().text8(), "C:/Projects/song.take 2.xml");
    EXPECT_STREQ(file.getName().text8(), "song.take 2.xml");
    EXPECT_STREQ(file.getNameWithoutExtension().text8(), "song.take 2");
    EXPECT_STREQ(file.getExtension().text8(), "xml");
    EXPECT_STREQ(file.getFolderPath().text8(), "C:/Projects");
    EXPECT_FALSE(file.isFolder());
    String native;
    file.getNativePath(native);
    EXPECT_STREQ(native.text8(), "C:/Projects/song.take 2.xml");

    // A blank behind the last "." means there is no extension; so does a leading dot alone.
    EXPECT_STREQ(FUrl(String("/a/my. file"), false).getNameWithoutExtension().text8(), "my. file");
    EXPECT_STREQ(FUrl(String("/a/.profile"), false).getNameWithoutExtension().text8(), ".profile");
    EXPECT_STREQ(FUrl(String(u"/a/b.c/noext"), false).getNameWithoutExtension().text8(), "noext");

    FUrl folder(String("/data/pkg.v2//"), true);
    EXPECT_STREQ(folder.getPath().text8(), "/data/pkg.v2");
    EXPECT_STREQ(folder.getNameWithoutExtension().text8(), "pkg.v2");
    EXPECT_TRUE(folder.isFolder());
    EXPECT_STREQ(FUrl(String("/"), true).getPath().text8(), "/");
    EXPECT_STREQ(FUrl(String("/top"), false).getFolderPath().text8(), "/");
    EXPECT_TRUE(FUrl(String("bare"), false).getFolderPath().isEmpty());
    EXPECT_TRUE(FUrl(String(), false).getName().isEmpty());

    FUrl copy(file);
    EXPECT_STREQ(copy.getPath().text8(), file.getPath().text8());
    EXPECT_EQ(copy.refCount(), 1);
}

TEST(FUrl, SpecialFoldersFollowTheEnvironment) {
    {
        ScopedVariable tmp("TMPDIR", "/var/scratch/");
        FUrl url(String("pkg"), FUrl::kTemporaryFolder, true, String("sub"));
        EXPECT_STREQ(url.getPath().text8(), "/var/scratch/sub/pkg");
        EXPECT_TRUE(url.isFolder());
    }
    {
        ScopedVariable tmp("TMPDIR", "");
        EXPECT_STREQ(FUrl(String(), FUrl::kTemporaryFolder, true).getPath().text8(), "/tmp");
    }
    {
        ScopedVariable documents("XDG_DOCUMENTS_DIR", "/home/u/Docs");
        EXPECT_STREQ(FUrl(String("a.txt"), FUrl::kDocumentsFolder, false).getPath().text8(),
                     "/home/u/Docs/a.txt");
    }
    {
        ScratchFolder home;
        ScopedVariable documents("XDG_DOCUMENTS_DIR", nullptr);
        ScopedVariable homeVariable("HOME", home.path().c_str());
        FUrl withoutDocuments(String(), FUrl::kDocumentsFolder, true);
        EXPECT_EQ(withoutDocuments.getPath().text8(), home.path());
        std::filesystem::create_directory(home / "Documents");
        EXPECT_EQ(FUrl(String(), FUrl::kDocumentsFolder, true).getPath().text8(),
                  home / "Documents");
    }
    EXPECT_TRUE(FUrl(String("x"), 99, false).isEmpty());
}

TEST(FUrl, MakeUniqueNumbersBehindTheBase) {
    FUrl free(String("/p/name"), true);
    EXPECT_TRUE(free.makeUnique(takenAre({})));
    EXPECT_STREQ(free.getPath().text8(), "/p/name");

    FUrl folder(String("/p/name"), true);
    EXPECT_TRUE(folder.makeUnique(takenAre({"/p/name", "/p/name-01"})));
    EXPECT_STREQ(folder.getPath().text8(), "/p/name-02");

    // A number already there is replaced; doubling reaches 8, bisection comes back to 6.
    FUrl file(String("/p/song-03.xml"), false);
    EXPECT_TRUE(file.makeUnique(takenAre({"/p/song-03.xml", "/p/song-01.xml", "/p/song-02.xml",
                                          "/p/song-04.xml", "/p/song-05.xml"})));
    EXPECT_STREQ(file.getPath().text8(), "/p/song-06.xml");

    FUrl gap(String("/p/a"), false);
    EXPECT_TRUE(gap.makeUnique(takenAre({"/p/a", "/p/a-01", "/p/a-02", "/p/a-04"})));
    EXPECT_STREQ(gap.getPath().text8(), "/p/a-05"); // a gap gives a higher free number

    FUrl full(String("/p/b.txt"), false);
    int tries = 0;
    EXPECT_FALSE(full.makeUnique([&tries](const String&) { return ++tries, false; }));
    EXPECT_TRUE(full.isEmpty());
    EXPECT_EQ(tries, 33); // the name itself, then 1, 2, 4 ... 2^31

    FUrl root(String("/"), true);
    EXPECT_FALSE(root.makeUnique(takenAre({"/"})));
}

TEST(FUrl, MakeUniqueByDefaultAsksTheFileSystem) {
    ScratchFolder scratch;
    writeFile(scratch / "take.wav", "x");
    std::filesystem::create_directory(scratch / "take-01.wav");
    std::filesystem::create_symlink(scratch / "nowhere", scratch / "take-02.wav");
    FUrl url(String((scratch / "take.wav").c_str()), false);
    EXPECT_TRUE(url.makeUnique());
    EXPECT_EQ(url.getPath().text8(), scratch / "take-03.wav"); // a dangling link is taken
}
