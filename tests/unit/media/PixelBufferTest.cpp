#include "media/PixelBuffer.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace velmo {
namespace {

TEST(PixelBuffer, OddSizesRoundTheChromaUp) {
    const FrameRef frame = PixelBuffer::create(PixelFormat::nv12, 5, 3);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->plane(1).width, 3);
    EXPECT_EQ(frame->plane(1).height, 2);
}

TEST(PixelBuffer, ImpossibleSizesGiveNoBuffer) {
    EXPECT_FALSE(PixelBuffer::create(PixelFormat::nv12, 0, 10));
    EXPECT_FALSE(PixelBuffer::create(PixelFormat::bgra, 10, -1));
    EXPECT_FALSE(PixelBuffer::create(PixelFormat::bgra, 1 << 20, 1 << 20));
}

TEST(PixelBuffer, HasItsPagesFromTheStart) {
    const FrameRef frame = PixelBuffer::create(PixelFormat::nv12, 1920, 1080);
    ASSERT_TRUE(frame);
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(frame->plane(0).row(0));
    const std::uintptr_t firstWhole = (begin + page - 1) / page * page;
    const std::size_t pages = (begin + frame->byteCount() - firstWhole) / page;
    std::vector<unsigned char> resident(pages);
    ASSERT_EQ(mincore(reinterpret_cast<void*>(firstWhole), pages * page, resident.data()), 0);
    EXPECT_EQ(std::ranges::count_if(resident, [](unsigned char flags) { return (flags & 1U) != 0; }),
              static_cast<std::ptrdiff_t>(pages));
}

TEST(PixelBufferPool, AReleasedBufferIsTakenAgain) {
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, 64, 64, 1);
    FrameRef first = pool->take();
    const PixelBuffer* address = first.get();
    first = nullptr;
    EXPECT_EQ(pool->take().get(), address);
}

TEST(PixelBufferPool, GrowsBeyondItsMinimumWhileAllAreOut) {
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, 64, 64, 2);
    const FrameRef a = pool->take();
    const FrameRef b = pool->take();
    const FrameRef c = pool->take();
    ASSERT_TRUE(c);
    EXPECT_NE(c.get(), a.get());
    EXPECT_NE(c.get(), b.get());
}

/// A burst: so many out at once, and back.
void takeTogether(PixelBufferPool& pool, int count) {
    std::vector<FrameRef> out(static_cast<std::size_t>(count));
    std::ranges::generate(out, [&pool] { return pool.take(); });
}

TEST(PixelBufferPool, GivesBackWhatABurstHasMadeOnceItIsLongNotNeeded) {
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, 64, 64, 2);
    takeTogether(*pool, 6);
    EXPECT_EQ(pool->count(), 6);
    for (int i = 0; i < 5000; ++i) {
        takeTogether(*pool, 1);
    }
    EXPECT_EQ(pool->count(), 2);
}

TEST(PixelBufferPool, KeepsWhatIsNeededNowAndAgain) {
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, 64, 64, 2);
    for (int i = 0; i < 5000; ++i) {
        takeTogether(*pool, i % 100 == 0 ? 6 : 1);
    }
    EXPECT_EQ(pool->count(), 6);
}

TEST(PixelBufferPool, KeepsItsMinimumHoweverLongItIsNotNeeded) {
    const auto pool = PixelBufferPool::create(PixelFormat::nv12, 64, 64, 4);
    for (int i = 0; i < 5000; ++i) {
        takeTogether(*pool, 1);
    }
    EXPECT_EQ(pool->count(), 4);
}

TEST(PixelBufferPool, OutstandingBuffersOutliveTheirPool) {
    auto pool = PixelBufferPool::create(PixelFormat::nv12, 64, 64, 2);
    const FrameRef frame = pool->take();
    pool.reset();
    frame->plane(0).row(63)[63] = 7;
    EXPECT_EQ(frame->plane(0).row(63)[63], 7);
}

} // namespace
} // namespace velmo
