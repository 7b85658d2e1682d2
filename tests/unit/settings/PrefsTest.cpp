#include "settings/Prefs.h"

#include "support/MemoryDefaultsStore.h"

#include <QJsonArray>
#include <QStringList>

#include <gmock/gmock.h>

#include <tuple>

namespace velmo {
namespace {

using test::MemoryDefaultsStore;
using testing::ElementsAre;
using testing::IsEmpty;

QStringList& record(Prefs& prefs, QStringList& heard) {
    QObject::connect(&prefs, &Prefs::changed, &prefs, [&heard](const QString& key) { heard.append(key); });
    return heard;
}

MemoryDefaultsStore storeWith(const char* key, const QJsonValue& value) {
    return MemoryDefaultsStore(QJsonObject{{QString::fromLatin1(key), value}});
}

TEST(Prefs, AnEmptyStoreGivesAllDefaults) {
    MemoryDefaultsStore store;
    const Prefs prefs(store);
    EXPECT_EQ(prefs.mode.value(), RecordMode::screenCam);
    EXPECT_EQ(prefs.cameraID.value(), "");
    EXPECT_EQ(prefs.micID.value(), "");
    EXPECT_EQ(prefs.displayID.value(), 0);
    EXPECT_EQ(prefs.bubbleSize.value(), BubbleSize::m);
    EXPECT_EQ(prefs.bubbleShape.value(), BubbleShape::circle);
    EXPECT_EQ(prefs.ringIndex.value(), 0);
    EXPECT_EQ(prefs.ringStyle.value(), RingStyle::chameleon);
    EXPECT_EQ(prefs.cornerFraction.value(), 0.2);
    EXPECT_EQ(prefs.ringWeight.value(), RingWeight::medium);
    EXPECT_TRUE(prefs.softShadow);
    EXPECT_EQ(prefs.chameleonPalette.value(), ChameleonPalette::lime);
    EXPECT_EQ(prefs.ringCustomHex.value(), "");
    EXPECT_TRUE(prefs.mirror);
    EXPECT_TRUE(prefs.countdown);
    EXPECT_FALSE(prefs.systemAudio);
    EXPECT_EQ(prefs.videoQuality.value(), VideoQuality::retina);
    EXPECT_FALSE(prefs.fps60);
    EXPECT_EQ(prefs.zoomLevel.value(), 2.0);
    EXPECT_FALSE(prefs.zoomAuto);
    EXPECT_TRUE(prefs.zoomFollow);
    EXPECT_TRUE(prefs.muteClicks);
    EXPECT_FALSE(prefs.onboarded);
    EXPECT_FALSE(prefs.startPresenter);
    EXPECT_FALSE(prefs.showName);
    EXPECT_FALSE(prefs.showPhone);
    EXPECT_EQ(prefs.scriptText.value(), "");
    EXPECT_TRUE(prefs.prompterOn);
    EXPECT_EQ(prefs.prompterSpeed.value(), 32.0);
    EXPECT_EQ(prefs.prompterFont.value(), 28.0);
    EXPECT_EQ(prefs.phoneSize.value(), BubbleSize::m);
    EXPECT_EQ(prefs.presenterName.value(), "");
    EXPECT_EQ(prefs.presenterRole.value(), "");
    EXPECT_EQ(prefs.presenterStyle.value(), PresenterStyle::framed);
    EXPECT_EQ(prefs.secondCameraID.value(), "none");
    EXPECT_EQ(prefs.secondBubbleSize.value(), BubbleSize::m);
    EXPECT_EQ(prefs.secondBubbleShape.value(), BubbleShape::rounded);
    EXPECT_FALSE(prefs.secondMirror);
    EXPECT_TRUE(prefs.cursorHighlight);
    EXPECT_EQ(prefs.shortcutModifier.value(), ShortcutModifier::control);
    EXPECT_EQ(prefs.recordRegion.value(), std::nullopt);
}

TEST(Prefs, ReadingDefaultsWritesNothing) {
    MemoryDefaultsStore store;
    const Prefs prefs(store);
    EXPECT_TRUE(store.values().isEmpty());
}

/// Every field with a value that is not its default, by its key and as it lies in the store.
const QJsonObject kOtherValues{
    {"mode", "cam"},
    {"cameraID", "cam-7"},
    {"micID", "none"},
    {"displayID", qint64{4294967295}},
    {"bubbleSize", "l"},
    {"bubbleShape", "vertical"},
    {"ringIndex", 3},
    {"ringStyle", "aurora"},
    {"softShadow", false},
    {"cornerFraction", 0.35},
    {"ringWeight", "thick"},
    {"chameleonPalette", "rainbow"},
    {"ringCustomHex", "#D4FF3A"},
    {"mirror", false},
    {"countdown", false},
    {"systemAudio", true},
    {"videoQuality", "uhd4k"},
    {"fps60", true},
    {"zoomLevel", 2.75},
    {"zoomAuto", true},
    {"zoomFollow", false},
    {"muteClicks", false},
    {"startPresenter", true},
    {"showName", true},
    {"showPhone", true},
    {"scriptText", "Hola «clase»\nsegunda línea"},
    {"prompterOn", false},
    {"prompterSpeed", 41.5},
    {"prompterFont", 30},
    {"phoneSize", "s"},
    {"presenterName", "María Ñuñoa"},
    {"presenterRole", "Física"},
    {"presenterStyle", "sideLeft"},
    {"secondCameraID", ""},
    {"secondBubbleSize", "s"},
    {"secondBubbleShape", "circle"},
    {"secondMirror", true},
    {"cursorHighlight", false},
    {"shortcutModifier", "super"},
};

TEST(Prefs, ReloadTakesEveryFieldOfAProfileInItsOrder) {
    MemoryDefaultsStore store;
    Prefs prefs(store);
    QStringList heard;
    record(prefs, heard);
    for (auto each = kOtherValues.begin(); each != kOtherValues.end(); ++each) {
        store.setAny(each.key(), each.value());
    }

    prefs.reload();

    EXPECT_EQ(heard, (QStringList{"mode",           "cameraID",         "micID",
                                  "displayID",      "bubbleSize",       "bubbleShape",
                                  "ringIndex",      "ringStyle",        "softShadow",
                                  "cornerFraction", "ringWeight",       "chameleonPalette",
                                  "ringCustomHex",  "mirror",           "countdown",
                                  "systemAudio",    "videoQuality",     "fps60",
                                  "zoomLevel",      "zoomAuto",         "zoomFollow",
                                  "muteClicks",     "startPresenter",   "showName",
                                  "showPhone",      "scriptText",       "prompterOn",
                                  "prompterSpeed",  "prompterFont",     "phoneSize",
                                  "presenterName",  "presenterRole",    "presenterStyle",
                                  "secondCameraID", "secondBubbleSize", "secondBubbleShape",
                                  "secondMirror",   "cursorHighlight",  "shortcutModifier"}));
    EXPECT_EQ(prefs.displayID.value(), 4294967295);
    EXPECT_EQ(prefs.prompterFont.value(), 30.0);
    EXPECT_EQ(store.values(), kOtherValues) << "each field lies in the store as it was written there";
}

TEST(Prefs, WhatOneProgramSetsTheNextOneFinds) {
    MemoryDefaultsStore store;
    {
        Prefs prefs(store);
        prefs.mode = RecordMode::screen;
        prefs.micID = QStringLiteral("mic-1");
        prefs.zoomLevel = 1.0 / 3.0;
        prefs.onboarded = true;
        prefs.recordRegion = Rect{0.1, 0.2, 0.3, 0.7};
    }
    const Prefs next(store);
    EXPECT_EQ(next.mode.value(), RecordMode::screen);
    EXPECT_EQ(next.micID.value(), "mic-1");
    EXPECT_EQ(next.zoomLevel.value(), 1.0 / 3.0);
    EXPECT_TRUE(next.onboarded);
    EXPECT_EQ(next.recordRegion.value(), (Rect{0.1, 0.2, 0.3, 0.7}));
}

TEST(Prefs, AWriteIsInTheStoreBeforeItIsAnnounced) {
    MemoryDefaultsStore store;
    Prefs prefs(store);
    QJsonValue seen;
    QObject::connect(&prefs, &Prefs::changed, &prefs, [&](const QString& key) { seen = store.any(key); });
    prefs.fps60 = true;
    EXPECT_EQ(seen, QJsonValue(true));
}

TEST(Prefs, AnEqualValueIsWrittenButNotAnnounced) {
    MemoryDefaultsStore store = storeWith("mirror", QStringLiteral("wrong"));
    Prefs prefs(store);
    QStringList heard;
    record(prefs, heard);
    prefs.mirror = true;
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(store.any(QStringLiteral("mirror")), QJsonValue(true));
}

TEST(Prefs, NothingIsClamped) {
    MemoryDefaultsStore store;
    Prefs prefs(store);
    prefs.zoomLevel = -400.0;
    prefs.ringIndex = 99;
    EXPECT_EQ(prefs.zoomLevel.value(), -400.0);
    EXPECT_EQ(prefs.ringIndex.value(), 99);
}

TEST(Prefs, ReloadWithAnUnchangedStoreAnnouncesNothing) {
    MemoryDefaultsStore store(kOtherValues);
    Prefs prefs(store);
    QStringList heard;
    record(prefs, heard);
    const int writes = store.writes();
    prefs.reload();
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_LE(store.writes() - writes, 1) << "at most the step for the region";
}

TEST(Prefs, ReloadLeavesTheFirstRunFlagAndTheRegionAlone) {
    MemoryDefaultsStore store;
    Prefs prefs(store);
    store.setAny(QStringLiteral("onboarded"), true);
    store.setAny(QStringLiteral("recordRegion"), QStringLiteral("{{0, 0}, {0.5, 0.5}}"));
    prefs.reload();
    EXPECT_FALSE(prefs.onboarded);
    EXPECT_EQ(prefs.recordRegion.value(), std::nullopt);
}

TEST(Prefs, ReloadOfAKeyThatHasGoneGivesTheDefaultBack) {
    MemoryDefaultsStore store(kOtherValues);
    Prefs prefs(store);
    store.remove(QStringLiteral("zoomLevel"));
    prefs.reload();
    EXPECT_EQ(prefs.zoomLevel.value(), 2.0);
    EXPECT_EQ(store.any(QStringLiteral("zoomLevel")), QJsonValue(2.0));
}

/// A value that does not fit, the field's key, and nothing else.
class PrefsWithAWrongValue : public testing::TestWithParam<std::tuple<const char*, QJsonValue>> {};

TEST_P(PrefsWithAWrongValue, TakeTheDefaultAndLeaveTheValueInTheStore) {
    const auto& [key, wrong] = GetParam();
    MemoryDefaultsStore empty;
    MemoryDefaultsStore store = storeWith(key, wrong);
    const Prefs defaults(empty);
    const Prefs prefs(store);
    EXPECT_EQ(prefs.mode.value(), defaults.mode.value());
    EXPECT_EQ(prefs.cornerFraction.value(), defaults.cornerFraction.value());
    EXPECT_EQ(prefs.softShadow.value(), defaults.softShadow.value());
    EXPECT_EQ(prefs.displayID.value(), defaults.displayID.value());
    EXPECT_EQ(prefs.secondCameraID.value(), defaults.secondCameraID.value());
    EXPECT_EQ(prefs.videoQuality.value(), defaults.videoQuality.value());
    EXPECT_EQ(prefs.onboarded.value(), defaults.onboarded.value());
    EXPECT_EQ(store.any(QString::fromLatin1(key)), wrong);
}

INSTANTIATE_TEST_SUITE_P(
    All, PrefsWithAWrongValue,
    testing::Values(std::tuple("mode", QJsonValue("Screen")), std::tuple("mode", QJsonValue(1)),
                    std::tuple("cornerFraction", QJsonValue("0.4")), std::tuple("cornerFraction", QJsonValue(true)),
                    std::tuple("softShadow", QJsonValue(0)), std::tuple("softShadow", QJsonValue("false")),
                    std::tuple("displayID", QJsonValue(2.5)), std::tuple("displayID", QJsonValue("7")),
                    std::tuple("secondCameraID", QJsonValue(QJsonArray{1})),
                    std::tuple("videoQuality", QJsonValue(QJsonObject{})), std::tuple("onboarded", QJsonValue(1))));

TEST(Prefs, TheOlderHighResolutionDecidesWithoutAVideoQuality) {
    MemoryDefaultsStore low = storeWith("highResolution", false);
    EXPECT_EQ(Prefs(low).videoQuality.value(), VideoQuality::fullHD);
    EXPECT_FALSE(low.contains(QStringLiteral("videoQuality"))) << "what was found is not written back";
    MemoryDefaultsStore high = storeWith("highResolution", true);
    EXPECT_EQ(Prefs(high).videoQuality.value(), VideoQuality::retina);
    MemoryDefaultsStore unusable = storeWith("highResolution", 0);
    EXPECT_EQ(Prefs(unusable).videoQuality.value(), VideoQuality::retina);
}

TEST(Prefs, AnUnknownVideoQualityFallsBackLikeAnAbsentOne) {
    MemoryDefaultsStore store({{"videoQuality", "8k"}, {"highResolution", false}});
    EXPECT_EQ(Prefs(store).videoQuality.value(), VideoQuality::fullHD);
}

TEST(Prefs, AKnownVideoQualityGoesBeforeTheOlderSwitch) {
    MemoryDefaultsStore store({{"videoQuality", "uhd4k"}, {"highResolution", false}});
    EXPECT_EQ(Prefs(store).videoQuality.value(), VideoQuality::uhd4k);
}

class PrefsWithARefusedRegion : public testing::TestWithParam<const char*> {};

TEST_P(PrefsWithARefusedRegion, TakeItOutOfTheStoreAtOnce) {
    MemoryDefaultsStore store = storeWith("recordRegion", QString::fromLatin1(GetParam()));
    const Prefs prefs(store);
    EXPECT_EQ(prefs.recordRegion.value(), std::nullopt);
    EXPECT_FALSE(store.contains(QStringLiteral("recordRegion")));
}

INSTANTIATE_TEST_SUITE_P(All, PrefsWithARefusedRegion,
                         testing::Values("{{0.5, 0.5}, {0.6, 0.6}}", // ends at 1.1
                                         "{{0, 0}, {0.05, 0.5}}", "{{0, 0}, {0.5, 0.05}}", "{{-0.001, 0}, {0.5, 0.5}}",
                                         "{{0, -0.001}, {0.5, 0.5}}", "{{0, 0}, {1.0011, 0.5}}",
                                         "{{0, 0}, {0.5, 1.0011}}", "{{nan, 0}, {0.5, 0.5}}", "{{0, 0}, {inf, 0.5}}",
                                         "", "{0, 0, 0.5, 0.5}", "{{0, 0}, {0.5, 0.5}", "{{0, 0}, {0.5, 0.5}} y más",
                                         "{{a, 0}, {0.5, 0.5}}"));

TEST(Prefs, ARegionThatIsNoTextIsTakenOutOfTheStore) {
    MemoryDefaultsStore store = storeWith("recordRegion", QJsonArray{0, 0, 1, 1});
    EXPECT_EQ(Prefs(store).recordRegion.value(), std::nullopt);
    EXPECT_FALSE(store.contains(QStringLiteral("recordRegion")));
}

TEST(Prefs, ARegionThatEndsAtExactlyTheMaximumIsAccepted) {
    MemoryDefaultsStore store = storeWith("recordRegion", QStringLiteral("{{0, 0}, {1.001, 1.001}}"));
    EXPECT_EQ(Prefs(store).recordRegion.value(), (Rect{0, 0, 1.001, 1.001}));
    EXPECT_TRUE(store.contains(QStringLiteral("recordRegion")));
}

TEST(Prefs, AWrittenRegionIsItsTextAndAnAbsentOneIsNoKey) {
    MemoryDefaultsStore store;
    Prefs prefs(store);
    prefs.recordRegion = Rect{0.25, 0.5, 0.5, 0.25};
    EXPECT_EQ(store.any(QStringLiteral("recordRegion")), QJsonValue("{{0.25, 0.5}, {0.5, 0.25}}"));
    prefs.recordRegion = std::nullopt;
    EXPECT_FALSE(store.contains(QStringLiteral("recordRegion")));
}

TEST(Prefs, TheSharedOneIsTheOneThatWasRegistered) {
    MemoryDefaultsStore store;
    Prefs prefs(store);
    Prefs::setShared(&prefs);
    EXPECT_EQ(&Prefs::shared(), &prefs);
    Prefs::setShared(nullptr);
}

} // namespace
} // namespace velmo
