#include "SetupStates.h"

#include "TwoMicrophones.h"
#include "classkit/ClassKit.h"
#include "classkit/views/KitSetupSection.h"
#include "panels/SetupPanel.h"
#include "panels/setup/ProfilesMenu.h"
#include "settings/SettingsProfiles.h"
#include "support/FakeMicrophoneLevel.h"
#include "ui/ColorWell.h"
#include "ui/NameDialog.h"
#include "ui/Picker.h"
#include "ui/PopupMenu.h"
#include "ui/TextArea.h"
#include "ui/TextField.h"
#include "unit/classkit/KitWorld.h"
#include "unit/session/World.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>

namespace velmo {
namespace {

constexpr const char* kCards[] = {"panel.fuentes",     "panel.burbuja",  "panel.video", "panel.zoom",
                                  "panel.presentador", "panel.material", "panel.guion"};

class States final : public test::World {
public:
    explicit States(const Easel& easel) : easel_(easel), kit_(around_.store, around_.services()) {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        screens.screens = {{1, {0, 0, double(screen.width()), double(screen.height())}, 1},
                           {2, {double(screen.width()), 0, 2560, 1440}, 1}};
        cameras.list = {{"brio", "Logitech BRIO (4K)"},
                        {"long", "Una cámara de documentos con un nombre que no cabe entero en una línea"}};
        prefs.mode = RecordMode::screenCam;
        prefs.presenterName = QStringLiteral("Laura Méndez");
        prefs.presenterRole = QStringLiteral("Cálculo II");
        for (const char* card : kCards) {
            store.setBoolean(QString::fromLatin1(card), false);
        }
    }

    void showAll() {
        controller->openSetup();
        test::settle();
        basic();
        closedCards();
        for (const char* card : kCards) {
            oneCard(QString::fromLatin1(card));
        }
        allCards();
        material();
        otherModes();
        longTexts();
        focus();
        profilesMenu();
        controller->closeSetup();
    }

private:
    void TestBody() override {}

    std::unique_ptr<SetupPanel> make() {
        auto panel = std::make_unique<SetupPanel>(
            SetupContext{*controller, prefs, speaking_, screens, microphone_, profiles_, timers, [] {}},
            std::vector<SetupSection>{{{QStringLiteral("Material de la clase"), QStringLiteral("books.vertical"),
                                        QStringLiteral("panel.material"), false},
                                       [this] { return new KitSetupSection(kit_); }}});
        panel->show();
        microphone_.say(0.67);
        return panel;
    }
    void save(const QString& name, const SetupPanel& panel) {
        easel_.save(QStringLiteral("setup-") + name, [&panel] { return panel.card().translated(panel.pos()); });
    }
    void more(bool shown) { store.setBoolean(QStringLiteral("panel.mas"), shown); }

    void basic() {
        prefs.showName = true;
        const auto panel = make();
        save(QStringLiteral("basic"), *panel);
        prefs.showName = false;
        prefs.showPhone = true;
        save(QStringLiteral("basic-phone"), *panel);
        prefs.showPhone = false;
    }

    void closedCards() {
        more(true);
        save(QStringLiteral("more-closed"), *make());
    }

    void oneCard(const QString& key) {
        store.setBoolean(key, true);
        const auto panel = make();
        Easel::wait(50);
        auto* bar = panel->findChild<QScrollArea*>()->verticalScrollBar();
        bar->setValue(bar->maximum());
        save(QString(key).replace(u'.', u'-'), *panel);
        store.setBoolean(key, false);
    }

    /// Whole only on a screen that is tall enough for it.
    void allCards() {
        prefs.bubbleShape = BubbleShape::rounded;
        prefs.presenterStyle = PresenterStyle::sideRight;
        prefs.ringCustomHex = QStringLiteral("#7FE8B8");
        for (const char* card : kCards) {
            store.setBoolean(QString::fromLatin1(card), true);
        }
        const auto panel = make();
        save(QStringLiteral("all"), *panel);
        for (const char* card : kCards) {
            store.setBoolean(QString::fromLatin1(card), false);
        }
    }

    void material() {
        store.setBoolean(QStringLiteral("panel.material"), true);
        for (const char* file : {"/c/Derivadas parciales.odp", "/c/Curvas de nivel.pdf", "/c/Superficie en 3D.mp4"}) {
            kit_.add({std::filesystem::path(file)});
        }
        const auto panel = make();
        auto* section = panel->findChild<KitSetupSection*>();
        for (TextField* field : section->findChildren<TextField*>()) {
            if (field->placeholderText().startsWith(QStringLiteral("Pega"))) {
                field->setText(QStringLiteral("geogebra punto org"));
            }
        }
        section->addLink();
        auto* bar = panel->findChild<QScrollArea*>()->verticalScrollBar();
        Easel::wait(50);
        bar->setValue(bar->maximum());
        save(QStringLiteral("material-bad-link"), *panel);
        store.setBoolean(QStringLiteral("panel.material"), false);
    }

    void otherModes() {
        const auto panel = make();
        prefs.mode = RecordMode::cam;
        save(QStringLiteral("mode-camera"), *panel);
        prefs.mode = RecordMode::screen;
        prefs.micID = QStringLiteral("none");
        save(QStringLiteral("mode-screen-no-microphone"), *panel);
        prefs.micID = QString();
        prefs.mode = RecordMode::screenCam;
    }

    void longTexts() {
        store.setBoolean(QStringLiteral("panel.guion"), true);
        store.setBoolean(QStringLiteral("panel.fuentes"), true);
        prefs.cameraID = QStringLiteral("long");
        prefs.micID = QStringLiteral("usb");
        prefs.secondCameraID = QStringLiteral("long");
        prefs.showName = true;
        prefs.presenterName = QStringLiteral("María de los Ángeles Fernández-Villavicencio y Gutiérrez");
        prefs.presenterRole = QStringLiteral("Departamento de Matemáticas Aplicadas y Computación");
        prefs.scriptText =
            QStringLiteral("Hoy vamos a ver qué es una derivada direccional y para qué sirve.\n").repeated(12);
        prefs.shortcutModifier = ShortcutModifier::controlAlt;
        const auto panel = make();
        save(QStringLiteral("long-texts"), *panel);
        auto* bar = panel->findChild<QScrollArea*>()->verticalScrollBar();
        bar->setValue(bar->maximum());
        save(QStringLiteral("long-texts-end"), *panel);
        prefs.shortcutModifier = ShortcutModifier::control;
        prefs.showName = false;
        store.setBoolean(QStringLiteral("panel.guion"), false);
        store.setBoolean(QStringLiteral("panel.fuentes"), false);
    }

    /// The mark of the focus on each kind of control.
    void focus() {
        more(true);
        store.setBoolean(QStringLiteral("panel.burbuja"), true);
        const auto panel = make();
        Easel::wait(300);
        for (int i = 0; i < 24; ++i) {
            QWidget* now = QApplication::focusWidget();
            if (now != nullptr && (i == 3 || i == 4 || i == 12 || i == 13 || i == 15 || i == 17)) {
                save(QStringLiteral("focus-%1").arg(i), *panel);
            }
            QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
            QApplication::sendEvent(now != nullptr ? now : panel.get(), &tab);
        }
        if (auto* well = panel->findChild<ColorWell*>()) {
            panel->findChild<QScrollArea*>()->ensureWidgetVisible(well);
            well->click();
            save(QStringLiteral("color-chooser"), *panel);
            QApplication::activePopupWidget()->close();
        }
        store.setBoolean(QStringLiteral("panel.burbuja"), false);
        more(false);
    }

    void profilesMenu() {
        const auto panel = make();
        const auto open = [&panel] { panel->findChild<ProfilesMenu*>()->findChild<QAbstractButton*>()->click(); };
        open();
        save(QStringLiteral("profiles-none"), *panel);
        QApplication::activePopupWidget()->close();
        for (const char* name : {"Clase en vivo", "Curso en video", "Nota rápida"}) {
            profiles_.save(QString::fromUtf8(name));
        }
        profiles_.apply(QStringLiteral("Curso en video"));
        open();
        save(QStringLiteral("profiles"), *panel);
        QWidget* const menu = QApplication::activePopupWidget();
        menu->close(); // it is deleted later
        for (QAction* action : menu->actions()) {
            if (action->text().startsWith(QStringLiteral("Guardar"))) {
                action->trigger();
            }
        }
        Easel::wait(50);
        auto* dialog = panel->findChild<NameDialog*>();
        easel_.save(QStringLiteral("setup-save-profile"),
                    [dialog] { return dialog->card().translated(dialog->pos()); });
        dialog->close();
    }

    const Easel& easel_;
    TwoMicrophones inputs_;
    Devices speaking_{&cameras, &inputs_};
    test::FakeMicrophoneLevel microphone_;
    SettingsProfiles profiles_{store, [this] { prefs.reload(); }};
    test::KitWorld around_;
    ClassKit kit_;
};

} // namespace

void SetupStates::showAll(const Easel& easel) {
    States(easel).showAll();
}

} // namespace velmo
