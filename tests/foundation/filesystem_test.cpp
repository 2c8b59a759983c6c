// FNFileSystem, FStream and FFileIterator on a scratch folder.
#include "common/testfiles.h"
#include "foundation/ffileiterator.h"
#include "foundation/ffilesystem.h"

#include "corvelle/ptr.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

using namespace Halvorn;
using namespace TestSupport;
namespace fs = std::filesystem;

namespace {

FUrl fileUrl(const std::string& path) { return FUrl(String(path.c_str()), false); }
FUrl folderUrl(const std::string& path) { return FUrl(String(path.c_str()), true); }

} // namespace

TEST(FileSystem, StreamsCreateOpenAndReportErrors) {
    ScratchFolder scratch;
    FUrl deep = fileUrl(scratch / "a/b/c.bin");
    int32 error = -1;
    FStream* out = gFNFileSystem->createStream(deep, FStream::kWrite, &error);
    ASSERT_NE(out, nullptr); // missing parents were made
    EXPECT_EQ(error, 0);
    EXPECT_EQ(out->write("hello", 5), 5);
    gFNFileSystem->closeStream(out);

    FStream* in = gFNFileSystem->openStream(deep, FStream::kRead);
    ASSERT_NE(in, nullptr);
    IPtr<IBStream> stream = queryInterface<IBStream>(static_cast<FObject*>(in));
    ASSERT_TRUE(stream);
    int64 position = -1;
    EXPECT_EQ(stream->seek(-2, IBStream::kSeekFromEnd, &position), kResultOk);
    EXPECT_EQ(position, 3);
    char buffer[8] = {};
    int32 done = 0;
    EXPECT_EQ(stream->read(buffer, 8, &done), kResultOk);
    EXPECT_EQ(done, 2);
    EXPECT_STREQ(buffer, "lo");
    EXPECT_EQ(stream->seek(0, 7, nullptr), kInvalidArgument);
    gFNFileSystem->closeStream(in);
    int32 got = 0;
    EXPECT_EQ(stream->read(buffer, 1, &got), kResultFalse); // closed, still alive
    EXPECT_EQ(got, 0);

    // createStream empties an existing file.
    gFNFileSystem->closeStream(gFNFileSystem->createStream(deep, 3));
    EXPECT_EQ(fs::file_size(scratch / "a/b/c.bin"), 0u);

    EXPECT_EQ(gFNFileSystem->openStream(fileUrl(scratch / "missing"), 1, &error), nullptr);
    EXPECT_EQ(error, ENOENT);
    EXPECT_EQ(gFNFileSystem->openStream(deep, 0, &error), nullptr);
    EXPECT_EQ(error, EINVAL);
    EXPECT_EQ(gFNFileSystem->openStream(fileUrl(scratch / "a"), 1, &error), nullptr);
    EXPECT_EQ(error, EISDIR);
    EXPECT_EQ(gFNFileSystem->createStream(FUrl(), 2, &error), nullptr);
    gFNFileSystem->closeStream(nullptr);

    // A link planted at the target is not written through.
    writeFile(scratch / "victim", "keep");
    fs::create_symlink(scratch / "victim", scratch / "planted");
    EXPECT_EQ(gFNFileSystem->createStream(fileUrl(scratch / "planted"), 2, &error), nullptr);
    EXPECT_EQ(error, ELOOP);
    EXPECT_EQ(readFile(scratch / "victim"), "keep");
}

TEST(FileSystem, ExistenceAndFolderMaking) {
    ScratchFolder scratch;
    writeFile(scratch / "f.txt", "x");
    EXPECT_TRUE(gFNFileSystem->fileExists(fileUrl(scratch / "f.txt")));
    EXPECT_FALSE(gFNFileSystem->fileExists(folderUrl(scratch / "f.txt")));
    EXPECT_TRUE(gFNFileSystem->fileExists(folderUrl(scratch.path())));
    EXPECT_FALSE(gFNFileSystem->folderExists(fileUrl(scratch / "f.txt")));
    EXPECT_FALSE(gFNFileSystem->fileExists(FUrl()));

    EXPECT_TRUE(gFNFileSystem->createFolder(folderUrl(scratch / "x/y/z")));
    EXPECT_TRUE(fs::is_directory(scratch / "x/y/z"));
    EXPECT_TRUE(gFNFileSystem->createFolder(folderUrl(scratch / "x/y/z"))); // exists: no failure
    EXPECT_TRUE(gFNFileSystem->createFolder(fileUrl(scratch / "p/q/file.xml")));
    EXPECT_TRUE(fs::is_directory(scratch / "p/q"));
    EXPECT_FALSE(fs::exists(scratch / "p/q/file.xml"));
    EXPECT_TRUE(gFNFileSystem->folderExists(FUrl(String((scratch / "p\\q").c_str()), true)));
    EXPECT_FALSE(gFNFileSystem->createFolder(folderUrl(scratch / "f.txt/sub")));
}

TEST(FileSystem, RemoveFolderDeletesLinksNotWhatTheyPointTo) {
    ScratchFolder outside;
    writeFile(outside / "precious.txt", "data");
    fs::create_directory(outside / "keep");
    writeFile(outside / "keep/inner.txt", "inner");

    ScratchFolder scratch;
    std::string tree = scratch / "tree";
    fs::create_directories(tree + "/sub/deeper");
    writeFile(tree + "/sub/deeper/a.txt", "a");
    writeFile(tree + "/b.txt", "b");
    fs::create_symlink(outside / "precious.txt", tree + "/sub/file-link");
    fs::create_directory_symlink(outside / "keep", tree + "/folder-link");

    EXPECT_FALSE(gFNFileSystem->removeFolder(folderUrl(tree), false)); // not empty
    EXPECT_TRUE(fs::exists(tree + "/b.txt"));
    EXPECT_TRUE(gFNFileSystem->removeFolder(folderUrl(tree), true));
    EXPECT_FALSE(fs::exists(tree));
    EXPECT_EQ(readFile(outside / "precious.txt"), "data");
    EXPECT_EQ(readFile(outside / "keep/inner.txt"), "inner");

    EXPECT_TRUE(gFNFileSystem->removeFolder(folderUrl(tree), true)); // already gone
    fs::create_directory_symlink(outside.path(), scratch / "link-to-folder");
    EXPECT_FALSE(gFNFileSystem->removeFolder(folderUrl(scratch / "link-to-folder"), true));
    EXPECT_TRUE(fs::exists(outside / "keep/inner.txt"));
    writeFile(scratch / "plain", "p");
    EXPECT_FALSE(gFNFileSystem->removeFolder(folderUrl(scratch / "plain"), true));
}

TEST(FileSystem, CopyFileNeverOverwritesUnlessAskedAndCleansUpFailures) {
    ScratchFolder scratch;
    std::string big(200000, '\0');
    for (size_t i = 0; i < big.size(); ++i)
        big[i] = char(i * 7 + i / 251);
    writeFile(scratch / "source.bin", big);
    writeFile(scratch / "existing.bin", "old");

    FUrl* copied =
        gFNFileSystem->copyFile(fileUrl(scratch / "source.bin"), fileUrl(scratch / "copy.bin"));
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->getPath().text8(), scratch / "copy.bin");
    EXPECT_EQ(copied->refCount(), 1);
    copied->release();
    EXPECT_EQ(readFile(scratch / "copy.bin"), big);

    EXPECT_EQ(
        gFNFileSystem->copyFile(fileUrl(scratch / "source.bin"), fileUrl(scratch / "existing.bin")),
        nullptr);
    EXPECT_EQ(readFile(scratch / "existing.bin"), "old");
    IPtr<FUrl> over = IPtr<FUrl>::adopt(gFNFileSystem->copyFile(
        fileUrl(scratch / "source.bin"), fileUrl(scratch / "existing.bin"), true));
    EXPECT_TRUE(over);
    EXPECT_EQ(readFile(scratch / "existing.bin"), big);
    EXPECT_EQ(gFNFileSystem->copyFile(fileUrl(scratch / "source.bin"),
                                      fileUrl(scratch / "source.bin"), true),
              nullptr);
    EXPECT_EQ(readFile(scratch / "source.bin"), big);

    EXPECT_EQ(gFNFileSystem->copyFile(fileUrl(scratch / "nothing"), fileUrl(scratch / "t1")),
              nullptr);
    EXPECT_FALSE(fs::exists(scratch / "t1"));
    EXPECT_EQ(gFNFileSystem->copyFile(folderUrl(scratch.path()), fileUrl(scratch / "t2")), nullptr);
    EXPECT_FALSE(fs::exists(scratch / "t2"));
}

TEST(FileSystem, IteratorGivesSortedFilesAndFoldersButNoLinks) {
    ScratchFolder scratch;
    for (const char* name : {"b.txt", "B.txt", "a.txt", "\xc3\xa9.txt"})
        writeFile(scratch / name, "x");
    fs::create_directory(scratch / "folder");
    fs::create_symlink(scratch / "a.txt", scratch / "link");

    FFileIterator iterator(folderUrl(scratch.path()));
    std::vector<std::string> names;
    std::vector<bool> folders;
    while (FUrl* item = iterator.next()) {
        names.push_back(item->getName().text8());
        folders.push_back(item->isFolder());
        item->release();
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"B.txt", "a.txt", "b.txt", "folder", "\xc3\xa9.txt"}));
    EXPECT_EQ(folders, (std::vector<bool>{false, false, false, true, false}));

    FFileIterator missing(folderUrl(scratch / "none"));
    EXPECT_EQ(missing.next(), nullptr);
}
