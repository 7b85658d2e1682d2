#include "platform/desktop/SysPowerSources.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <initializer_list>
#include <utility>

namespace velmo {
namespace {

namespace fs = std::filesystem;

/// A tree as the kernel shows it under /sys/class/power_supply.
class SysPowerSourcesTest : public testing::Test {
protected:
    void supply(const std::string& name, std::initializer_list<std::pair<const char*, const char*>> attributes) {
        fs::create_directories(folder_ / name);
        for (const auto& [attribute, text] : attributes) {
            std::ofstream(folder_ / name / attribute) << text << '\n';
        }
    }
    std::vector<PowerSource> list() const { return SysPowerSources(folder_).list(); }

    test::TemporaryFolder folder_;
};

TEST_F(SysPowerSourcesTest, ADischargingBatteryWithoutMainsIsOnBatteryPower) {
    supply("AC", {{"type", "Mains"}, {"online", "0"}});
    supply("BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "14"}});
    const auto sources = list();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_EQ(sources[0].state, kBatteryPower);
    EXPECT_EQ(sources[0].currentCapacity, 14);
    EXPECT_EQ(sources[0].maxCapacity, 100);
}

TEST_F(SysPowerSourcesTest, ABatteryBesideMainsThatIsOnlineIsNotOnBatteryPower) {
    supply("AC", {{"type", "Mains"}, {"online", "1"}});
    supply("BAT0", {{"type", "Battery"}, {"status", "Unknown"}, {"capacity", "9"}});
    ASSERT_EQ(list().size(), 1U);
    EXPECT_EQ(list()[0].state, "AC Power");
}

TEST_F(SysPowerSourcesTest, AChargerByUsbCountsAsMains) {
    supply("ucsi-source", {{"type", "USB"}, {"online", "1"}});
    supply("BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "9"}});
    EXPECT_EQ(list().at(0).state, "AC Power");
}

TEST_F(SysPowerSourcesTest, AChargingBatteryIsFedEvenWhenNoSupplyIsListed) {
    supply("BAT0", {{"type", "Battery"}, {"status", "Charging"}, {"capacity", "50"}});
    EXPECT_EQ(list().at(0).state, "AC Power");
}

TEST_F(SysPowerSourcesTest, WithoutAPercentageTheChargeAgainstFullCounts) {
    supply("BAT0",
           {{"type", "Battery"}, {"status", "Discharging"}, {"charge_now", "700000"}, {"charge_full", "5000000"}});
    EXPECT_EQ(list().at(0).currentCapacity, 700000);
    EXPECT_EQ(list().at(0).maxCapacity, 5000000);
}

TEST_F(SysPowerSourcesTest, WithoutChargeTheEnergyAgainstFullCounts) {
    supply("BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"energy_now", "7"}, {"energy_full", "50"}});
    EXPECT_EQ(list().at(0).currentCapacity, 7);
    EXPECT_EQ(list().at(0).maxCapacity, 50);
}

TEST_F(SysPowerSourcesTest, ABatteryThatTellsNoCapacityLeavesItAbsent) {
    supply("BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "plenty"}});
    EXPECT_EQ(list().at(0).currentCapacity, std::nullopt);
    EXPECT_EQ(list().at(0).maxCapacity, std::nullopt);
    EXPECT_EQ(list().at(0).state, kBatteryPower);
}

TEST_F(SysPowerSourcesTest, AMousesBatteryAndAnEmptyBayAreLeftOut) {
    supply("hidpp_battery_0", {{"type", "Battery"}, {"scope", "Device"}, {"status", "Discharging"}, {"capacity", "5"}});
    supply("BAT1", {{"type", "Battery"}, {"present", "0"}});
    EXPECT_TRUE(list().empty());
}

TEST_F(SysPowerSourcesTest, EachBatteryIsListed) {
    supply("BAT0", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "80"}});
    supply("BAT1", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "30"}});
    EXPECT_EQ(list().size(), 2U);
}

TEST_F(SysPowerSourcesTest, AMachineThatCannotTellHasAnEmptyList) {
    EXPECT_TRUE(list().empty());
    EXPECT_TRUE(SysPowerSources(folder_ / "missing").list().empty());
}

} // namespace
} // namespace velmo
