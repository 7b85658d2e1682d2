#include "session/Preflight.h"
#include "session/SessionErrors.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

const Screen kSmall{1, {0, 0, 1280, 720}, 1};
const Screen kLarge{1, {0, 0, 1920, 1080}, 1};

/// What `minutes` of a recording of `bitsPerSecond` take.
std::int64_t bytes(double minutes, double bitsPerSecond) {
    return static_cast<std::int64_t>(minutes * 60 * bitsPerSecond / 8);
}

std::optional<QString> warning(std::optional<std::int64_t> available, const Screen& screen = kSmall, int fps = 30) {
    return diskWarning(available, screen, VideoQuality::retina, fps);
}

TEST(DiskWarning, ASmallVideoIsRaisedToTheLeastBitRate) {
    constexpr double kRate = 6'000'000 + 320'000;
    EXPECT_EQ(warning(bytes(19.5, kRate)), "Queda espacio en el disco para unos 19 minutos de grabación.");
    EXPECT_EQ(warning(bytes(1, kRate)), "Queda espacio en el disco para unos 1 minutos de grabación.");
    EXPECT_EQ(warning(bytes(0.99, kRate)), "Casi no queda espacio en el disco para grabar.");
    EXPECT_EQ(warning(bytes(20, kRate)), std::nullopt);
}

TEST(DiskWarning, ALargeVideoCountsItsPixels) {
    const double rate = 1920.0 * 1080 * 60 * 0.15 + 320'000;
    EXPECT_EQ(warning(bytes(19.9, rate), kLarge, 60), "Queda espacio en el disco para unos 19 minutos de grabación.");
    EXPECT_EQ(warning(bytes(20.1, rate), kLarge, 60), std::nullopt);
}

TEST(DiskWarning, ADiskThatCannotBeReadIsNotMentioned) {
    EXPECT_EQ(warning(std::nullopt), std::nullopt);
    EXPECT_EQ(warning(0), std::nullopt);
    EXPECT_EQ(warning(1), "Casi no queda espacio en el disco para grabar.");
}

TEST(BatteryWarning, IsGivenBelowTwentyWithoutACharger) {
    EXPECT_EQ(batteryWarnings({{kBatteryPower, 19, 100}}),
              QStringList{"La batería está al 19 % y el cargador no está conectado."});
    EXPECT_TRUE(batteryWarnings({{kBatteryPower, 20, 100}}).isEmpty());
    EXPECT_TRUE(batteryWarnings({{"AC Power", 3, 100}}).isEmpty());
    EXPECT_TRUE(batteryWarnings({}).isEmpty());
}

TEST(BatteryWarning, SkipsASourceThatLacksSomething) {
    EXPECT_TRUE(batteryWarnings({{std::nullopt, 5, 100}}).isEmpty());
    EXPECT_TRUE(batteryWarnings({{kBatteryPower, std::nullopt, 100}}).isEmpty());
    EXPECT_TRUE(batteryWarnings({{kBatteryPower, 5, std::nullopt}}).isEmpty());
    EXPECT_TRUE(batteryWarnings({{kBatteryPower, 5, 0}}).isEmpty());
}

TEST(BatteryWarning, TwoBatteriesAreTwoLinesAndPercentagesAreCut) {
    const QStringList lines = batteryWarnings({{kBatteryPower, 999, 5000}, {kBatteryPower, 1, 10}});
    EXPECT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains("19 %"));
}

TEST(PermissionError, IsTheStreamsCodeOrItsWords) {
    EXPECT_TRUE(isPermissionError({"SCStreamErrorDomain", -3801, ""}));
    EXPECT_FALSE(isPermissionError({"SCStreamErrorDomain", -3802, "no window"}));
    EXPECT_FALSE(isPermissionError({"Other", -3801, ""}));
    EXPECT_TRUE(isPermissionError({"x", 1, "Blocked by TCC"}));
    EXPECT_TRUE(isPermissionError({"x", 1, "user Declined"}));
    EXPECT_TRUE(isPermissionError({"x", 1, "Not Authorized to capture"}));
    EXPECT_TRUE(isPermissionError({"x", 1, "Permission denied"}));
}

} // namespace
} // namespace velmo
