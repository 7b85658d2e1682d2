#pragma once

#include <QListView>
#include <QTimer>

namespace velmo {

class RecordingModel;
class RecordingCard;

/// The cards of the library in as many columns as fit. Main thread. Enter and a double click play, F2 renames, Delete
/// throws away; the signals carry the row.
class RecordingGrid final : public QListView {
    Q_OBJECT

public:
    /// `model` is borrowed and must outlive this object.
    explicit RecordingGrid(RecordingModel& model, QWidget* parent = nullptr);

    /// Makes it the current row and brings it into view.
    void select(int row);

signals:
    void playRequested(int row);
    void renameRequested(int row);
    void trashRequested(int row);
    void menuRequested(int row, QPoint globalPosition);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void layCards();

    RecordingCard* card_; // Qt's child
    QTimer dates_;        ///< while visible: "hace 2 minutos" goes on
};

} // namespace velmo
