#pragma once

#include "settings/ShortcutModifier.h"

#include <QWidget>

#include <vector>

class QLabel;
class QVBoxLayout;

namespace velmo {

class Button;
class ClassKit;
class KitSetupRow;
class SwitchRow;
class TextField;

/// Where the material of a class is gathered, in the panel that prepares a recording. Takes files and addresses that
/// are dropped on it. Everything is written to the kit at once. Main thread.
///
/// Button::kRoom at its left and right is room for marks of the focus; what is seen begins behind it.
class KitSetupSection final : public QWidget {
    Q_OBJECT
public:
    /// Borrowed.
    explicit KitSetupSection(ClassKit& kit, QWidget* parent = nullptr);
    ~KitSetupSection() override;

    /// Adds what stands in the field for links. What is no link stays there for correction.
    void addLink();

    /// Of the key that the hint tells.
    void setShortcutModifier(ShortcutModifier modifier);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void addRows(QVBoxLayout& column);
    void addLinkField(QVBoxLayout& column);
    void addButtons(QVBoxLayout& column);
    void refresh();
    void refreshRows();

    ClassKit& kit_;
    QLabel* hint_ = nullptr;
    QVBoxLayout* rowColumn_ = nullptr;
    std::vector<KitSetupRow*> rows_; // one for each item
    TextField* link_ = nullptr;
    QLabel* badLink_ = nullptr;
    Button* empty_ = nullptr;
    SwitchRow* copyFiles_ = nullptr;
};

} // namespace velmo
