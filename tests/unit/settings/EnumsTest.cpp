#include "settings/BubbleShape.h"
#include "settings/BubbleSize.h"
#include "settings/ChameleonPalette.h"
#include "settings/PresenterStyle.h"
#include "settings/RecordMode.h"
#include "settings/RingStyle.h"
#include "settings/RingWeight.h"
#include "settings/ShortcutModifier.h"
#include "settings/VideoQuality.h"

#include <QStringList>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;

template <typename E>
QStringList rawValues() {
    QStringList raws;
    for (const E value : allCases<E>()) {
        raws.append(rawValue(value));
    }
    return raws;
}

template <typename E>
QStringList titles() {
    QStringList all;
    for (const E value : allCases<E>()) {
        all.append(title(value));
    }
    return all;
}

TEST(SettingsEnums, ListTheirCasesInOrderByTheirRawValues) {
    EXPECT_EQ(rawValues<RecordMode>(), (QStringList{"screenCam", "screen", "cam"}));
    EXPECT_EQ(rawValues<BubbleSize>(), (QStringList{"s", "m", "l"}));
    EXPECT_EQ(rawValues<BubbleShape>(), (QStringList{"circle", "rounded", "vertical"}));
    EXPECT_EQ(rawValues<RingStyle>(), (QStringList{"chameleon", "fine", "aurora", "classic", "none"}));
    EXPECT_EQ(rawValues<RingWeight>(), (QStringList{"hairline", "thin", "medium", "thick"}));
    EXPECT_EQ(rawValues<ChameleonPalette>(),
              (QStringList{"lime", "neon", "ocean", "sunset", "gold", "forest", "silver", "rainbow"}));
    EXPECT_EQ(rawValues<PresenterStyle>(), (QStringList{"full", "framed", "sideRight", "sideLeft"}));
    EXPECT_EQ(rawValues<VideoQuality>(), (QStringList{"fullHD", "retina", "uhd4k"}));
    EXPECT_EQ(rawValues<ShortcutModifier>(), (QStringList{"control", "controlAlt", "super"}));
}

TEST(SettingsEnums, HaveTheirTitles) {
    EXPECT_EQ(titles<RecordMode>(), (QStringList{"Pantalla + Cámara", "Pantalla", "Cámara"}));
    EXPECT_EQ(titles<BubbleShape>(), (QStringList{"Círculo", "Horizontal", "Vertical"}));
    EXPECT_EQ(titles<RingStyle>(), (QStringList{"Camaleón", "Fino", "Aurora", "Clásico", "Sin borde"}));
    EXPECT_EQ(titles<RingWeight>(), (QStringList{"Ultrafino", "Delgado", "Medio", "Grueso"}));
    EXPECT_EQ(titles<ChameleonPalette>(),
              (QStringList{"Lima", "Neón", "Océano", "Atardecer", "Dorado", "Bosque", "Plata", "Arcoíris"}));
}

TEST(ShortcutModifier, IsNamedInTheTextsInPlaceOfControl) {
    EXPECT_EQ(titles<ShortcutModifier>(), (QStringList{"Control", "Control + Alt", "Super"}));
    const QString text = QStringLiteral("Vista (⌃1 a ⌃4) · ⌥ + rueda");
    EXPECT_EQ(shortcutText(text, ShortcutModifier::control), text);
    EXPECT_EQ(shortcutText(text, ShortcutModifier::controlAlt), QStringLiteral("Vista (⌃⌥1 a ⌃⌥4) · ⌥ + rueda"));
    EXPECT_EQ(shortcutText(text, ShortcutModifier::super),
              QStringLiteral("Vista (Super\u00A01 a Super\u00A04) · ⌥ + rueda"));
}

TEST(SettingsEnums, ReadTheirOwnRawValuesAndNoOthers) {
    EXPECT_EQ(fromRawValue<BubbleShape>(QStringLiteral("rounded")), BubbleShape::rounded);
    EXPECT_EQ(fromRawValue<BubbleShape>(QStringLiteral("Rounded")), std::nullopt);
    EXPECT_EQ(fromRawValue<BubbleShape>(QStringLiteral("Horizontal")), std::nullopt);
    EXPECT_EQ(fromRawValue<RingStyle>(QString()), std::nullopt);
}

TEST(RecordMode, SaysWhatItUses) {
    EXPECT_TRUE(usesScreen(RecordMode::screenCam) && usesCamera(RecordMode::screenCam));
    EXPECT_TRUE(usesScreen(RecordMode::screen) && !usesCamera(RecordMode::screen));
    EXPECT_TRUE(!usesScreen(RecordMode::cam) && usesCamera(RecordMode::cam));
    EXPECT_EQ(symbol(RecordMode::screenCam), "rectangle.inset.bottomleading.filled");
    EXPECT_EQ(symbol(RecordMode::screen), "display");
    EXPECT_EQ(symbol(RecordMode::cam), "person.crop.square.fill");
}

TEST(BubbleSize, GrowsAndWrapsAround) {
    EXPECT_EQ(diameter(BubbleSize::s), 150);
    EXPECT_EQ(diameter(BubbleSize::m), 220);
    EXPECT_EQ(diameter(BubbleSize::l), 320);
    EXPECT_EQ(next(BubbleSize::s), BubbleSize::m);
    EXPECT_EQ(next(BubbleSize::m), BubbleSize::l);
    EXPECT_EQ(next(BubbleSize::l), BubbleSize::s);
}

TEST(BubbleShape, GivesTheWindowsSizeForADiameter) {
    EXPECT_EQ(size(BubbleShape::circle, 220), (Size{220, 220}));
    EXPECT_EQ(size(BubbleShape::rounded, 220), (Size{293, 220}));
    EXPECT_EQ(size(BubbleShape::vertical, 220), (Size{172, 286}));
    EXPECT_EQ(size(BubbleShape::circle, 220.5), (Size{220.5, 220.5}));
}

TEST(RingWeight, MultipliesTheLine) {
    EXPECT_EQ(factor(RingWeight::hairline), 0.3);
    EXPECT_EQ(factor(RingWeight::thin), 0.55);
    EXPECT_EQ(factor(RingWeight::medium), 1.0);
    EXPECT_EQ(factor(RingWeight::thick), 1.8);
}

TEST(ChameleonPalette, HasItsColoursInOrder) {
    EXPECT_THAT(hexes(ChameleonPalette::lime), ElementsAre(0xD4FF3A, 0xB6F000, 0xEFFF7A, 0x8FE000, 0xC6F432));
    EXPECT_THAT(hexes(ChameleonPalette::neon), ElementsAre(0x00F0FF, 0xFF2BD6, 0xB6FF00, 0xFFE600, 0x7A5CFF));
    EXPECT_THAT(hexes(ChameleonPalette::ocean), ElementsAre(0x00C2D1, 0x0A7BBD, 0x5CB6E8, 0x1DE9B6, 0x0D47A1));
    EXPECT_THAT(hexes(ChameleonPalette::sunset), ElementsAre(0xFF7A18, 0xFF4E6A, 0xFF2D95, 0xA34CFF, 0xFFB347));
    EXPECT_THAT(hexes(ChameleonPalette::gold), ElementsAre(0xE9C48E, 0xFFF1D0, 0xC9963B, 0xFFFFFF, 0xB8862E));
    EXPECT_THAT(hexes(ChameleonPalette::forest), ElementsAre(0x2ECC71, 0xA8E063, 0x16A085, 0x5CC9A7, 0xD4FC79));
    EXPECT_THAT(hexes(ChameleonPalette::silver), ElementsAre(0xFFFFFF, 0xC0C7D0, 0x8A94A6, 0xE8ECF1, 0xA7C0D6));
    EXPECT_THAT(hexes(ChameleonPalette::rainbow),
                ElementsAre(0xFF453A, 0xFF9F0A, 0xFFD60A, 0x30D158, 0x64D2FF, 0x0A84FF, 0xBF5AF2));
}

TEST(PresenterStyle, KnowsTheSideStyles) {
    EXPECT_FALSE(isSide(PresenterStyle::full));
    EXPECT_FALSE(isSide(PresenterStyle::framed));
    EXPECT_TRUE(isSide(PresenterStyle::sideRight));
    EXPECT_TRUE(isSide(PresenterStyle::sideLeft));
}

TEST(VideoQuality, ScalesAScreenOf1440By900AtTwoPixelsAPoint) {
    EXPECT_EQ(size(VideoQuality::fullHD, {1440, 900}, 2), (VideoSize{1920, 1200}));
    EXPECT_EQ(size(VideoQuality::retina, {1440, 900}, 2), (VideoSize{2880, 1800}));
    EXPECT_EQ(size(VideoQuality::uhd4k, {1440, 900}, 2), (VideoSize{3840, 2400}));
}

TEST(VideoQuality, RetinaNeverGoesPast3840Pixels) {
    EXPECT_EQ(size(VideoQuality::retina, {3008, 1692}, 2), (VideoSize{3840, 2160}));
    EXPECT_EQ(size(VideoQuality::retina, {1920, 1080}, 2), (VideoSize{3840, 2160}));
    EXPECT_EQ(size(VideoQuality::retina, {5120, 1440}, 1), (VideoSize{3840, 1080}));
    EXPECT_EQ(size(VideoQuality::retina, {3456, 2234}, 2), (VideoSize{3840, 2482})); // 2482.2
}

TEST(VideoQuality, BringsBothSidesDownToEven) {
    EXPECT_EQ(size(VideoQuality::retina, {1367, 769}, 1), (VideoSize{1366, 768}));
    EXPECT_EQ(size(VideoQuality::retina, {1921, 1081}, 1), (VideoSize{1920, 1080}));
    EXPECT_EQ(size(VideoQuality::fullHD, {1366, 768}, 1), (VideoSize{1920, 1078})); // 1079.47
    EXPECT_EQ(size(VideoQuality::retina, {1.9, 1.9}, 1), (VideoSize{0, 0}));
}

TEST(VideoQuality, OfAnEmptyScreenIsNothing) {
    EXPECT_EQ(size(VideoQuality::fullHD, {0, 900}, 1), (VideoSize{0, 0}));
}

} // namespace
} // namespace velmo
