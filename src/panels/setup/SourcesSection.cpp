#include "panels/setup/SourcesSection.h"

#include "panels/setup/DevicePicker.h"
#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"
#include "session/RecorderController.h"

#include <QVBoxLayout>

namespace velmo {

namespace {

QString screenTitle(const Screen& screen, std::size_t index) {
    return QStringLiteral("Pantalla %1 · %2 × %3")
        .arg(index + 1)
        .arg(screen.frame.width * screen.backingScaleFactor)
        .arg(screen.frame.height * screen.backingScaleFactor);
}

} // namespace

SourcesSection::SourcesSection(SetupContext& context, QWidget* parent)
    : QWidget(parent), context_(context), screen_(new Picker(QStringLiteral("display"), QStringLiteral("Pantalla"))),
      secondCamera_(new Picker(QStringLiteral("video.badge.plus"), QStringLiteral("Segunda cámara"))),
      eachSecond_(*this, context.timers, [this] { refresh(); }) {
    Prefs& prefs = context.prefs;
    connect(screen_, &Picker::opening, this, &SourcesSection::refreshScreens);
    connect(screen_, &Picker::picked, this, [&prefs](const QString& id) { prefs.displayID = id.toLongLong(); });
    connect(secondCamera_, &Picker::opening, this, &SourcesSection::refreshCameras);
    connect(secondCamera_, &Picker::picked, this, [&context](const QString& id) {
        context.prefs.secondCameraID = id;
        context.recorder.previewChanged();
    });
    auto* column = Rows::column(*this);
    Rows::addLabelled(*column, QStringLiteral("Pantalla"), screen_);
    Rows::addLabelled(*column, QStringLiteral("Segunda cámara"), secondCamera_,
                      QStringLiteral("Otra cámara en su propia burbuja: por ejemplo, apuntando a tu cuaderno o a una "
                                     "maqueta."));
    Rows::follow(*this, prefs, {&prefs.mode, &prefs.displayID}, [this] { refreshScreens(); });
    Rows::follow(*this, prefs, {&prefs.secondCameraID}, [this] { refreshCameras(); });
}

void SourcesSection::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

void SourcesSection::refresh() {
    refreshScreens();
    refreshCameras();
}

void SourcesSection::refreshScreens() {
    std::vector<Picker::Choice> choices{{QStringLiteral("0"), QStringLiteral("Pantalla principal")}};
    const std::vector<Screen> screens = context_.screens.all();
    for (std::size_t i = 1; i < screens.size(); ++i) {
        choices.push_back({QString::number(screens[i].displayID), screenTitle(screens[i], i)});
    }
    screen_->setChoices(std::move(choices), QString::number(context_.prefs.displayID.value()));
    screen_->setEnabled(usesScreen(context_.prefs.mode));
}

void SourcesSection::refreshCameras() {
    DevicePicker::show(*secondCamera_, context_.devices.cameras(),
                       context_.devices.camera(context_.prefs.secondCameraID.value()), QStringLiteral("Ninguna"));
}

} // namespace velmo
