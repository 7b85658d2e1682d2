#include "settings/SettingsProfiles.h"

#include "settings/JsonDefaultsStore.h"
#include "settings/Prefs.h"

#include "support/MemoryDefaultsStore.h"
#include "support/TemporaryFolder.h"

#include <QJsonArray>
#include <QSet>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::MemoryDefaultsStore;
using testing::ElementsAre;
using testing::IsEmpty;

class SettingsProfilesTest : public testing::Test {
protected:
    QJsonObject snapshot(const QString& name) const { return store.any("perfiles").toObject()[name].toObject(); }
    static QJsonObject profile(const QString& name, const QJsonValue& content) { return {{name, content}}; }

    MemoryDefaultsStore store;
    int applied = 0;
    SettingsProfiles profiles{store, [this] { ++applied; }};
};

TEST_F(SettingsProfilesTest, ANameWithBlanksAroundItIsStoredWithoutThem) {
    profiles.save(" \n Curso en video\t ");
    EXPECT_THAT(profiles.names(), ElementsAre("Curso en video"));
    EXPECT_EQ(profiles.current(), "Curso en video");
    EXPECT_EQ(store.text("perfil.actual"), "Curso en video");
}

TEST_F(SettingsProfilesTest, ANameOfBlanksAloneDoesNothing) {
    profiles.save("Curso");
    const int writes = store.writes();
    profiles.save(" \n\t ");
    profiles.save("");
    EXPECT_EQ(store.writes(), writes);
    EXPECT_EQ(profiles.current(), "Curso");
    EXPECT_THAT(profiles.names(), ElementsAre("Curso"));
}

TEST_F(SettingsProfilesTest, SavingUnderAnExistingNameReplacesThatProfile) {
    store.setText("mode", "screen");
    profiles.save("Curso");
    store.setText("mode", "cam");
    profiles.save("Curso");
    EXPECT_THAT(profiles.names(), ElementsAre("Curso"));
    EXPECT_EQ(snapshot("Curso")["mode"], "cam");
}

TEST_F(SettingsProfilesTest, OnlyWhatWasEverWrittenIsInASnapshot) {
    store.setBoolean("mirror", false);
    store.setReal("zoomLevel", 2.5);
    profiles.save("Curso");
    EXPECT_EQ(snapshot("Curso"), (QJsonObject{{"mirror", false}, {"zoomLevel", 2.5}}));
}

TEST_F(SettingsProfilesTest, AProfileFromBeforeTheClassMaterialKeepsThePresentMaterial) {
    profiles.save("Antiguo");
    const QJsonValue material = QJsonArray{QJsonObject{{"title", "Apuntes"}}};
    store.setAny("kit.items", material);
    profiles.apply("Antiguo");
    EXPECT_EQ(store.any("kit.items"), material);
}

TEST_F(SettingsProfilesTest, AKeyThatIsNotSharedIsNotWritten) {
    store.setAny("perfiles", profile("Ajeno", QJsonObject{{"windowFrame", "0,0"}, {"mode", "cam"}}));
    profiles.apply("Ajeno");
    EXPECT_FALSE(store.contains("windowFrame"));
    EXPECT_EQ(store.text("mode"), "cam");
}

TEST_F(SettingsProfilesTest, TheRegionAndTheFirstRunAreUntouchedBySaveAndByApply) {
    store.setText("recordRegion", "0.1 0.1 0.5 0.5");
    store.setBoolean("onboarded", true);
    profiles.save("Curso");
    EXPECT_THAT(snapshot("Curso"), IsEmpty());
    store.setText("recordRegion", "0.2 0.2 0.5 0.5");
    store.setBoolean("onboarded", false);
    profiles.apply("Curso");
    EXPECT_EQ(store.text("recordRegion"), "0.2 0.2 0.5 0.5");
    EXPECT_EQ(store.boolean("onboarded"), false);
}

TEST_F(SettingsProfilesTest, DeletingTheCurrentProfileLeavesNoneCurrent) {
    profiles.save("Curso");
    profiles.remove("Curso");
    EXPECT_EQ(profiles.current(), std::nullopt);
    EXPECT_FALSE(store.contains("perfil.actual"));
    EXPECT_THAT(profiles.names(), IsEmpty());
}

TEST_F(SettingsProfilesTest, DeletingAnotherProfileLeavesTheCurrentOne) {
    profiles.save("Curso");
    profiles.save("Nota");
    profiles.remove("Curso");
    EXPECT_EQ(profiles.current(), "Nota");
    EXPECT_EQ(store.text("perfil.actual"), "Nota");
    EXPECT_THAT(profiles.names(), ElementsAre("Nota"));
}

TEST_F(SettingsProfilesTest, NamesAreSortedWithoutRegardToCaseAndWithAccentsInTheirPlace) {
    for (const char* name : {"Zoología", "Biología", "álgebra", "Ñandú", "análisis", "Nota"}) {
        profiles.save(name);
    }
    EXPECT_THAT(profiles.names(), ElementsAre("álgebra", "análisis", "Biología", "Nota", "Ñandú", "Zoología"));
}

TEST_F(SettingsProfilesTest, ApplyingBringsBackEveryValueWithItsTypeAndTellsTheOthersOnce) {
    const QJsonArray material{QJsonObject{{"title", "Apuntes"}, {"pages", 3}}};
    store.setText("micID", "");
    store.setBoolean("countdown", false);
    store.setInteger("displayID", 42);
    store.setReal("prompterSpeed", 32.5);
    store.setAny("kit.items", material);
    profiles.save("Curso");
    for (const char* key : {"micID", "countdown", "displayID", "prompterSpeed", "kit.items"}) {
        store.setText(key, "otro");
    }
    profiles.save("Otro");
    profiles.apply("Curso");
    EXPECT_EQ(applied, 1);
    EXPECT_EQ(store.text("micID"), "");
    EXPECT_EQ(store.boolean("countdown"), false);
    EXPECT_EQ(store.integer("displayID"), 42);
    EXPECT_EQ(store.real("prompterSpeed"), 32.5);
    EXPECT_EQ(store.any("kit.items"), QJsonValue(material));
    EXPECT_EQ(profiles.current(), "Curso");
    EXPECT_EQ(store.text("perfil.actual"), "Curso");
}

TEST_F(SettingsProfilesTest, AProfileThatDoesNotExistIsNotApplied) {
    profiles.save("Curso");
    const int writes = store.writes();
    profiles.apply("Otro");
    EXPECT_EQ(store.writes(), writes);
    EXPECT_EQ(applied, 0);
    EXPECT_EQ(profiles.current(), "Curso");
}

TEST_F(SettingsProfilesTest, ObserversHearOfSaveApplyAndDelete) {
    int heard = 0;
    QObject::connect(&profiles, &SettingsProfiles::changed, &profiles, [&heard] { ++heard; });
    profiles.save("Curso");
    EXPECT_EQ(heard, 1);
    profiles.apply("Curso");
    EXPECT_EQ(heard, 2);
    profiles.remove("Curso");
    EXPECT_EQ(heard, 3);
}

TEST_F(SettingsProfilesTest, WhatIsOnTheScreenFollowsAnAppliedProfileLast) {
    std::vector<std::string> calls;
    SettingsProfiles told(store,
                          [&] { calls.push_back("reload, current " + told.current().value_or("-").toStdString()); });
    QObject::connect(&told, &SettingsProfiles::applied, &told,
                     [&] { calls.push_back("applied, current " + told.current()->toStdString()); });
    told.save("Curso");
    told.save("Nota");
    told.apply("Curso");
    told.apply("Otro");
    EXPECT_THAT(calls, ElementsAre("reload, current Nota", "applied, current Curso"));
}

TEST_F(SettingsProfilesTest, ACurrentNameWithoutItsProfileIsNotCurrentButStaysStored) {
    store.setText("perfil.actual", "Curso");
    const SettingsProfiles again(store, {});
    EXPECT_EQ(again.current(), std::nullopt);
    EXPECT_EQ(store.text("perfil.actual"), "Curso");
}

TEST_F(SettingsProfilesTest, TheNextLaunchKnowsNamesAndTheCurrentOne) {
    profiles.save("Curso");
    profiles.save("Nota");
    const SettingsProfiles again(store, {});
    EXPECT_THAT(again.names(), ElementsAre("Curso", "Nota"));
    EXPECT_EQ(again.current(), "Nota");
}

TEST_F(SettingsProfilesTest, ASnapshotThatCannotBeReadIsPassedOver) {
    store.setAny("perfiles", QJsonObject{{"Roto", 7}, {"Lista", QJsonArray{1}}, {"Nulo", QJsonValue::Null}});
    const QJsonObject before = store.values();
    for (const char* name : {"Roto", "Lista", "Nulo"}) {
        profiles.apply(name);
    }
    EXPECT_EQ(store.values(), before);
    EXPECT_EQ(applied, 0);
    EXPECT_EQ(profiles.current(), std::nullopt);
}

TEST_F(SettingsProfilesTest, AValueThatWasLostInADamagedSnapshotLeavesThePresentOne) {
    store.setText("mode", "screen");
    store.setAny("perfiles", profile("Roto", QJsonObject{{"mode", QJsonValue::Null}, {"mirror", "sí"}}));
    profiles.apply("Roto");
    EXPECT_EQ(store.text("mode"), "screen");
    const Prefs prefs(store);
    EXPECT_TRUE(prefs.mirror) << "a value of another type is the default";
}

class DamagedProfiles : public testing::TestWithParam<QJsonValue> {};

TEST_P(DamagedProfiles, ReadAsNoneAndCanBeSavedAgain) {
    MemoryDefaultsStore store(QJsonObject{{"perfiles", GetParam()}, {"perfil.actual", 3}});
    SettingsProfiles profiles(store, {});
    EXPECT_THAT(profiles.names(), IsEmpty());
    EXPECT_EQ(profiles.current(), std::nullopt);
    profiles.apply("Curso");
    profiles.remove("Curso");
    profiles.save("Curso");
    EXPECT_THAT(profiles.names(), ElementsAre("Curso"));
    EXPECT_EQ(profiles.current(), "Curso");
}

INSTANTIATE_TEST_SUITE_P(All, DamagedProfiles,
                         testing::Values(QJsonValue(QJsonArray{"Curso"}), QJsonValue("Curso"), QJsonValue(7),
                                         QJsonValue(true), QJsonValue(QJsonValue::Undefined)));

TEST_F(SettingsProfilesTest, AnyNameIsAName) {
    const QString longName(5000, u'ñ');
    const QString strange = QStringLiteral("<b>Curso</b>\u0007\u202Efin");
    profiles.save(longName);
    profiles.save(strange);
    profiles.apply(longName);
    EXPECT_EQ(profiles.current(), longName);
    EXPECT_TRUE(profiles.names().contains(strange));
}

TEST_F(SettingsProfilesTest, TheKeysAreTheSharedOnesWithoutADouble) {
    const auto keys = SettingsProfiles::keys();
    EXPECT_EQ(keys.size(), 40U);
    EXPECT_EQ(QSet<QString>(keys.begin(), keys.end()).size(), 40);
    EXPECT_STREQ(keys.front(), "mode");
    EXPECT_STREQ(keys.back(), "prompterFont");
}

TEST(SettingsProfilesFile, AppliedValuesAreOnTheDiskTogether) {
    const test::TemporaryFolder folder;
    const auto file = folder.path() / "defaults.json";
    {
        JsonDefaultsStore store(file);
        store.setText("scriptText", QString(1024 * 1024, u'a'));
        store.setBoolean("mirror", false);
        SettingsProfiles profiles(store, {});
        profiles.save("Curso");
        store.setText("scriptText", "breve");
        store.setBoolean("mirror", true);
        profiles.apply("Curso");
    }
    const JsonDefaultsStore store(file);
    EXPECT_EQ(store.text("scriptText")->size(), 1024 * 1024);
    EXPECT_EQ(store.boolean("mirror"), false);
}

} // namespace
} // namespace velmo
