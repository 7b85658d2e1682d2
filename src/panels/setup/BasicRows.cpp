#include "panels/setup/BasicRows.h"

#include "panels/setup/BasicRow.h"
#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"
#include "session/RecorderController.h"
#include "ui/Label.h"
#include "ui/SymbolLabel.h"
#include "ui/TextField.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace velmo::BasicRows {

namespace {

constexpr int kMostName = 120;

bool isScreenCam(RecordMode mode) {
    return mode == RecordMode::screenCam;
}

QWidget* makeNameField(Prefs& prefs, Setting<QString>& setting, const QString& placeholder) {
    auto* field = new TextField(placeholder);
    field->setMaxLength(kMostName);
    field->setAccessibleName(placeholder);
    field->setToolTip(placeholder);
    QObject::connect(field, &QLineEdit::textEdited, field, [field, &setting] { setting = field->text(); });
    Rows::follow(*field, prefs, {&setting}, [field, &setting] {
        if (field->text() != setting.value()) {
            field->setText(setting.value());
            field->setCursorPosition(0); // a long name is seen from its beginning
        }
    });
    return field;
}

QWidget* makeNameFields(Prefs& prefs) {
    auto* fields = new QWidget;
    auto* row = new QHBoxLayout(fields);
    constexpr int kSide = Rows::kRoom - TextField::kRoom;
    row->setContentsMargins(kSide, 0, kSide, 0);
    row->setSpacing(8 - 2 * TextField::kRoom);
    row->addWidget(makeNameField(prefs, prefs.presenterName, QStringLiteral("Tu nombre")));
    row->addWidget(makeNameField(prefs, prefs.presenterRole, QStringLiteral("Cargo o tema (opcional)")));
    return fields;
}

QWidget* makePhoneNotes() {
    auto* notes = new QWidget;
    auto* column = new QVBoxLayout(notes);
    column->setContentsMargins(Rows::kRoom, 0, Rows::kRoom, 0);
    column->setSpacing(6);
    for (const char* text : {"iPhone: conéctalo con el cable y toca «Confiar» en el iPhone.",
                             "Android: muy pronto, con una app de duplicación de pantalla."}) {
        auto* row = new QHBoxLayout;
        row->setSpacing(8);
        row->addWidget(new SymbolLabel(QStringLiteral("iphone"), 14, Theme::muted), 0, Qt::AlignTop);
        row->addWidget(makeWrappedLabel(QString::fromUtf8(text), TextStyle::caption, Theme::muted), 1);
        column->addLayout(row);
    }
    return notes;
}

} // namespace

void addTo(QVBoxLayout& column, SetupContext& context) {
    Prefs& prefs = context.prefs;
    column.addWidget(
        new BasicRow(prefs, prefs.startPresenter,
                     {QStringLiteral("Empezar hablando a la cámara"),
                      QStringLiteral("El video empieza contigo en grande; luego pasas a tu pantalla con ⌃C o con el "
                                     "botón de vista.")},
                     &isScreenCam));
    column.addWidget(
        new BasicRow(prefs, prefs.showName,
                     {QStringLiteral("Mostrar mi nombre bajo la cámara"),
                      QStringLiteral("Un rótulo con tu nombre (y, si quieres, tu cargo o el tema). Solo cuando lo "
                                     "necesites.")},
                     &usesCamera, makeNameFields(prefs)));
    auto* phone = new BasicRow(
        prefs, prefs.showPhone,
        {QStringLiteral("Mostrar mi celular"),
         QStringLiteral("La pantalla de tu celular en una ventana con forma de celular, que sale en el video.")},
        &usesScreen, makePhoneNotes());
    column.addWidget(phone);
    QObject::connect(&prefs, &Prefs::changed, phone, [&context](const QString& key) {
        if (key == context.prefs.showPhone.key()) {
            context.recorder.previewChanged();
        }
    });
}

} // namespace velmo::BasicRows
