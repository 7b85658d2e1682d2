#include "library/views/LibraryHead.h"

#include "settings/Format.h"
#include "ui/Button.h"
#include "ui/ChalkBoard.h"
#include "ui/Label.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kChalkRoom = 14;

} // namespace

LibraryHead::LibraryHead(QWidget* parent)
    : QWidget(parent), title_(makeLabel(QStringLiteral("Tus grabaciones"), TextStyle::display, Theme::sand)),
      stats_(makeLabel({}, TextStyle::body, Theme::muted)) {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(title_);
    texts->addSpacing(kChalkRoom);
    texts->addWidget(stats_);

    auto* folder = new Button(ButtonStyle::ghost, QStringLiteral("Carpeta"));
    folder->setSymbol(QStringLiteral("folder"));
    folder->setToolTip(QStringLiteral("Abrir la carpeta de las grabaciones"));
    connect(folder, &Button::clicked, this, &LibraryHead::folderRequested);
    auto* record = new Button(ButtonStyle::primary, QStringLiteral("Nueva grabación"));
    record->setSymbol(QStringLiteral("plus"));
    connect(record, &Button::clicked, this, &LibraryHead::newRecordingRequested);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addLayout(texts);
    row->addStretch();
    row->addWidget(folder, 0, Qt::AlignTop);
    row->addWidget(record, 0, Qt::AlignTop);
    setTabOrder(folder, record);
}

void LibraryHead::setRecordings(const std::vector<Recording>& recordings) {
    stats_->setText(stats(recordings));
}

QString LibraryHead::stats(const std::vector<Recording>& recordings) {
    if (recordings.empty()) {
        return QStringLiteral("Aún no tienes grabaciones");
    }
    double duration = 0;
    std::int64_t size = 0;
    for (const Recording& recording : recordings) {
        duration += recording.duration;
        size += recording.size;
    }
    const QString noun = recordings.size() == 1 ? QStringLiteral("grabación") : QStringLiteral("grabaciones");
    return QStringLiteral("%1 %2 · %3 en total · %4")
        .arg(QString::number(recordings.size()), noun, Format::duration(duration), Format::bytes(size));
}

void LibraryHead::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect title = title_->geometry();
    ChalkBoard::paintStroke(painter, {double(title.left()), title.bottom() + 4.0},
                            QFontMetricsF(title_->font()).horizontalAdvance(title_->text()) + 4);
}

} // namespace velmo
