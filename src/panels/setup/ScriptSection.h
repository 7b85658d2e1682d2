#pragma once

#include <QTimer>
#include <QWidget>

namespace velmo {

class TextArea;
struct SetupContext;

/// The script of the class and whether it is shown while recording. Main thread.
class ScriptSection final : public QWidget {
    Q_OBJECT
public:
    /// Up to this many characters each change is written at once; beyond, when the typing pauses or the field is left.
    static constexpr qsizetype kShort = 32'000;

    explicit ScriptSection(SetupContext& context, QWidget* parent = nullptr);
    ~ScriptSection() override;

private:
    void edited();
    void write();

    SetupContext& context_;
    TextArea* text_;
    QTimer pause_;
};

} // namespace velmo
