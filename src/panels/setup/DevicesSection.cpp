#include "panels/setup/DevicesSection.h"

#include "panels/setup/DevicePicker.h"
#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"
#include "session/MicrophoneLevel.h"
#include "session/RecorderController.h"
#include "ui/Label.h"
#include "ui/LevelMeter.h"
#include "ui/Theme.h"

#include <QVBoxLayout>

#include <optional>

namespace velmo {

namespace {

constexpr int kBetweenPickers = 8;

template <typename Device>
QString idOf(const std::optional<Device>& device) {
    return device ? QString::fromStdString(device->uniqueID) : QString();
}

} // namespace

DevicesSection::DevicesSection(SetupContext& context, QWidget* parent)
    : QWidget(parent), context_(context), camera_(new Picker(QStringLiteral("video.fill"), QStringLiteral("Cámara"))),
      microphone_(new Picker(QStringLiteral("mic.fill"), QStringLiteral("Micrófono"))), meter_(new LevelMeter),
      meterRow_(makeMeter()), eachSecond_(*this, context.timers, [this] { look(); }) {
    Prefs& prefs = context.prefs;
    auto* column = Rows::column(*this);
    auto* pickers = new QVBoxLayout;
    pickers->setContentsMargins(Rows::kRoom, 0, Rows::kRoom, 0);
    pickers->setSpacing(kBetweenPickers);
    pickers->addWidget(camera_);
    pickers->addWidget(microphone_);
    column->addLayout(pickers);
    Rows::add(*column, meterRow_);
    const auto writes = [this](Picker* picker, Setting<QString>& setting) {
        connect(picker, &Picker::opening, this, &DevicesSection::look);
        connect(picker, &Picker::picked, this, [this, &setting](const QString& id) {
            setting = id;
            context_.recorder.previewChanged();
        });
    };
    writes(camera_, prefs.cameraID);
    writes(microphone_, prefs.micID);
    Rows::follow(*this, prefs, {&prefs.mode, &prefs.cameraID, &prefs.micID, &prefs.secondCameraID},
                 [this] { refresh(); });
}

QWidget* DevicesSection::makeMeter() {
    auto* row = new QWidget;
    auto* column = new QVBoxLayout(row);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(meter_);
    column->addWidget(
        makeWrappedLabel(QStringLiteral("Habla: si se mueve, te escucha"), TextStyle::caption, Theme::muted));
    connect(&context_.microphone, &MicrophoneLevel::levelChanged, meter_,
            [this] { meter_->setLevel(context_.microphone.level()); });
    return row;
}

void DevicesSection::refresh() {
    const Prefs& prefs = context_.prefs;
    const auto camera = context_.devices.camera(prefs.cameraID.value());
    // A camera can always be had where there is one: no word for none then.
    DevicePicker::show(*camera_, context_.devices.cameras(), camera, camera ? QString() : QStringLiteral("Sin cámara"));
    camera_->setVisible(usesCamera(prefs.mode));
    const auto microphone = context_.devices.microphone(prefs.micID.value());
    DevicePicker::show(*microphone_, context_.devices.microphones(), microphone, QStringLiteral("Sin micrófono"));
    meterRow_->setVisible(microphone.has_value());
    meant_ = {idOf(camera), idOf(microphone), idOf(context_.devices.camera(prefs.secondCameraID.value()))};
}

/// Who writes a setting tells the previews; what is plugged in has only this section to tell of it.
void DevicesSection::look() {
    const Meant before = meant_;
    refresh();
    if (meant_ != before) {
        context_.recorder.previewChanged();
    }
}

void DevicesSection::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

} // namespace velmo
