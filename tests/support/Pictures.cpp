#include "support/Pictures.h"

#include <QImage>
#include <QString>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>

namespace velmo::test {

namespace {

int unitBytes(const PixelBuffer& picture, int plane) {
    return picture.format() == PixelFormat::bgra ? 4 : plane + 1;
}

std::function<int(int x, int y)> painter(Content content, std::mt19937& random) {
    switch (content) {
    case Content::noise:
        return [&random](int, int) { return static_cast<int>(random() & 0xff); };
    case Content::blackAndWhite:
        return [&random](int, int) { return random() % 2 == 0 ? 0 : 255; };
    case Content::gradient:
        return [](int x, int y) { return (x * 3 + y * 5) & 0xff; };
    case Content::flat:
        break;
    }
    const int value = static_cast<int>(random() & 0xff);
    return [value](int, int) { return value; };
}

int component(const PixelBuffer& picture, int plane, int x, int y, int c) {
    return picture.plane(plane).row(y)[x * unitBytes(picture, plane) + c];
}

QRgb colorAt(const PixelBuffer& picture, int x, int y) {
    if (picture.format() == PixelFormat::bgra) {
        return qRgba(component(picture, 0, x, y, 2), component(picture, 0, x, y, 1), component(picture, 0, x, y, 0),
                     component(picture, 0, x, y, 3));
    }
    const double luma = 1.164 * (component(picture, 0, x, y, 0) - 16);
    const double blue = component(picture, 1, x / 2, y / 2, 0) - 128;
    const double red = component(picture, 1, x / 2, y / 2, 1) - 128;
    const auto code = [](double value) { return static_cast<int>(std::clamp(value, 0.0, 255.0)); };
    return qRgb(code(luma + 1.793 * red), code(luma - 0.213 * blue - 0.533 * red), code(luma + 2.112 * blue));
}

QRgb differenceAt(const PixelBuffer& a, const PixelBuffer& b, int x, int y) {
    constexpr int kAmplification = 64;
    int channels[3] = {};
    for (int p = 0, channel = 0; p < a.planeCount(); ++p) {
        for (int c = 0; c < unitBytes(a, p) && channel < 3; ++c, ++channel) {
            const int d = component(a, p, p == 0 ? x : x / 2, p == 0 ? y : y / 2, c) -
                          component(b, p, p == 0 ? x : x / 2, p == 0 ? y : y / 2, c);
            channels[channel] = std::min(255, std::abs(d) * kAmplification);
        }
    }
    return qRgb(channels[0], channels[1], channels[2]);
}

void save(const std::string& name, const PixelBuffer& size, const std::function<QRgb(int, int)>& colorOf) {
    QImage image(size.width(), size.height(), QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, colorOf(x, y));
        }
    }
    std::filesystem::create_directories(pictureFolder());
    image.save(QString::fromStdString(pictureFolder() + "/" + name + ".png"));
}

struct Disagreement {
    int worst = 0;
    int plane = 0;
    int x = 0;
    int y = 0;
};

Disagreement worstDisagreement(const PixelBuffer& a, const PixelBuffer& b) {
    Disagreement worst;
    for (int p = 0; p < a.planeCount(); ++p) {
        const PlaneView plane = a.plane(p);
        const int bytes = plane.width * unitBytes(a, p);
        for (int y = 0; y < plane.height; ++y) {
            for (int x = 0; x < bytes; ++x) {
                const int difference = std::abs(plane.row(y)[x] - b.plane(p).row(y)[x]);
                if (difference > worst.worst) {
                    worst = {difference, p, x / unitBytes(a, p), y};
                }
            }
        }
    }
    return worst;
}

} // namespace

FrameRef makePicture(PixelFormat format, int width, int height, Content content, std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto paint = painter(content, random);
    FrameRef picture = PixelBuffer::create(format, width, height);
    for (int p = 0; p < picture->planeCount(); ++p) {
        const PlaneView plane = picture->plane(p);
        for (int y = 0; y < plane.height; ++y) {
            for (int x = 0; x < plane.stride; ++x) {
                plane.row(y)[x] = static_cast<std::uint8_t>(paint(x, y));
            }
        }
    }
    return picture;
}

::testing::AssertionResult picturesAgree(const PixelBuffer& actual, const PixelBuffer& expected, int tolerance,
                                         const std::string& name) {
    if (actual.format() != expected.format() || actual.width() != expected.width() ||
        actual.height() != expected.height()) {
        return ::testing::AssertionFailure() << name << ": " << actual.width() << "x" << actual.height() << " against "
                                             << expected.width() << "x" << expected.height() << ", or other formats";
    }
    const Disagreement worst = worstDisagreement(actual, expected);
    if (worst.worst <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    save(name + "-actual", actual, [&](int x, int y) { return colorAt(actual, x, y); });
    save(name + "-expected", actual, [&](int x, int y) { return colorAt(expected, x, y); });
    save(name + "-difference", actual, [&](int x, int y) { return differenceAt(actual, expected, x, y); });
    return ::testing::AssertionFailure() << name << ": " << worst.worst << " code values apart in plane " << worst.plane
                                         << " at column " << worst.x << ", row " << worst.y << "; pictures in "
                                         << pictureFolder();
}

std::size_t componentsApart(const PixelBuffer& one, const PixelBuffer& other, int tolerance) {
    std::size_t count = 0;
    for (int p = 0; p < one.planeCount(); ++p) {
        const PlaneView plane = one.plane(p);
        for (int y = 0; y < plane.height; ++y) {
            for (int x = 0; x < plane.width * unitBytes(one, p); ++x) {
                count += std::abs(plane.row(y)[x] - other.plane(p).row(y)[x]) > tolerance ? 1 : 0;
            }
        }
    }
    return count;
}

std::string pictureFolder() {
    return VELMO_PICTURE_FOLDER;
}

} // namespace velmo::test
