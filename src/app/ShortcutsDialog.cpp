#include "app/ShortcutsDialog.h"

#include "app/ShortcutsTable.h"
#include "ui/Button.h"
#include "ui/FittingScrollArea.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace velmo {
namespace {

constexpr int kWidth = 580;
constexpr int kLeastButton = 96;
constexpr int kRoomyScreen = 800; ///< high enough for rows of full height
constexpr int kLeastTable = 120;
constexpr int kTableOverhang = 12; ///< the stripes begin left of the text

QLabel* label(const QString& text, TextStyle style, const QColor& color) {
    auto* made = new QLabel(text);
    made->setFont(Type::font(style));
    made->setWordWrap(true);
    QPalette colors = made->palette();
    colors.setColor(QPalette::WindowText, color);
    made->setPalette(colors);
    made->setContentsMargins(kTableOverhang, 0, kTableOverhang, 0);
    return made;
}

} // namespace

ShortcutsDialog::ShortcutsDialog(const Shortcuts::State& state, QWidget* parent)
    : DialogWindow(parent), introduction_(label({}, TextStyle::body, Theme::muted)), table_(new ShortcutsTable) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Shortcuts::message());
    setAccessibleName(Shortcuts::message());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 22, 14, 16);
    column->setSpacing(6);
    column->addWidget(label(Shortcuts::message(), TextStyle::title, Theme::sand));
    column->addWidget(introduction_);
    column->addSpacing(6);
    auto* rows = new QWidget;
    auto* rowsColumn = new QVBoxLayout(rows);
    rowsColumn->setContentsMargins(0, 0, 0, 0);
    rowsColumn->addWidget(table_);
    column->addWidget(scroll_ = new FittingScrollArea(rows), 1);
    column->addSpacing(10);
    auto* done = new Button(ButtonStyle::primary, Shortcuts::button());
    done->setMinimumWidth(kLeastButton + 2 * Button::kRoom);
    connect(done, &Button::clicked, this, &QDialog::accept);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(0, 0, kTableOverhang - Button::kRoom, 0);
    foot->addStretch();
    foot->addWidget(done);
    column->addLayout(foot);
    done->setFocus(Qt::OtherFocusReason);
    setState(state);
}

void ShortcutsDialog::setState(const Shortcuts::State& state) {
    setAccessibleDescription(Shortcuts::informativeText(state));
    introduction_->setText(Shortcuts::introduction(state));
    table_->setState(state);
    const QMargins inside = layout()->contentsMargins();
    const int wide = table_->sizeHint().width() + inside.left() + inside.right();
    const QMargins around = contentsMargins();
    setFixedWidth(std::max(Type::scaled(kWidth), wide) + around.left() + around.right());
    fitTable();
}

/// Rows of full height, else of the least, and where even those are too many they scroll.
void ShortcutsDialog::fitTable() {
    const int free = screen()->availableGeometry().height();
    const int rows = free >= kRoomyScreen ? table_->sizeHint().height() : table_->minimumSizeHint().height();
    table_->setMinimumHeight(rows);
    scroll_->setMostHeight(rows);
    // With the room for the shadow: window managers push back a window whose edge is off the screen.
    const int others = layout()->totalMinimumHeightForWidth(minimumWidth()) - scroll_->minimumSizeHint().height();
    scroll_->setMostHeight(std::clamp(free - others, kLeastTable, rows));
}

} // namespace velmo
