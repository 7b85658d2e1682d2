#pragma once

#include "surfaces/internal/RegionView.h"
#include "ui/FloatingPanel.h"

namespace velmo {

/// The window of the region picker: in front of everything, with mouse and keyboard. Main thread.
///
/// It takes the keyboard itself instead of being a managed window: a managed one would stand behind the program's own
/// bars. Taken away, the keyboard comes back once by itself, and with every press on the picker. Without a compositing
/// manager only the line and the words are seen, and the mouse is grabbed.
class PickerPanel final : public FloatingPanel {
    Q_OBJECT
public:
    /// `place` in Qt's coordinates of the desktop.
    PickerPanel(const QRect& place, QString prompt, std::optional<Rect> selection);

    RegionView& view() { return view_; }
    void open();
    void close();

protected:
    QPainterPath outline() const override { return view_.outline(); }
    bool event(QEvent* event) override;

private:
    void keepKeyboard();

    RegionView view_;
    bool mayTakeBack_ = true; ///< but not for ever: somebody else may insist, too
};

} // namespace velmo
