#include "panels/ResolutionRow.h"

#include "panels/SetupCard.h"
#include "ui/Label.h"
#include "ui/Picker.h"
#include "ui/Theme.h"

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

ResolutionRow::ResolutionRow(Prefs& prefs, QWidget* parent)
    : QWidget(parent), prefs_(prefs), picker_(new Picker({}, QStringLiteral("Calidad"))),
      caption_(makeWrappedLabel({}, TextStyle::caption, Theme::muted)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, SetupCard::kSwitchRoom, 0);
    column->setSpacing(6);
    column->addWidget(makeLabel(QStringLiteral("Calidad"), TextStyle::chip, Theme::muted));
    column->addWidget(picker_);
    column->addWidget(caption_);
    std::vector<Picker::Choice> choices;
    for (const Title& title : kTitles) {
        choices.push_back({rawValue(title.quality), QString::fromUtf8(title.text)});
    }
    picker_->setChoices(std::move(choices), rawValue(prefs_.videoQuality.value()));
    connect(picker_, &Picker::picked, this, [this](const QString& id) {
        prefs_.videoQuality = fromRawValue<VideoQuality>(id).value_or(VideoQuality::retina);
    });
    connect(&prefs_, &Prefs::changed, this, [this](const QString& key) {
        if (key == prefs_.videoQuality.key()) {
            refresh();
        }
    });
    refresh();
}

void ResolutionRow::setScreen(const std::optional<Screen>& screen) {
    screen_ = screen;
    refresh();
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
    caption_->setText(caption(prefs_.videoQuality.value(), screen_));
}

} // namespace velmo
