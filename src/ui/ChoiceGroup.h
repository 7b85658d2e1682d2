#pragma once

#include <QString>
#include <QWidget>

#include <vector>

class QAbstractButton;

namespace velmo {

/// One of several choices, each with a button of its own; none where what is current is not among them. The arrow
/// keys go from one to the next, Tab passes the group. Main thread.
class ChoiceGroup : public QWidget {
    Q_OBJECT
public:
    /// `name` is what assistive technology calls the group. The layout is the caller's.
    explicit ChoiceGroup(const QString& name, QWidget* parent = nullptr);

    /// The group owns the button; the caller puts it into the layout.
    void add(const QString& id, QAbstractButton* button);
    void setCurrent(const QString& id);
    /// Empty for none.
    QString current() const;
    const std::vector<QAbstractButton*>& buttons() const { return buttons_; }

signals:
    /// By the user; another one than before.
    void picked(const QString& id);

private:
    void choose(const QString& id);
    void guideTab();

    std::vector<QAbstractButton*> buttons_;
    std::vector<QString> ids_; // one for each button
    QString current_;
};

} // namespace velmo
