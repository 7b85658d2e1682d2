#pragma once

#include "ui/FloatingPanel.h"

namespace velmo {

class Prefs;
class PrompterView;
class Teleprompter;

/// The strip that the script is read from: text, the mark of the line to be read, controls. Main thread.
class PrompterPanel final : public FloatingPanel {
    Q_OBJECT

public:
    /// Borrowed; they must outlive the panel.
    PrompterPanel(Teleprompter& prompter, const Prefs& prefs);

    PrompterView& text() const { return *text_; }
    /// Height of the card with four lines of a size in points.
    static int heightFor(double fontSize);
    void setFontSize(double fontSize);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PrompterView* text_;
    double fontSize_ = 28;
};

} // namespace velmo
