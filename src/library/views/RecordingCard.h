#pragma once

#include "base/Ref.h"
#include "media/PixelBuffer.h"

#include <QPixmap>
#include <QStyledItemDelegate>

#include <filesystem>
#include <map>

namespace velmo {

class RecordingModel;

/// Paints a recording as a card: picture with its duration, title, date and number of markers. Main thread.
class RecordingCard final : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int kLeastWidth = 240;
    static constexpr int kGapAcross = 20;
    static constexpr int kGapDown = 24;

    explicit RecordingCard(const RecordingModel& model, QObject* parent = nullptr);

    /// The size of a cell that is `width` wide: a card and half a gap around it.
    static QSize cellFor(int width);
    /// All cells are this wide from now on.
    void setCellWidth(int width) { cell_ = cellFor(width); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    struct Picture {
        FrameRef source; ///< kept, so that its address tells whether the picture is still the same
        QPixmap scaled;
    };

    void paintPicture(QPainter& painter, const QRectF& picture, int row) const;
    void paintBadge(QPainter& painter, const QRectF& picture, int row) const;
    void paintText(QPainter& painter, const QRectF& text, int row) const;
    const QPixmap& scaledPicture(const std::filesystem::path& url, const FrameRef& frame, QSizeF size,
                                 double ratio) const;

    const RecordingModel& model_;
    QSize cell_ = cellFor(kLeastWidth + kGapAcross);
    mutable std::map<std::filesystem::path, Picture> pictures_;
};

} // namespace velmo
