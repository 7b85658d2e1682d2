#include "panels/setup/ScriptSection.h"

#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"
#include "ui/TextArea.h"

#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kPause = 800; // ms

} // namespace

ScriptSection::ScriptSection(SetupContext& context, QWidget* parent)
    : QWidget(parent), context_(context),
      text_(new TextArea(QStringLiteral("Escribe o pega lo que vas a decir. Mientras grabas, sube solo debajo de la "
                                        "cámara"))) {
    Prefs& prefs = context.prefs;
    auto* column = Rows::column(*this);
    Rows::add(*column, text_, TextArea::kRoom);
    Rows::addSwitch(*column, prefs, prefs.prompterOn, QStringLiteral("Mostrar el guion al grabar"));
    pause_.setSingleShot(true);
    pause_.setInterval(kPause);
    connect(&pause_, &QTimer::timeout, this, &ScriptSection::write);
    connect(text_, &TextArea::edited, this, &ScriptSection::edited);
    connect(text_, &TextArea::left, this, [this] {
        if (pause_.isActive()) {
            write();
        }
    });
    Rows::follow(*this, prefs, {&prefs.scriptText}, [this, &prefs] {
        if (!pause_.isActive() && text_->text() != prefs.scriptText.value()) {
            text_->setText(prefs.scriptText);
        }
    });
}

ScriptSection::~ScriptSection() {
    text_->disconnect(this); // it tells that it is left when it goes
    if (pause_.isActive()) {
        write();
    }
}

/// The whole settings file is written with each change: a long script must not make the keys wait for the disk.
void ScriptSection::edited() {
    if (text_->text().size() <= kShort) {
        write();
    } else {
        pause_.start();
    }
}

void ScriptSection::write() {
    pause_.stop();
    context_.prefs.scriptText = text_->text();
}

} // namespace velmo
