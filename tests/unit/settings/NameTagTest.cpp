#include "settings/NameTag.h"

#include "settings/Prefs.h"
#include "support/MemoryDefaultsStore.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class NameTagTest : public ::testing::Test {
protected:
    test::MemoryDefaultsStore store_;
    Prefs prefs_{store_};
};

TEST_F(NameTagTest, NameAndRoleAreTrimmed) {
    prefs_.showName = true;
    prefs_.presenterName = QStringLiteral("  Ana Martínez \n");
    prefs_.presenterRole = QStringLiteral("\t Física ");
    EXPECT_EQ(NameTag::current(prefs_), (NameTag::Text{"Ana Martínez", "Física"}));
}

TEST_F(NameTagTest, ARoleMayBeEmpty) {
    prefs_.showName = true;
    prefs_.presenterName = QStringLiteral("Ana");
    prefs_.presenterRole = QStringLiteral("   ");
    EXPECT_EQ(NameTag::current(prefs_), (NameTag::Text{"Ana", ""}));
}

TEST_F(NameTagTest, WithoutANameThereIsNone) {
    prefs_.showName = true;
    prefs_.presenterRole = QStringLiteral("Física");
    for (const char* name : {"", "   ", "\n\t"}) {
        prefs_.presenterName = QString::fromLatin1(name);
        EXPECT_FALSE(NameTag::current(prefs_));
    }
}

TEST_F(NameTagTest, ANameThatIsNotToBeShownIsNotThere) {
    prefs_.presenterName = QStringLiteral("Ana");
    prefs_.showName = false;
    EXPECT_FALSE(NameTag::current(prefs_));
}

} // namespace
} // namespace velmo
