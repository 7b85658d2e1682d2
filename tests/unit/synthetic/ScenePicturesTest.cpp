#include "platform/synthetic/internal/ScenePictures.h"
#include "platform/synthetic/internal/HandsScene.h"
#include "platform/synthetic/internal/TeacherScene.h"

#include <gmock/gmock.h>

#include <cstring>
#include <memory>

namespace velmo::internal {
namespace {

/// As velmo-judge reads it.
int counterIn(const PixelBuffer& picture) {
    const auto cell = [&picture](int index) { return picture.plane(0).row(8)[index * 16 + 8]; };
    if (cell(0) < 180 || cell(1) > 70) {
        return -1;
    }
    int value = 0;
    for (int bit = 0; bit < 24; ++bit) {
        value = value << 1 | (cell(bit + 2) > 125 ? 1 : 0);
    }
    return value;
}

bool sameRow(const PixelBuffer& a, const PixelBuffer& b, int y, int from, int to) {
    return std::memcmp(a.plane(0).row(y) + from, b.plane(0).row(y) + from, static_cast<std::size_t>(to - from)) == 0;
}

template <typename T>
class ScenePicturesTest : public testing::Test {
protected:
    T scene;
    static ScenePictures pictures(bool counter, double flashEvery = 0) {
        return {std::make_unique<T>(), {counter, flashEvery}};
    }
};

using Scenes = testing::Types<TeacherScene, HandsScene>;
TYPED_TEST_SUITE(ScenePicturesTest, Scenes);

TYPED_TEST(ScenePicturesTest, CarryTheirNumberInTheCorner) {
    ScenePictures pictures = this->pictures(true);
    for (const int number : {0, 1, 77, 0xABCDEF}) {
        const FrameRef picture = pictures.make(number, number / 30.0);
        ASSERT_TRUE(picture);
        EXPECT_EQ(counterIn(*picture), number);
    }
    EXPECT_EQ(counterIn(*this->pictures(false).make(5, 0)), -1);
}

TYPED_TEST(ScenePicturesTest, MoveInTheirMovingPartAndNowhereElse) {
    ScenePictures pictures = this->pictures(false);
    const FrameRef first = pictures.make(0, 1.0);
    const FrameRef second = pictures.make(1, 2.5);
    const QRect part = this->scene.movingPart();
    EXPECT_EQ(part.left() % 2 + part.top() % 2 + part.width() % 2 + part.height() % 2, 0);
    bool moved = false;
    for (int y = 0; y < Scene::kHeight; ++y) {
        const bool inside = y >= part.top() && y < part.top() + part.height();
        moved = moved || (inside && !sameRow(*first, *second, y, part.left(), part.left() + part.width()));
        ASSERT_TRUE(sameRow(*first, *second, y, 0, inside ? part.left() : Scene::kWidth)) << y;
        ASSERT_TRUE(sameRow(*first, *second, y, part.left() + part.width(), Scene::kWidth)) << y;
    }
    EXPECT_TRUE(moved);
}

TYPED_TEST(ScenePicturesTest, FollowFromTheirTimeAlone) {
    ScenePictures pictures = this->pictures(false);
    const FrameRef first = pictures.make(0, 3.2);
    pictures.make(1, 9.7);
    const FrameRef again = pictures.make(2, 3.2);
    for (int y = 0; y < Scene::kHeight; ++y) {
        ASSERT_TRUE(sameRow(*first, *again, y, 0, Scene::kWidth)) << y;
    }
}

TYPED_TEST(ScenePicturesTest, AreWhiteInTheFirstTenthOfASecondOfEachPeriod) {
    ScenePictures pictures = this->pictures(true, 2);
    const auto middle = [&pictures](double seconds) {
        const FrameRef picture = pictures.make(9, seconds);
        return picture->plane(0).row(5)[900] + 1000 * (counterIn(*picture) == 9 ? 0 : 1);
    };
    EXPECT_EQ(middle(4.0), 235);
    EXPECT_EQ(middle(4.09), 235);
    EXPECT_LT(middle(4.11), 235);
    EXPECT_LT(middle(5.99), 235);
    EXPECT_EQ(middle(6.0), 235);
}

} // namespace
} // namespace velmo::internal
