#pragma once

#include "ui/DialogWindow.h"

namespace velmo {

/// Who made the program: icon, name, version, and the credits with a link to the maker's address. Goes by itself when
/// closed; never blocks. Main thread.
class AboutPanel final : public DialogWindow {
    Q_OBJECT

public:
    explicit AboutPanel(QWidget* parent = nullptr);

    /// `Credit::text`, a line break, and the text of `Credit::site` as a link to it.
    static QString credits();

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
