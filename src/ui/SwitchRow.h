#pragma once

#include <QWidget>

class QLabel;

namespace velmo {

class Switch;

/// A switch with what names it and, below, a hint that may be empty. A click on the words switches too.
class SwitchRow final : public QWidget {
    Q_OBJECT
public:
    SwitchRow(const QString& text, const QString& hint, QWidget* parent = nullptr);

    /// Only for a row that was made with a hint.
    void setHint(const QString& hint);
    void setOn(bool on);
    bool isOn() const;

signals:
    /// By the user.
    void switched(bool on);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    Switch* switch_;
    QLabel* hint_ = nullptr;
};

} // namespace velmo
