#include "panels/setup/ResolutionRow.h"

#include "panels/setup/Rows.h"
#include "panels/setup/TargetScreen.h"
#include "platform/PlatformWords.h"
#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/Picker.h"
#include "ui/SymbolLabel.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr double kUhdWidth = 3840;

struct Title {
    VideoQuality quality;
    const char* text;
};

constexpr Title kTitles[] = {
    {VideoQuality::fullHD, "Normal"},
    {VideoQuality::retina, "Alta"},
    {VideoQuality::uhd4k, "4K"},
};

QString hint(VideoQuality quality, const std::optional<Screen>& screen) {
    switch (quality) {
    case VideoQuality::fullHD:
        return QStringLiteral("fluida y con archivos livianos");
    case VideoQuality::retina:
        return QStringLiteral("como se ve tu pantalla; nítida incluso con zoom");
    case VideoQuality::uhd4k:
        break;
    }
    const bool isEnlarged = screen && screen->frame.width * screen->backingScaleFactor < kUhdWidth;
    return isEnlarged ? QStringLiteral("ampliado a 4K: más calidad en YouTube, archivos grandes")
                      : QStringLiteral("máxima calidad (archivos grandes)");
}

} // namespace

ResolutionRow::ResolutionRow(Prefs& prefs, const Screens& screens, MainTimers& timers, QWidget* parent)
    : QWidget(parent), prefs_(prefs), screens_(screens), picker_(new Picker({}, QStringLiteral("Calidad"))),
      caption_(makeWrappedLabel({}, TextStyle::caption, Theme::muted)), note_(makeNote()),
      eachSecond_(*this, timers, [this] { refresh(); }) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Rows::kLabelGap);
    column->addWidget(makeLabel(QStringLiteral("Calidad"), TextStyle::chip, Theme::muted));
    column->addWidget(picker_);
    column->addWidget(caption_);
    column->addWidget(note_);
    std::vector<Picker::Choice> choices;
    for (const Title& title : kTitles) {
        choices.push_back({rawValue(title.quality), QString::fromUtf8(title.text)});
    }
    picker_->setChoices(std::move(choices), rawValue(prefs_.videoQuality.value()));
    connect(picker_, &Picker::picked, this, [this](const QString& id) {
        prefs_.videoQuality = fromRawValue<VideoQuality>(id).value_or(VideoQuality::retina);
    });
    Rows::follow(*this, prefs_, {&prefs_.videoQuality, &prefs_.fps60, &prefs_.displayID}, [this] { refresh(); });
}

bool ResolutionRow::isIntel() {
    return false; // no machine that this program runs on is slower for its kind
}

QWidget* ResolutionRow::makeNote() {
    auto* note = new QWidget;
    auto* row = new QHBoxLayout(note);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(new SymbolLabel(QStringLiteral("bolt.fill"), 14, Theme::gold), 0, Qt::AlignTop);
    row->addWidget(
        makeWrappedLabel(QString::fromUtf8(PlatformWords::kNormalIsFluid.here), TextStyle::caption, Theme::muted), 1);
    auto* use = new Button(ButtonStyle::ghost, QStringLiteral("Usar"));
    connect(use, &Button::clicked, this, [this] {
        prefs_.videoQuality = VideoQuality::fullHD;
        prefs_.fps60 = false;
    });
    row->addWidget(use);
    return note;
}

void ResolutionRow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh(); // the screen may have another size since
}

QString ResolutionRow::caption(VideoQuality quality, const std::optional<Screen>& screen) {
    if (!screen) {
        return hint(quality, screen);
    }
    const VideoSize pixels = velmo::size(quality, screen->frame.size(), screen->backingScaleFactor);
    return QStringLiteral("%1 × %2 px · %3").arg(pixels.width).arg(pixels.height).arg(hint(quality, screen));
}

void ResolutionRow::refresh() {
    picker_->setChoices(picker_->choices(), rawValue(prefs_.videoQuality.value()));
    caption_->setText(caption(prefs_.videoQuality.value(), TargetScreen::of(prefs_, screens_)));
    note_->setVisible(isIntel() && (prefs_.videoQuality.value() != VideoQuality::fullHD || prefs_.fps60));
}

} // namespace velmo
