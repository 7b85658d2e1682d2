#include "app/ShortcutsDialog.h"

#include "app/Shortcuts.h"
#include "app/ShortcutsTable.h"
#include "ui/Button.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace velmo {
namespace {

constexpr int kWidth = 580;
constexpr int kLeastButton = 96;
constexpr int kRoomyScreen = 800;  ///< high enough for rows of full height
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

ShortcutsDialog::ShortcutsDialog(QWidget* parent) : DialogWindow(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Shortcuts::message());
    setAccessibleName(Shortcuts::message());
    setAccessibleDescription(Shortcuts::informativeText());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 22, 14, 16);
    column->setSpacing(6);
    column->addWidget(label(Shortcuts::message(), TextStyle::title, Theme::sand));
    column->addWidget(label(Shortcuts::introduction(), TextStyle::body, Theme::muted));
    column->addSpacing(6);
    auto* table = new ShortcutsTable;
    if (screen()->availableGeometry().height() >= kRoomyScreen) {
        table->setMinimumHeight(table->sizeHint().height());
    }
    column->addWidget(table, 1);
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
    const QMargins around = contentsMargins();
    setFixedWidth(kWidth + around.left() + around.right());
}

} // namespace velmo
