#include "panels/setup/ProfilesMenu.h"

#include "settings/SettingsProfiles.h"
#include "ui/FocusRing.h"
#include "ui/NameDialog.h"
#include "ui/Painting.h"
#include "ui/PopupMenu.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QAbstractButton>
#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QPainter>

#include <cmath>

namespace velmo {

namespace {

constexpr int kMostTitle = 260; // points
constexpr int kMostName = 80;
constexpr int kHeight = 42;
constexpr int kPadding = 12;
constexpr int kIcon = 16;
constexpr int kGap = 8;
constexpr double kRadius = 9;
constexpr int kInset = 4; ///< above and below the shape

QString titleFor(const QMenu& menu, const QString& name) {
    // An ampersand would underline what follows it.
    return menu.fontMetrics().elidedText(QString(name).replace(u'&', QStringLiteral("&&")), Qt::ElideRight,
                                         Type::scaled(kMostTitle));
}

} // namespace

/// A word behind a gold bookmark, which stays lit while its menu stands.
class ProfilesMenu::Opener final : public QAbstractButton {
public:
    Opener() {
        setText(QStringLiteral("Perfiles"));
        setFont(Type::font(TextStyle::label));
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        new FocusRing(*this, kRadius, QMargins(0, kInset, 0, kInset));
    }

    void setSymbol(const QString& symbol) {
        symbol_ = symbol;
        update();
    }
    void setOpen(bool open) {
        open_ = open;
        update();
    }
    QSize sizeHint() const override {
        const double text = QFontMetricsF(font()).horizontalAdvance(this->text());
        return {static_cast<int>(std::ceil(text)) + kIcon + kGap + 2 * kPadding, Type::heightFor(kHeight)};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        if (open_ || underMouse()) {
            Painting::roundedBox(painter, QRectF(rect()).adjusted(0, kInset, 0, -kInset), kRadius, Theme::surface2,
                                 Qt::transparent);
        }
        Symbol::paint(painter, QRectF(kPadding, 0, kIcon, height()), symbol_, kIcon, Theme::gold);
        painter.setFont(font());
        painter.setPen(Theme::sand);
        const double baseline = std::round(height() / 2.0 + QFontMetricsF(font()).capHeight() / 2);
        painter.drawText(QPointF(kPadding + kIcon + kGap, baseline), text());
    }

private:
    QString symbol_;
    bool open_ = false;
};

ProfilesMenu::ProfilesMenu(SettingsProfiles& profiles, QWidget* parent)
    : QWidget(parent), profiles_(profiles), opener_(new Opener) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(opener_);
    opener_->setToolTip(QStringLiteral("Guarda tu configuración con un nombre (por ejemplo, «Curso en video») y "
                                       "aplícala con un clic"));
    opener_->setAccessibleDescription(opener_->toolTip());
    connect(opener_, &QAbstractButton::clicked, this, &ProfilesMenu::open);
    connect(&profiles_, &SettingsProfiles::changed, this, &ProfilesMenu::refresh);
    refresh();
}

void ProfilesMenu::refresh() {
    opener_->setSymbol(profiles_.current() ? QStringLiteral("bookmark.fill") : QStringLiteral("bookmark"));
}

PopupMenu* ProfilesMenu::makeMenu() {
    auto* menu = new PopupMenu(this);
    if (profiles_.names().isEmpty()) {
        menu->addAction(QStringLiteral("Aún no tienes perfiles guardados"))->setEnabled(false);
    }
    for (const QString& name : profiles_.names()) {
        QAction* entry = menu->addAction(titleFor(*menu, name), this, [this, name] { profiles_.apply(name); });
        entry->setCheckable(true);
        entry->setChecked(profiles_.current() == name);
        entry->setToolTip(name);
    }
    menu->addSeparator();
    menu->addAction(QStringLiteral("Guardar configuración actual…"), this, &ProfilesMenu::askForName);
    if (!profiles_.names().isEmpty()) {
        auto* remove = new PopupMenu(menu);
        remove->setTitle(QStringLiteral("Eliminar"));
        for (const QString& name : profiles_.names()) {
            remove->addAction(titleFor(*remove, name), this, [this, name] { profiles_.remove(name); });
        }
        menu->addMenu(remove);
    }
    return menu;
}

void ProfilesMenu::open() {
    PopupMenu* menu = makeMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    opener_->setOpen(true);
    connect(menu, &QMenu::aboutToHide, opener_, [this] { opener_->setOpen(false); });
    menu->popup(opener_->mapToGlobal(QPoint(0, opener_->height())));
}

void ProfilesMenu::askForName() {
    if (question_ && question_->isVisible()) {
        question_->bringToFront();
        return;
    }
    question_ = new NameDialog(
        {.title = QStringLiteral("Guardar configuración"),
         .explanation = QStringLiteral("Guarda todo el panel: modo, cámaras, burbuja, video, zoom y cámara completa."),
         .placeholder = QStringLiteral("Nombre (por ejemplo, Curso en video)"),
         .mostText = kMostName},
        window());
    connect(question_, &NameDialog::saved, this, [this](const QString& name) { profiles_.save(name); });
    question_->present();
}

} // namespace velmo
