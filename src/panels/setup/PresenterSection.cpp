#include "panels/setup/PresenterSection.h"

#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"
#include "platform/PlatformWords.h"
#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace velmo {

namespace {

/// The two side styles are one choice here; which side is asked below.
const QString kSide = QStringLiteral("side");

QString styleID(PresenterStyle style) {
    return isSide(style) ? kSide : rawValue(style);
}

Segments* makeStyles(Prefs& prefs) {
    auto* styles = new Segments(QStringLiteral("Cámara completa"),
                                {{rawValue(PresenterStyle::framed), QStringLiteral("Enmarcada")},
                                 {kSide, QStringLiteral("Al lado")},
                                 {rawValue(PresenterStyle::full), QStringLiteral("Completa")}});
    QObject::connect(styles, &ChoiceGroup::picked, styles, [&prefs](const QString& id) {
        prefs.presenterStyle = fromRawValue<PresenterStyle>(id).value_or(PresenterStyle::sideRight);
    });
    Rows::follow(*styles, prefs, {&prefs.presenterStyle},
                 [styles, &prefs] { styles->setCurrent(styleID(prefs.presenterStyle)); });
    return styles;
}

QWidget* makeSides(Prefs& prefs) {
    auto* sides = new Segments(QStringLiteral("Lado de la cámara"),
                               {{rawValue(PresenterStyle::sideLeft), QStringLiteral("Izquierda")},
                                {rawValue(PresenterStyle::sideRight), QStringLiteral("Derecha")}});
    Rows::bind(*sides, prefs, prefs.presenterStyle);
    auto* row = new QWidget;
    auto* box = new QHBoxLayout(row);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(sides);
    box->addStretch();
    return row;
}

QWidget* makeTemplates(const std::function<void()>& showTemplates) {
    auto* row = new QWidget;
    auto* box = new QHBoxLayout(row);
    box->setContentsMargins(Button::kRoom, 0, 0, 0);
    box->setSpacing(8);
    box->addWidget(makeWrappedLabel(QStringLiteral("Usa diapositivas que dejen libre ese lado."), TextStyle::caption,
                                    Theme::muted),
                   1);
    auto* templates = new Button(ButtonStyle::ghost, QStringLiteral("Plantillas…"));
    templates->setToolTip(QString::fromUtf8(PlatformWords::kTemplates.here));
    templates->setAccessibleDescription(templates->toolTip());
    templates->setEnabled(bool(showTemplates));
    QObject::connect(
        templates, &Button::clicked, templates, showTemplates ? showTemplates : [] {});
    box->addWidget(templates);
    return row;
}

} // namespace

PresenterSection::PresenterSection(SetupContext& context, QWidget* parent) : QWidget(parent) {
    Prefs& prefs = context.prefs;
    auto* column = Rows::column(*this);
    Rows::add(*column, makeStyles(prefs));
    Rows::addHint(*column, QStringLiteral("Enmarcada: tú en grande sobre tu pantalla difuminada. Al lado: tú a un lado "
                                          "y tus diapositivas al otro. Completa: solo tú."));
    QWidget* sides = makeSides(prefs);
    Rows::add(*column, sides);
    QWidget* templates = makeTemplates(context.showTemplates);
    Rows::add(*column, templates, Button::kRoom);
    Rows::follow(*this, prefs, {&prefs.presenterStyle}, [&prefs, sides, templates] {
        sides->setVisible(isSide(prefs.presenterStyle));
        templates->setVisible(isSide(prefs.presenterStyle));
    });
}

} // namespace velmo
