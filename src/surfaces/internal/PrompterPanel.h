#pragma once

#include "ui/FloatingPanel.h"

namespace velmo {

class PrompterControls;
class PrompterView;
class Teleprompter;

/// The strip that the script is read from: text, the mark of the line to be read, controls. Main thread.
class PrompterPanel final : public FloatingPanel {
    Q_OBJECT

public:
    /// `prompter` is borrowed and must outlive the panel.
    explicit PrompterPanel(Teleprompter& prompter);

    PrompterView& text() const { return *text_; }
    PrompterControls& controls() const { return *controls_; }
    /// Height of the card with four lines of a size in points.
    static int heightFor(double fontSize);
    void setFontSize(double fontSize);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PrompterView* text_;
    PrompterControls* controls_;
    double fontSize_ = 28;
};

} // namespace velmo
