#include "surfaces/BubbleController.h"

#include "BubbleDesk.h"
#include "ui/ScreenPlace.h"

#include <QMouseEvent>

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::BubbleDesk;

struct Shown : BubbleDesk {
    Shown() {
        bubble.show();
        pass(1);
    }
    Rect frame() { return ScreenPlace::toGlobal(bubble.view().geometry()); }
    void hover(bool inside) { bubble.view().onHover(inside); }
    bool hasControls() { return bubble.controls() != nullptr && bubble.controls()->isVisible(); }
    void click(int button) {
        BubbleControlsView& controls = *bubble.controls();
        const QPointF at = controls.buttonRect(button).center();
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&controls, &event);
        }
    }
};

/// Titles as they stand, "-" for separators, "*" before what is checked, "/" before a submenu, "!" before what is
/// disabled.
QStringList described(const QMenu& menu) {
    QStringList lines;
    for (const QAction* item : menu.actions()) {
        if (item->isSeparator()) {
            lines << QStringLiteral("-");
            continue;
        }
        lines << (item->isChecked() ? "*" : "") + QString(item->menu() != nullptr ? "/" : "") +
                     QString(item->isEnabled() ? "" : "!") + item->text();
    }
    return lines;
}

QAction* find(const QMenu& menu, const QString& title) {
    for (QAction* item : menu.actions()) {
        if (item->text() == title) {
            return item;
        }
        if (item->menu() != nullptr) {
            if (QAction* inside = find(*item->menu(), title)) {
                return inside;
            }
        }
    }
    return nullptr;
}

void choose(BubbleController& bubble, const char* title) {
    const auto menu = bubble.makeMenu();
    QAction* item = find(*menu, QString::fromUtf8(title));
    ASSERT_NE(item, nullptr) << title;
    item->trigger();
}

TEST(BubbleController, ThePanelIsTheShapesSizeAndTwentyTwoPointsAround) {
    Shown desk;
    EXPECT_EQ(desk.frame().size(), (Size{264, 264}));
    desk.prefs.bubbleShape = BubbleShape::rounded;
    desk.bubble.applyPrefs();
    desk.pass(1);
    EXPECT_EQ(desk.frame().size(), (Size{337, 264}));
    desk.prefs.bubbleShape = BubbleShape::vertical;
    desk.prefs.bubbleSize = BubbleSize::l;
    desk.bubble.applyPrefs();
    desk.pass(1);
    EXPECT_EQ(desk.frame().size(), (Size{294, 460}));
}

TEST(BubbleController, ADoubleClickStepsTheSizeAndAfterLargeComesSmall) {
    Shown desk;
    desk.bubble.view().onDoubleClick();
    EXPECT_EQ(desk.prefs.bubbleSize.value(), BubbleSize::l);
    desk.bubble.view().onDoubleClick();
    EXPECT_EQ(desk.prefs.bubbleSize.value(), BubbleSize::s);
    desk.pass(1);
    EXPECT_EQ(desk.frame().size(), (Size{194, 194}));
}

TEST(BubbleController, ADoubleClickInCameraOnlyDoesNothing) {
    Shown desk;
    desk.bubble.enterCameraOnly(desk.screens.screens[0]);
    desk.bubble.view().onDoubleClick();
    EXPECT_EQ(desk.prefs.bubbleSize.value(), BubbleSize::m);
}

TEST(BubbleController, SizesThatComeBackLeaveTheBubbleWhereItWas) {
    Shown desk;
    desk.prefs.bubbleShape = BubbleShape::rounded;
    desk.bubble.applyPrefs();
    desk.pass(1);
    desk.bubble.view().move(700, 300);
    desk.bubble.view().onDrag();
    const Rect before = desk.frame();
    for (int i = 0; i < 9; ++i) {
        desk.bubble.view().onDoubleClick();
        desk.pass(0.05 * i);
    }
    desk.pass(1);
    EXPECT_EQ(desk.frame(), before) << "also when one change overtakes the other";
}

TEST(BubbleController, ABiggerSizeNearTheEdgeEndsInsideTheScreen) {
    Shown desk;
    desk.bubble.view().move(1920 - 264, 0);
    desk.bubble.view().onDrag();
    desk.bubble.view().onDoubleClick();
    desk.pass(1);
    EXPECT_EQ(desk.frame().maxX(), 1920);
    EXPECT_EQ(desk.frame().width, 364);
}

TEST(BubbleController, AVisibleBubbleGrowsInSteps) {
    Shown desk;
    desk.bubble.view().onDoubleClick();
    desk.pass(0.05);
    EXPECT_GT(desk.frame().width, 264);
    EXPECT_LT(desk.frame().width, 364);
    EXPECT_EQ(desk.bubble.captureInfo()->window, desk.frame()) << "told as it stands on the screen";
    desk.pass(0.3);
    EXPECT_EQ(desk.frame().width, 364);
}

TEST(BubbleController, HoveringOutAndBackInWithinSevenTenthsLeavesTheControlsUp) {
    Shown desk;
    desk.hover(true);
    ASSERT_TRUE(desk.hasControls());
    desk.hover(false);
    desk.pass(0.6);
    EXPECT_TRUE(desk.hasControls());
    desk.hover(true);
    desk.pass(2);
    EXPECT_TRUE(desk.hasControls());
    desk.hover(false);
    desk.pass(0.75);
    EXPECT_FALSE(desk.hasControls());
}

TEST(BubbleController, TheControlsStayWhileTheMouseIsOverThem) {
    Shown desk;
    desk.hover(true);
    desk.bubble.controlsModel().onHover(true);
    desk.hover(false);
    desk.pass(3);
    EXPECT_TRUE(desk.hasControls());
    desk.bubble.controlsModel().onHover(false);
    desk.pass(0.75);
    EXPECT_FALSE(desk.hasControls());
}

TEST(BubbleController, TheControlsRideInsideTheLowerRimAndFollowTheBubble) {
    Shown desk;
    desk.hover(true);
    const QWidget& controls = *desk.bubble.controls();
    const auto middle = [&] { return controls.geometry().center() - desk.bubble.view().pos(); };
    EXPECT_EQ(desk.bubble.controlsModel().button(), 30);
    EXPECT_NEAR(middle().x(), 132, 1);
    EXPECT_NEAR(middle().y(), 264 - 22 - 220 * 0.17, 1);
    desk.bubble.view().move(600, 400);
    EXPECT_NEAR(middle().x(), 132, 1);
    desk.prefs.bubbleShape = BubbleShape::vertical;
    desk.prefs.cornerFraction = 0.5;
    desk.bubble.applyPrefs();
    desk.pass(1);
    EXPECT_NEAR(middle().y(), 286 + 22 - 172 * 0.5 * 0.45, 1);
}

TEST(BubbleController, TheControlsStandOnTheNameWhereTheyWouldCoverIt) {
    Shown desk;
    desk.giveName();
    for (const BubbleShape shape : allCases<BubbleShape>()) {
        desk.prefs.bubbleShape = shape;
        desk.bubble.applyPrefs();
        desk.pass(1);
        desk.hover(true);
        const BubbleControlsView& controls = *desk.bubble.controls();
        const QRectF row = controls.capsule().translated(controls.pos() - desk.bubble.view().pos());
        EXPECT_FALSE(row.intersects(*desk.bubble.view().nameFrame()));
    }
}

TEST(BubbleController, AButtonOfTheControlsChoosesItsSize) {
    Shown desk;
    desk.hover(true);
    desk.click(2);
    desk.pass(1);
    EXPECT_EQ(desk.prefs.bubbleSize.value(), BubbleSize::l);
    EXPECT_EQ(desk.bubble.controlsModel().button(), 43);
    desk.click(0);
    desk.pass(1);
    EXPECT_EQ(desk.frame().width, 194);
    EXPECT_EQ(desk.bubble.controlsModel().button(), 20);
}

TEST(BubbleController, TheControlsHaveTheColourOfTheRing) {
    Shown desk;
    desk.hover(true);
    EXPECT_EQ(desk.bubble.controlsModel().accent().rgb(), qRgb(0xD4, 0xFF, 0x3A));
    desk.prefs.ringStyle = RingStyle::fine;
    desk.prefs.ringCustomHex = QStringLiteral("#102030");
    desk.bubble.applyPrefs();
    desk.hover(true);
    EXPECT_EQ(desk.bubble.controlsModel().accent().rgb(), qRgb(0x10, 0x20, 0x30));
    desk.prefs.ringCustomHex = QStringLiteral("#1020");
    desk.prefs.ringIndex = -1;
    desk.bubble.applyPrefs();
    desk.hover(true);
    EXPECT_EQ(desk.bubble.controlsModel().accent().rgb(), qRgb(0xBF, 0x5A, 0xF2));
}

TEST(BubbleController, ABubbleThatWasClosedStaysHiddenAndComesBackOnlyWithAPicture) {
    Shown desk;
    desk.hover(true);
    desk.click(3);
    EXPECT_TRUE(desk.bubble.userHidden());
    EXPECT_FALSE(desk.bubble.isVisible());
    EXPECT_FALSE(desk.hasControls());
    desk.bubble.applyPrefs();
    desk.pass(1);
    EXPECT_FALSE(desk.bubble.isVisible());
    desk.hasVideo = false;
    desk.bubble.toggleUserVisibility();
    EXPECT_FALSE(desk.bubble.isVisible());
    EXPECT_TRUE(desk.bubble.userHidden());
    desk.hasVideo = true;
    desk.bubble.toggleUserVisibility();
    EXPECT_TRUE(desk.bubble.isVisible());
    EXPECT_FALSE(desk.bubble.userHidden());
    desk.bubble.toggleUserVisibility();
    EXPECT_TRUE(desk.bubble.userHidden());
}

TEST(BubbleController, HidingItByTheProgramIsNotTheUsersDoing) {
    Shown desk;
    desk.bubble.hide();
    EXPECT_FALSE(desk.bubble.userHidden());
}

TEST(BubbleController, CameraOnlyIsAPlainRectangleWithoutNameAndInNoFrame) {
    Shown desk;
    desk.giveName();
    desk.bubble.applyPrefs();
    const Rect before = desk.frame();
    ASSERT_TRUE(desk.bubble.captureInfo()->label);
    desk.hover(true);
    desk.bubble.enterCameraOnly(desk.screens.screens[0]);
    desk.bubble.enterCameraOnly(desk.screens.screens[0]);
    desk.pass(1);
    EXPECT_EQ(desk.frame(), (Rect{480, 300, 960, 540}));
    EXPECT_FALSE(desk.bubble.view().nameFrame());
    EXPECT_FALSE(desk.bubble.captureInfo());
    EXPECT_FALSE(desk.bubble.captureInfoIgnoringCover());
    EXPECT_FALSE(desk.hasControls());
    desk.givePicture();
    const QImage seen = desk.bubble.view().grab().toImage();
    for (const QPoint& corner : {QPoint(0, 0), QPoint(959, 0), QPoint(0, 539), QPoint(959, 539)}) {
        EXPECT_NEAR(qGray(seen.pixel(corner)), qGray(QColor(Qt::gray).rgb()), 2) << "the picture up to its corners";
    }
    desk.hover(true);
    EXPECT_FALSE(desk.hasControls());
    desk.prefs.bubbleSize = BubbleSize::l;
    desk.bubble.applyPrefs();
    EXPECT_EQ(desk.frame().width, 960);
    desk.bubble.exitCameraOnly();
    desk.bubble.exitCameraOnly();
    EXPECT_EQ(desk.frame(), before);
    EXPECT_TRUE(desk.bubble.view().nameFrame());
}

TEST(BubbleController, WhatTheCompositorIsToldIsSevenPointsWiderThanTheShape) {
    Shown desk;
    desk.giveName();
    desk.bubble.applyPrefs();
    const Rect frame = desk.frame();
    const auto info = desk.bubble.captureInfo();
    ASSERT_TRUE(info);
    EXPECT_EQ(info->rect, (Rect{frame.x + 15, frame.y + 15, 234, 234}));
    EXPECT_TRUE(info->circle);
    EXPECT_EQ(info->corner, desk.prefs.cornerFraction.value());
    EXPECT_EQ(info->window, frame);
    EXPECT_EQ(info->label, (Rect{frame.x + 132 - 45, frame.y + 2, 90, 30}));
    EXPECT_EQ(info->key, 0);
    desk.bubble.hide();
    EXPECT_FALSE(desk.bubble.captureInfo());
}

TEST(BubbleController, UnderThePresenterItIsInNoFrameButItsPlaceIsKnown) {
    Shown desk;
    desk.hover(true);
    desk.bubble.setCoveredByPresenter(true);
    EXPECT_TRUE(desk.bubble.isVisible());
    EXPECT_EQ(desk.bubble.view().windowOpacity(), 0);
    EXPECT_FALSE(desk.hasControls());
    EXPECT_FALSE(desk.bubble.captureInfo());
    EXPECT_TRUE(desk.bubble.captureInfoIgnoringCover());
    desk.bubble.setCoveredByPresenter(false);
    EXPECT_EQ(desk.bubble.view().windowOpacity(), 1);
    EXPECT_TRUE(desk.bubble.captureInfo());
}

TEST(BubbleController, WhenItsDisplayGoesItComesIntoReachAndRemembersWhereItWas) {
    BubbleDesk desk;
    desk.screens.screens.push_back({2, {1920, 0, 1920, 1080}, 1});
    desk.store.setReal(QStringLiteral("bubbleX"), 3000);
    desk.store.setReal(QStringLiteral("bubbleY"), 500);
    desk.bubble.show();
    EXPECT_GT(desk.bubble.captureInfo()->rect.x, 2500);
    desk.screens.screens.pop_back();
    desk.bubble.reconnect();
    const Rect now = desk.bubble.captureInfo()->rect;
    EXPECT_GE(now.minX(), 0);
    EXPECT_LE(now.maxX(), 1920);
    EXPECT_EQ(desk.store.real(QStringLiteral("bubbleX")), 3000);
}

TEST(BubbleController, UnderPresenterAndColumnItComesBackWhenBothHaveGone) {
    Shown desk;
    desk.bubble.setCoveredByPresenter(true);
    desk.bubble.setCoveredByColumn(true);
    desk.bubble.setCoveredByPresenter(false); // the flight that was under way when the column came
    EXPECT_EQ(desk.bubble.view().windowOpacity(), 0);
    EXPECT_FALSE(desk.bubble.captureInfo());
    desk.bubble.setCoveredByColumn(false);
    EXPECT_EQ(desk.bubble.view().windowOpacity(), 1);
    EXPECT_TRUE(desk.bubble.captureInfo());
}

TEST(BubbleController, ItComesUpWhereItWasLeftAndInTheCornerWhenThatScreenIsGone) {
    BubbleDesk desk;
    desk.store.setReal(QStringLiteral("bubbleX"), 700);
    desk.store.setReal(QStringLiteral("bubbleY"), 200);
    desk.bubble.show();
    const auto origin = [&] { return ScreenPlace::toGlobal(desk.bubble.view().geometry()).origin(); };
    EXPECT_EQ(origin(), (Point{700, 200}));
    desk.bubble.hide();
    desk.store.setReal(QStringLiteral("bubbleX"), 2700);
    desk.bubble.show();
    EXPECT_EQ(origin(), (Point{40, 40}));
    desk.bubble.hide();
    desk.store.setText(QStringLiteral("bubbleX"), QStringLiteral("700"));
    desk.bubble.show();
    EXPECT_EQ(origin(), (Point{40, 40})) << "a text is no place";
}

TEST(BubbleController, ADragIsRememberedWhenItEnds) {
    Shown desk;
    const QPointF grip(132, 132);
    const QPoint start = desk.bubble.view().pos();
    const auto send = [&](QEvent::Type type, QPointF by) {
        QMouseEvent event(type, grip, start + grip + by, Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&desk.bubble.view(), &event);
    };
    send(QEvent::MouseButtonPress, {0, 0});
    const int writes = desk.store.writes();
    for (int i = 1; i <= 20; ++i) {
        send(QEvent::MouseMove, {10.0 * i, -5.0 * i});
    }
    EXPECT_EQ(desk.store.writes(), writes) << "not at every step";
    send(QEvent::MouseButtonRelease, {200, -100});
    EXPECT_EQ(desk.store.real(QStringLiteral("bubbleX")), 240);
    EXPECT_EQ(desk.store.real(QStringLiteral("bubbleY")), 140);
}

TEST(BubbleController, ABubbleOnAnotherScreenComesToTheRecordedOne) {
    Shown desk;
    const Screen other{2, {1920, 0, 1280, 720}, 1};
    desk.bubble.keep(desk.screens.screens[0]);
    EXPECT_EQ(desk.frame().origin(), (Point{40, 40}));
    desk.bubble.keep(other);
    EXPECT_EQ(desk.frame().origin(), (Point{1960, 40}));
}

TEST(BubbleController, ItsWindowStaysTheSameForLife) {
    BubbleDesk desk;
    const auto window = desk.bubble.windowID();
    EXPECT_NE(window, 0u);
    desk.bubble.show();
    desk.bubble.enterCameraOnly(desk.screens.screens[0]);
    desk.bubble.exitCameraOnly();
    desk.bubble.setCoveredByPresenter(true);
    desk.bubble.setCoveredByPresenter(false);
    desk.bubble.hide();
    desk.bubble.show();
    EXPECT_EQ(desk.bubble.windowID(), window);
}

TEST(BubbleController, TheControlsAreOnTheScreenUnseenWhileWindowsAreListed) {
    Shown desk;
    desk.bubble.prepareControlsForCapture();
    ASSERT_TRUE(desk.hasControls());
    EXPECT_EQ(desk.bubble.controls()->windowOpacity(), 0);
    desk.bubble.parkControls();
    EXPECT_FALSE(desk.hasControls());
    EXPECT_EQ(desk.bubble.controls()->windowOpacity(), 1);
    desk.hover(true);
    desk.bubble.prepareControlsForCapture();
    desk.bubble.parkControls();
    EXPECT_TRUE(desk.hasControls()) << "controls that are up are left alone";
}

TEST(BubbleController, TheMouseMayReachControlsThatAreOnlyPrepared) {
    Shown desk;
    desk.bubble.prepareControlsForCapture();
    desk.hover(true);
    EXPECT_EQ(desk.bubble.controls()->windowOpacity(), 1);
    desk.bubble.parkControls();
    EXPECT_TRUE(desk.hasControls());
}

TEST(BubbleController, TheMenuStandsInItsOrder) {
    Shown desk;
    EXPECT_EQ(described(*desk.bubble.makeMenu()),
              QStringList({"Tamaño S", "*Tamaño M", "Tamaño L", "-", "*Círculo", "Horizontal", "Vertical", "-",
                           "!Mostrar mi nombre (escríbelo en el panel de grabación)", "-", "/Borde",
                           "/Colores del camaleón", "-", "/Grosor del borde", "*Sombra suave", "*Espejo"}));
    desk.prefs.bubbleShape = BubbleShape::vertical;
    desk.prefs.presenterName = QStringLiteral("  Laura ");
    desk.prefs.cornerFraction = 0.12;
    const auto menu = desk.bubble.makeMenu();
    EXPECT_EQ(described(*menu),
              QStringList({"Tamaño S", "*Tamaño M", "Tamaño L", "-", "Círculo", "Horizontal", "*Vertical", "-",
                           "Mostrar mi nombre", "-", "/Borde", "/Colores del camaleón", "-", "/Grosor del borde",
                           "/Esquinas", "*Sombra suave", "*Espejo"}));
    EXPECT_EQ(described(*find(*menu, "Borde")->menu()),
              QStringList({"*Camaleón", "Fino", "Aurora", "Clásico", "Sin borde"}));
    EXPECT_EQ(described(*find(*menu, "Colores del camaleón")->menu()),
              QStringList({"*Lima", "Neón", "Océano", "Atardecer", "Dorado", "Bosque", "Plata", "Arcoíris"}));
    EXPECT_EQ(described(*find(*menu, "Grosor del borde")->menu()),
              QStringList({"Ultrafino", "Delgado", "*Medio", "Grueso"}));
    EXPECT_EQ(described(*find(*menu, "Esquinas")->menu()),
              QStringList({"Rectas", "*Suaves", "Redondeadas", "Muy redondeadas", "Píldora"}));
}

TEST(BubbleController, TheCheckedCornerSurvivesAFractionThatDiffersByAHundredth) {
    Shown desk;
    desk.prefs.bubbleShape = BubbleShape::rounded;
    for (const double fraction : {0.21, 0.23}) {
        desk.prefs.cornerFraction = fraction;
        EXPECT_TRUE(find(*desk.bubble.makeMenu(), "Redondeadas")->isChecked()) << fraction;
    }
    desk.prefs.cornerFraction = 0.245;
    EXPECT_FALSE(find(*desk.bubble.makeMenu(), "Redondeadas")->isChecked());
}

TEST(BubbleController, ChoicesOfTheMenuAreKeptAndSeenAtOnce) {
    Shown desk;
    desk.prefs.ringStyle = RingStyle::none;
    choose(desk.bubble, "Arcoíris");
    EXPECT_EQ(desk.prefs.chameleonPalette.value(), ChameleonPalette::rainbow);
    EXPECT_EQ(desk.bubble.view().look().style, RingStyle::chameleon) << "a palette brings the chameleon";
    EXPECT_EQ(desk.bubble.view().look().chameleonColors.size(), 7u);
    choose(desk.bubble, "Grueso");
    EXPECT_EQ(desk.bubble.view().look().weight, 1.8);
    choose(desk.bubble, "Vertical");
    choose(desk.bubble, "Píldora");
    EXPECT_EQ(desk.bubble.view().look().corner, 0.5);
    choose(desk.bubble, "Sombra suave");
    EXPECT_FALSE(desk.bubble.view().look().softShadow);
    choose(desk.bubble, "Espejo");
    EXPECT_FALSE(desk.prefs.mirror);
    choose(desk.bubble, "Tamaño S");
    desk.pass(1);
    EXPECT_EQ(desk.frame().size(), (Size{117 + 44, 195 + 44}));
}

TEST(BubbleController, TheMenuTurnsTheNameOnAndOff) {
    Shown desk;
    desk.giveName();
    desk.prefs.showName = false;
    desk.bubble.applyPrefs();
    EXPECT_FALSE(desk.bubble.view().nameFrame());
    choose(desk.bubble, "Mostrar mi nombre");
    EXPECT_TRUE(desk.bubble.view().nameFrame());
    EXPECT_TRUE(find(*desk.bubble.makeMenu(), "Mostrar mi nombre")->isChecked());
    choose(desk.bubble, "Mostrar mi nombre");
    EXPECT_FALSE(desk.bubble.view().nameFrame());
}

} // namespace
} // namespace velmo
