#include "BubbleStates.h"

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "compositor/NameTagImage.h"
#include "platform/desktop/QtScreens.h"
#include "platform/synthetic/SyntheticCameras.h"
#include "session/QtTimers.h"
#include "support/MemoryDefaultsStore.h"
#include "surfaces/BubbleController.h"
#include "surfaces/SecondBubbleController.h"
#include "ui/ScreenPlace.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <memory>
#include <vector>

namespace velmo {
namespace {

using Save = std::function<void(const QString&, const QRect&)>;
using Wait = std::function<void(int)>;

/// A synthetic camera whose pictures arrive in a feed.
class Camera {
public:
    explicit Camera(const char* id) {
        auto opened = service_.open(id, queue_, {[this](const Sample& sample) { feed.publish(sample.image); }, {}});
        if (opened.ok()) {
            stream_ = std::move(opened.value());
        }
    }
    CameraFeed feed;

private:
    SyntheticCameras service_{HostClock::shared(), {false, 0}};
    ThreadQueue queue_{"velmo.gallery.camera"};
    std::unique_ptr<CameraStream> stream_;
};

struct Wall {
    explicit Wall(const Save& saver) : save(saver) {}

    BubbleView& hang(const BubbleLook& look, BubbleSize size, QPoint at, CameraFeed& feed) {
        views.push_back(
            std::make_unique<BubbleView>(BubbleView::Services{feed, HostClock::shared(), timers, &NameTag::image}));
        BubbleView& view = *views.back();
        const Size shape = velmo::size(look.shape, diameter(size));
        view.setLook(look);
        view.setMirrored(true);
        view.setGeometry(at.x(), at.y(), static_cast<int>(shape.width + 2 * BubbleView::pad),
                         static_cast<int>(shape.height + 2 * BubbleView::pad));
        view.show();
        taken |= view.geometry();
        return view;
    }
    BubbleView& hang(const BubbleLook& look, BubbleSize size, QPoint at) { return hang(look, size, at, teacher.feed); }
    void done(const char* name) {
        save(QString::fromLatin1(name), taken);
        views.clear();
        taken = {};
    }

    const Save& save;
    QtTimers timers;
    Camera teacher{SyntheticCameras::kTeacher};
    Camera hands{SyntheticCameras::kHands};
    std::vector<std::unique_ptr<BubbleView>> views;
    QRect taken;
};

std::vector<Color> colorsOf(ChameleonPalette palette) {
    std::vector<Color> colors;
    for (const std::uint32_t hex : hexes(palette)) {
        colors.push_back(Color::fromHex(hex));
    }
    return colors;
}

BubbleLook lookOf(BubbleShape shape, RingStyle style) {
    BubbleLook look;
    look.shape = shape;
    look.style = style;
    look.ringColor = Color::fromHex(0x7FE8B8);
    look.chameleonColors = colorsOf(ChameleonPalette::lime);
    return look;
}

void shapesAndRings(Wall& wall) {
    int y = 10;
    for (const BubbleShape shape : allCases<BubbleShape>()) {
        int x = 60;
        int height = 0;
        for (const RingStyle style : allCases<RingStyle>()) {
            const BubbleView& view = wall.hang(lookOf(shape, style), BubbleSize::m, {x, y});
            x += view.width() + 10;
            height = view.height();
        }
        y += height + 10;
    }
    wall.done("bubble-shapes");
}

void weights(Wall& wall) {
    int y = 10;
    for (const RingWeight weight : allCases<RingWeight>()) {
        int x = 400;
        for (const RingStyle style : allCases<RingStyle>()) {
            BubbleLook look = lookOf(BubbleShape::circle, style);
            look.weight = factor(weight);
            look.softShadow = weight != RingWeight::hairline;
            BubbleView& view = wall.hang(look, BubbleSize::s, {x, y});
            view.setLevel(weight == RingWeight::thick ? 1 : 0);
            x += view.width() + 10;
        }
        y += 210;
    }
    wall.done("bubble-weights");
}

/// Each style in silence, in speech and at its loudest.
void voice(Wall& wall) {
    int y = 10;
    for (const double level : {0.0, 0.5, 1.0}) {
        int x = 60;
        for (const RingStyle style : allCases<RingStyle>()) {
            BubbleView& view = wall.hang(lookOf(BubbleShape::circle, style), BubbleSize::m, {x, y});
            view.setLevel(level);
            x += view.width() + 10;
        }
        y += 280;
    }
    wall.done("bubble-voice");
}

void palettes(Wall& wall) {
    int index = 0;
    for (const ChameleonPalette palette : allCases<ChameleonPalette>()) {
        BubbleLook look = lookOf(BubbleShape::circle, RingStyle::chameleon);
        look.chameleonColors = colorsOf(palette);
        wall.hang(look, BubbleSize::m, {420 + index % 4 * 270, 60 + index / 4 * 270});
        ++index;
    }
    wall.done("bubble-palettes");
}

void corners(Wall& wall) {
    int x = 20;
    for (const double corner : {0.0, 0.12, 0.22, 0.35, 0.5}) {
        BubbleLook look = lookOf(BubbleShape::rounded, RingStyle::aurora);
        look.corner = corner;
        wall.hang(look, BubbleSize::m, {x, 60});
        look.shape = BubbleShape::vertical;
        look.style = RingStyle::classic;
        x += wall.hang(look, BubbleSize::m, {x + 40, 360}).width() + 130;
    }
    wall.done("bubble-corners");
}

void names(Wall& wall) {
    const NameTag::Text texts[] = {{QStringLiteral("Laura Méndez"), QStringLiteral("Cálculo II")},
                                   {QStringLiteral("Laura Méndez"), {}},
                                   {QString(300, QLatin1Char('M')), QString(300, QLatin1Char('w'))},
                                   {QStringLiteral("👩‍🏫📐🎓"), QStringLiteral("∂f/∂x")},
                                   {QStringLiteral("ليلى منصور"), QStringLiteral("حساب التفاضل")}};
    int x = 20;
    for (const NameTag::Text& text : texts) {
        BubbleLook look = lookOf(BubbleShape::circle, RingStyle::chameleon);
        look.nameTag = text;
        wall.hang(look, BubbleSize::l, {x, 20});
        wall.hang(look, BubbleSize::s, {x + 80, 400});
        look.shape = BubbleShape::vertical;
        x += wall.hang(look, BubbleSize::m, {x + 80, 620}).width() + 160;
    }
    wall.done("bubble-names");
}

BubbleServices servicesFor(Wall& wall, Prefs& prefs, const QtScreens& screens) {
    return {prefs, screens, HostClock::shared(), wall.timers, wall.teacher.feed, &NameTag::image};
}

/// The controls of each size with the mouse on the button of another one, and on the cross.
void controls(Wall& wall, const Save& save, const Wait& wait) {
    test::MemoryDefaultsStore store;
    Prefs prefs(store);
    QtScreens screens;
    BubbleController bubble(servicesFor(wall, prefs, screens), {[] { return true; }, {}});
    prefs.presenterName = QStringLiteral("Laura Méndez");
    prefs.presenterRole = QStringLiteral("Cálculo II");
    prefs.showName = true;
    bubble.show();
    const auto shown = [&](int button, const QString& state) {
        bubble.applyPrefs();
        bubble.view().onHover(true);
        wait(300);
        const BubbleControlsView& row = *bubble.controls();
        QCursor::setPos(row.mapToGlobal(row.buttonRect(button).center().toPoint()));
        save(QStringLiteral("bubble-controls-") + state, bubble.view().geometry());
    };
    for (const BubbleShape shape : allCases<BubbleShape>()) {
        prefs.bubbleShape = shape;
        for (const BubbleSize size : allCases<BubbleSize>()) {
            prefs.bubbleSize = size;
            shown(static_cast<int>(next(size)), rawValue(shape) + '-' + rawValue(size));
        }
    }
    shown(BubbleControlsView::kButtons - 1, QStringLiteral("cross"));
}

/// The menus of both bubbles, without a name and with one, and each submenu.
void menus(Wall& wall, const Save& save) {
    test::MemoryDefaultsStore store;
    Prefs prefs(store);
    QtScreens screens;
    BubbleController bubble(servicesFor(wall, prefs, screens), {[] { return true; }, {}});
    SecondBubbleController secondBubble(servicesFor(wall, prefs, screens));
    const auto open = [&save](QMenu& menu, const QString& submenu, const char* name) {
        menu.popup({900, 200});
        for (QAction* item : menu.actions()) {
            if (item->menu() != nullptr && item->text() == submenu) {
                menu.setActiveAction(item);
            }
        }
        save(QString::fromLatin1(name), menu.geometry().adjusted(0, 0, 300, 100));
    };
    open(*bubble.makeMenu(), {}, "bubble-menu-nameless");
    open(*secondBubble.makeMenu(), {}, "bubble-menu-second");
    prefs.presenterName = QStringLiteral("Laura Méndez");
    prefs.bubbleShape = BubbleShape::rounded;
    open(*bubble.makeMenu(), QStringLiteral("Borde"), "bubble-menu-rings");
    open(*bubble.makeMenu(), QStringLiteral("Colores del camaleón"), "bubble-menu-palettes");
    open(*bubble.makeMenu(), QStringLiteral("Grosor del borde"), "bubble-menu-weights");
    open(*bubble.makeMenu(), QStringLiteral("Esquinas"), "bubble-menu-corners");
}

void cameraOnly(Wall& wall) {
    BubbleView& view = wall.hang(lookOf(BubbleShape::circle, RingStyle::chameleon), BubbleSize::m, {400, 200});
    view.setCameraOnly(true);
    view.setGeometry(400, 200, 960, 540);
    wall.taken = view.geometry();
    wall.done("bubble-camera-only");
}

void second(Wall& wall) {
    BubbleLook look = lookOf(BubbleShape::rounded, RingStyle::chameleon);
    wall.hang(look, BubbleSize::m, {500, 200}, wall.hands.feed).setMirrored(false);
    CameraFeed none;
    wall.hang(lookOf(BubbleShape::circle, RingStyle::fine), BubbleSize::m, {900, 200}, none);
    wall.done("bubble-second-and-none");
}

} // namespace

void showBubbles(const Save& save, const Wait& wait) {
    Wall wall(save);
    shapesAndRings(wall);
    weights(wall);
    voice(wall);
    palettes(wall);
    corners(wall);
    names(wall);
    second(wall);
    cameraOnly(wall);
    controls(wall, save, wait);
    menus(wall, save);
}

} // namespace velmo
