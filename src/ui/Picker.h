#pragma once

#include "ui/Fade.h"

#include <QAbstractButton>
#include <QString>

#include <vector>

namespace velmo {

/// One of several choices, shown in a field that opens a menu. Main thread.
class Picker final : public QAbstractButton {
    Q_OBJECT
public:
    struct Choice {
        QString id;
        QString title;
        friend bool operator==(const Choice&, const Choice&) = default;
    };

    /// `symbol` may be empty; `name` is what assistive technology calls the picker.
    Picker(QString symbol, const QString& name, QWidget* parent = nullptr);

    /// `current` that is none of them shows the first. Costs nothing when nothing is other than before.
    void setChoices(std::vector<Choice> choices, const QString& current);
    const std::vector<Choice>& choices() const { return choices_; }
    QString current() const;

    QSize sizeHint() const override;

signals:
    /// The menu is about to open: the choices can still be brought up to date.
    void opening();
    /// Chosen by the user, maybe again: what is shown need not have been a choice.
    void picked(const QString& id);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void openMenu();
    void step(std::size_t index);
    void choose(QString id);

    const QString symbol_;
    std::vector<Choice> choices_;
    std::size_t current_ = 0;
};

} // namespace velmo
