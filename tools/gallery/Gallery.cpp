// velmo-gallery FOLDER [bubbles] [TEXT]: shows each surface in each of its states on the display and saves a picture of each.
// TEXT is the size of the desktop's text, 1 to 2.

#include "BubbleStates.h"
#include "Easel.h"
#include "PresenterStates.h"
#include "SetupStates.h"
#include "WelcomeStates.h"
#include "app/ShortcutsDialog.h"
#include "classkit/ClassKit.h"
#include "classkit/views/KitPanel.h"
#include "panels/Alerts.h"
#include "panels/ControlBar.h"
#include "panels/CountdownWindow.h"
#include "session/QtTimers.h"
#include "support/FakeMicrophoneLevel.h"
#include "surfaces/DrawingPalette.h"
#include "surfaces/ScreenDrawing.h"
#include "surfaces/Teleprompter.h"
#include "surfaces/internal/DrawingOverlay.h"
#include "ui/AlertDialog.h"
#include "ui/Look.h"
#include "ui/ScreenPlace.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"
#include "unit/classkit/KitWorld.h"
#include "unit/session/World.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

namespace velmo {
namespace {

constexpr double kSpeaking = 0.67; // of the meter

/// What lies behind the surfaces: bright on the left, dark on the right.
class Backdrop final : public QWidget {
public:
    Backdrop()
        : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnBottomHint | Qt::X11BypassWindowManagerHint) {
        setGeometry(QGuiApplication::primaryScreen()->geometry());
        show();
        lower();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(0x5a646b));
        painter.fillRect(QRect(0, 0, width() / 2, height()), Qt::white);
        painter.setPen(Qt::black);
        painter.setFont(Theme::headline(60));
        painter.drawText(120, 240, QStringLiteral("Derivada direccional"));
    }
};

class Gallery final : public test::World {
public:
    explicit Gallery(const Easel& easel) : easel_(easel) {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        screens.screens = {{1, {0, 0, double(screen.width()), double(screen.height())}, 1},
                           {2, {double(screen.width()), 0, 2560, 1440}, 1}};
    }

    void showAll() {
        symbols();
        classMaterial();
        controlBar();
        teleprompter();
        countdownWindow();
        dialogs();
        drawing();
        shortcuts();
        showPresenter(screens.screens.front(), [this](const QString& name) {
            save(name, [] { return QGuiApplication::primaryScreen()->geometry(); });
        });
        bubbles();
    }

    void bubbles() {
        showBubbles([this](const QString& name, const QRect& place) { save(name, [place] { return place; }); }, &wait);
    }

private:
    void TestBody() override {}

    void save(const QString& name, const std::function<QRect()>& placeOf) { easel_.save(name, placeOf); }
    static void wait(int milliseconds) { Easel::wait(milliseconds); }

    void symbols() {
        QWidget sheet(nullptr, Qt::FramelessWindowHint);
        sheet.setFixedSize(10 * 110, 7 * 70);
        QPixmap picture(sheet.size());
        picture.fill(Theme::navy);
        QPainter painter(&picture);
        int index = 0;
        for (const QString& name : Symbol::names()) {
            const QRectF cell(index % 10 * 110, index / 10 * 70, 110, 70);
            Symbol::paint(painter, cell.adjusted(0, 0, -50, -20), name, 24, Theme::sand);
            Symbol::paint(painter, cell.adjusted(50, 0, 0, -20), name, 16, Theme::sky);
            painter.setPen(Theme::muted);
            QFont small = painter.font();
            small.setPixelSize(8);
            painter.setFont(small);
            painter.drawText(cell.adjusted(0, 50, 0, 0), Qt::AlignCenter, name);
            ++index;
        }
        painter.end();
        picture.save(easel_.folder().filePath(QStringLiteral("symbols.png")));
    }

    void fillKit(ClassKit& kit) {
        for (const char* file : {"/c/Derivadas parciales.odp", "/c/Curvas de nivel.pdf", "/c/Superficie en 3D.mp4"}) {
            kit.add({std::filesystem::path(file)});
        }
        kit.add(QStringLiteral("www.youtube.com/watch?v=x"));
        kit.add(QStringLiteral("www.example.org/derivadas-de-dos-variables/practica"));
        kit.add({std::filesystem::path("/c/Ejercicios resueltos.xlsx")});
    }

    void classMaterial() {
        test::KitWorld around;
        ClassKit kit(around.store, around.services());
        fillKit(kit);
        KitPanel panel(kit, *controller, screens);
        const auto place = [&panel] { return panel.cardGeometry(); };
        panel.show();
        QCursor::setPos(panel.cardGeometry().topLeft() + QPoint(120, 95));
        save(QStringLiteral("kit"), place);
        QCursor::setPos(0, 0);
        for (int i = 1; i < 8; ++i) {
            kit.add({std::filesystem::path("/c/Lámina " + std::to_string(i) + ".png")});
        }
        panel.show();
        save(QStringLiteral("kit-many"), place);
        panel.hide();
    }

    void controlBar() {
        test::FakeMicrophoneLevel microphone;
        BarSurroundings around;
        ControlBar bar({{*controller}, prefs, &microphone, [&around] { return around; }});
        record();
        advance(767);
        const Screen screen = screens.screens.front();
        const auto barPlace = [&bar] { return bar.geometry(); };
        bar.show(screen);
        microphone.say(kSpeaking);
        save(QStringLiteral("bar-recording"), barPlace);
        around.material = BarSurroundings::Material::shown;
        bar.refresh();
        save(QStringLiteral("bar-material"), barPlace);
        controller->addMarker();
        save(QStringLiteral("bar-marker"), barPlace);
        controller->flashMessage(QStringLiteral("No te escuchamos · revisa el micrófono"));
        save(QStringLiteral("bar-microphone"), barPlace);
        controller->flashMessage(QStringLiteral(
            "Capítulo · Un título tan largo que no cabe en una sola línea del aviso y por eso se corta al final"));
        save(QStringLiteral("bar-long-flash"), barPlace);
        advance(10);
        controller->togglePause();
        save(QStringLiteral("bar-paused"), barPlace);
        controller->togglePause();
        advance(3500);
        save(QStringLiteral("bar-hour"), barPlace);
        fullBar(bar, around, barPlace);
    }

    /// Every control that there is.
    template <typename Place>
    void fullBar(ControlBar& bar, BarSurroundings& around, const Place& barPlace) {
        prefs.mode = RecordMode::screenCam;
        prefs.scriptText = QStringLiteral("Buenos días");
        around = {true, true, false, true, true, false, false, BarSurroundings::Material::hidden};
        bar.refresh();
        wait(200);
        save(QStringLiteral("bar-full"), barPlace);
        controller->toggleZoom();
        around.scriptVisible = true;
        bar.refresh();
        wait(200);
        save(QStringLiteral("bar-zoom"), barPlace);
        controller->toggleZoom();
        prefs.mode = RecordMode::cam;
        wait(200);
        save(QStringLiteral("bar-camera-only"), barPlace);
        prefs.mode = RecordMode::screen;
    }

    void teleprompter() {
        QtTimers realTimers;
        Teleprompter prompter({prefs, HostClock::shared(), realTimers});
        const auto place = [] {
            for (const QWidget* window : QApplication::topLevelWidgets()) {
                if (window->isVisible() && window->windowTitle().endsWith(QStringLiteral("guion"))) {
                    return window->geometry();
                }
            }
            return QRect();
        };
        prefs.scriptText =
            QStringLiteral("Para empezar quiero contestar una pregunta sencilla: ¿qué pasa con la función si muevo "
                           "solo una variable? Eso es una derivada parcial. Imaginen que caminan por una ladera: hacia "
                           "el norte sube, hacia el este baja. La derivada parcial mide cada camino por su lado.");
        prompter.show(screens.screens.front());
        save(QStringLiteral("prompter-begin"), place);
        prompter.play();
        wait(1300);
        save(QStringLiteral("prompter-playing"), place);
        prompter.pause();
        for (int i = 0; i < 3; ++i) {
            prompter.smallerText();
        }
        save(QStringLiteral("prompter-small-letters"), place);
        for (int i = 0; i < 10; ++i) {
            prompter.biggerText();
        }
        save(QStringLiteral("prompter-large-letters"), place);
        prefs.prompterFont = 28;
        prompter.hide();
        prefs.scriptText =
            QStringLiteral("שלום לכולם, היום נלמד על נגזרות חלקיות. مرحبا بكم في درس اليوم عن المشتقات.\n\n"
                           "Supercalifragilisticoespialidosamenteinterminablementelargoysinespacios 3 × 4");
        prompter.show(screens.screens.front());
        save(QStringLiteral("prompter-scripts"), place);
        prompter.hide();
    }

    void countdownWindow() {
        QtTimers realTimers;
        CountdownWindow window(realTimers);
        const auto running = window.run(screens.screens.front());
        save(QStringLiteral("countdown-3"), [&window] { return window.geometry(); });
        wait(1500);
        save(QStringLiteral("countdown-1"), [&window] { return window.geometry(); });
        wait(1500);
    }

    void dialog(const QString& name, const AlertDialog::Content& content) {
        auto* shown = new AlertDialog(content);
        shown->present();
        wait(50);
        save(name, [shown] { return shown->card().translated(shown->pos()); });
        shown->close();
    }

    void dialogs() {
        using Icon = AlertDialog::Icon;
        using First = AlertDialog::First;
        dialog(QStringLiteral("dialog-information"),
               {Icon::information,
                QStringLiteral("Activa una cámara"),
                QStringLiteral("El modo Cámara necesita una cámara conectada y con permiso."),
                {QStringLiteral("Aceptar")},
                First::isDefault});
        dialog(QStringLiteral("dialog-loss"), {Icon::loss,
                                               QStringLiteral("¿Descartar esta grabación?"),
                                               QStringLiteral("El video se eliminará."),
                                               {QStringLiteral("Descartar"), QStringLiteral("Cancelar")},
                                               First::isDestructive});
        dialog(QStringLiteral("dialog-warning"),
               {Icon::warning,
                QStringLiteral("Antes de grabar"),
                QStringLiteral("La batería está al 14 % y el cargador no está conectado.\n\n¿Quieres grabar igual?"),
                {QStringLiteral("Grabar igual"), QStringLiteral("Cancelar")},
                First::isDestructive});
        dialog(QStringLiteral("dialog-long"),
               {Icon::warning,
                QStringLiteral("Un mensaje largo que necesita dos líneas para decir todo lo que tiene que decir"),
                QStringLiteral("Y un texto <b>con formato</b> y un <a href=\"https://velmo.example\">enlace</a>."),
                {QStringLiteral("Continuar"), QStringLiteral("Otra respuesta"), QStringLiteral("Cancelar")},
                First::isDefault});
    }

    void drawing() {
        QtTimers realTimers;
        ScreenDrawing all({HostClock::shared(), realTimers, {}});
        all.prepare(screens.screens.front());
        all.parkPrepared();
        all.startDrawing();
        const auto place = [&all] { return all.palette()->cardGeometry(); };
        QCursor::setPos(0, 0);
        save(QStringLiteral("palette"), place);
        const auto controlAt = [&all](const char* name) {
            for (QAbstractButton* control : all.palette()->findChildren<QAbstractButton*>()) {
                if (control->accessibleName() == QString::fromUtf8(name)) {
                    return control;
                }
            }
            return static_cast<QAbstractButton*>(nullptr);
        };
        for (const char* name : {"Resaltador", "Azul", "Trazo grueso", "Borrar todo", "Listo"}) {
            QAbstractButton* control = controlAt(name);
            QCursor::setPos(control->mapToGlobal(control->rect().center()));
            save(QStringLiteral("palette-hover-%1").arg(QString::fromUtf8(name)), place);
        }
        QCursor::setPos(0, 0);
        for (const char* name : {"Puntero láser", "Blanco", "Trazo fino", "Listo"}) {
            controlAt(name)->setDown(true);
        }
        save(QStringLiteral("palette-pressed"), place);
        for (const char* name : {"Puntero láser", "Blanco", "Trazo fino", "Listo"}) {
            controlAt(name)->setDown(false);
        }
        for (int i = 0; i < 8; ++i) {
            all.setColorIndex(i);
            all.setWidthIndex(i);
            all.setTool(allCases<DrawingTool>()[static_cast<std::size_t>(i + 2)]);
            save(QStringLiteral("palette-choice-%1").arg(i), place);
        }
        inkSheet(all);
    }

    static void draw(ScreenDrawing& all, const QList<QPointF>& through, bool release = true) {
        const auto send = [&all](QEvent::Type type, QPointF at) {
            QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&all.overlay()->view(), &event);
            wait(2);
        };
        send(QEvent::MouseButtonPress, through.first());
        for (const QPointF& at : through) {
            send(QEvent::MouseMove, at);
        }
        if (release) {
            send(QEvent::MouseButtonRelease, through.last());
        }
    }

    /// Every tool over bright and over dark, in three widths.
    void inkSheet(ScreenDrawing& all) {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const double unit = screen.height() / 12.0;
        const auto wave = [&](double x, double y) {
            QList<QPointF> points;
            for (int i = 0; i < 60; ++i) {
                points.append({x + i * unit / 15, y + unit * 0.35 * std::sin(i / 4.0) * (1 - i / 90.0)});
            }
            return points;
        };
        int column = 0;
        for (const double left : {0.02, 0.35, 0.52, 0.85}) {
            const double x = screen.width() * left;
            for (int i = 0; i < 9; ++i) {
                const auto tool = allCases<DrawingTool>()[static_cast<std::size_t>(i)];
                all.setTool(tool);
                all.setColorIndex(i % 7);
                all.setWidthIndex(column);
                const double y = unit * (i + 2);
                if (isShape(tool)) {
                    draw(all, {{x, y - unit * 0.3}, {x + 2 * unit, y + unit * 0.3}});
                } else if (tool != DrawingTool::laser) {
                    draw(all, wave(x, y));
                }
            }
            ++column;
        }
        all.setTool(DrawingTool::laser);
        for (const double left : {0.02, 0.52}) {
            all.setColorIndex(left < 0.5 ? 0 : 3);
            draw(all, wave(screen.width() * left, unit * 6));
        }
        all.setColorIndex(5);
        draw(all, wave(screen.width() * 0.35, unit * 6), false);
        const QPixmap picture = QGuiApplication::primaryScreen()->grabWindow(0);
        picture.save(easel_.folder().filePath(QStringLiteral("drawing.png")));
    }

    void shortcuts() {
        using Modifier = ShortcutModifier;
        const std::pair<const char*, Shortcuts::State> states[] = {
            {"shortcuts", {}},
            {"shortcuts-taken", {Modifier::controlAlt, {3, 8, 14, 20, 22}}},
            {"shortcuts-super", {Modifier::super, {1, 6}}}};
        for (const auto& [name, state] : states) {
            auto* shown = new ShortcutsDialog(state);
            shown->present();
            wait(50);
            save(QString::fromUtf8(name), [shown] { return shown->geometry(); });
            shown->close();
        }
    }

    const Easel& easel_;
};

} // namespace
} // namespace velmo

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    velmo::Look::apply(application);
    if (count < 2) {
        std::fprintf(stderr, "usage: velmo-gallery FOLDER [bubbles] [TEXT]\n");
        return 2;
    }
    bool bubblesOnly = false;
    for (int i = 2; i < count; ++i) {
        bubblesOnly |= std::string(arguments[i]) == "bubbles";
        if (const double text = std::atof(arguments[i]); text > 0) {
            velmo::Type::setScale(text);
            QApplication::setFont(velmo::Type::font(velmo::TextStyle::body));
        }
    }
    const QDir folder(QString::fromLocal8Bit(arguments[1]));
    folder.mkpath(QStringLiteral("."));
    const velmo::Backdrop backdrop;
    const velmo::Easel easel(folder);
    if (!bubblesOnly) {
        velmo::SetupStates::showAll(easel);
        velmo::WelcomeStates::showAll(easel);
    }
    velmo::Gallery gallery(easel);
    bubblesOnly ? gallery.bubbles() : gallery.showAll();
    return 0;
}
