// MemoryStream: growth, reading at the end, seeking, borrowed memory; FLock's recursion.
#include "foundation/flock.h"
#include "foundation/memorystream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

using namespace Halvorn;

TEST(MemoryStream, GrowsAndReadsWhatIsThere) {
    MemoryStream stream;
    std::vector<char> data(5000, 'm');
    int32 done = 0;
    ASSERT_EQ(stream.write(data.data(), 5000, &done), kResultOk);
    EXPECT_EQ(done, 5000);
    EXPECT_EQ(stream.getSize(), 5000u);

    int64 at = 0;
    EXPECT_EQ(stream.seek(-10, IBStream::kSeekFromEnd, &at), kResultOk);
    EXPECT_EQ(at, 4990);
    char buffer[64];
    EXPECT_EQ(stream.read(buffer, 64, &done), kResultOk);
    EXPECT_EQ(done, 10);
    EXPECT_EQ(stream.read(buffer, 64, &done), kResultOk);
    EXPECT_EQ(done, 0);

    // Writing past the end fills the gap with zeros.
    EXPECT_EQ(stream.seek(4, IBStream::kSeekFromCurrent, nullptr), kResultOk);
    EXPECT_EQ(stream.write(const_cast<char*>("end"), 3, nullptr), kResultOk);
    EXPECT_EQ(stream.getSize(), 5007u);
    EXPECT_EQ(std::memcmp(stream.getData() + 5000, "\0\0\0\0end", 7), 0);
    EXPECT_EQ(stream.tell(&at), kResultOk);
    EXPECT_EQ(at, 5007);

    EXPECT_EQ(stream.seek(-1, IBStream::kSeekFromStart, &at), kInvalidArgument);
    EXPECT_EQ(stream.seek(0, 3, &at), kInvalidArgument);
    EXPECT_EQ(stream.tell(&at), kResultOk);
    EXPECT_EQ(at, 5007); // unchanged by the refused seeks
    EXPECT_EQ(stream.read(buffer, -1, &done), kInvalidArgument);

    void* face = nullptr;
    ASSERT_EQ(stream.queryInterface(IBStream::iid, &face), kResultOk);
    EXPECT_EQ(face, static_cast<IBStream*>(&stream));
    stream.release();
}

TEST(MemoryStream, BorrowedMemoryFailsForGoodWhenOverrun) {
    char memory[8] = "abcdefg";
    MemoryStream stream(memory, sizeof memory);
    char buffer[8] = {};
    int32 done = 0;
    EXPECT_EQ(stream.read(buffer, 3, &done), kResultOk);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(stream.write(const_cast<char*>("XY"), 2, &done), kResultOk);
    EXPECT_STREQ(memory, "abcXYfg");
    EXPECT_EQ(stream.write(const_cast<char*>("0123"), 4, &done), kOutOfMemory);
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(stream.hasFailed());
    EXPECT_STREQ(memory, "abcXYfg"); // nothing of the failed write landed
    ASSERT_EQ(stream.seek(0, IBStream::kSeekFromStart, nullptr), kResultOk);
    EXPECT_EQ(stream.write(const_cast<char*>("z"), 1, &done), kOutOfMemory); // it lasts
    EXPECT_EQ(memory[0], 'a');
}

TEST(FLock, IsRecursiveAndExcludesOtherThreads) {
    FLock lock;
    lock.lock();
    lock.lock();
    bool otherGot = true;
    std::thread([&] { otherGot = lock.tryLock(); }).join();
    EXPECT_FALSE(otherGot);
    lock.unlock();
    lock.unlock();
    std::thread([&] {
        otherGot = lock.tryLock();
        if (otherGot)
            lock.unlock();
    }).join();
    EXPECT_TRUE(otherGot);
}
