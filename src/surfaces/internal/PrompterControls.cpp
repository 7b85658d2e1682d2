#include "surfaces/internal/PrompterControls.h"

#include "settings/Prefs.h"
#include "surfaces/Teleprompter.h"
#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace velmo {

namespace {

constexpr int kPicture = 28; ///< side of a small button
constexpr int kIcon = 18;

struct Face {
    const char* symbol;
    const char* title;
};
constexpr Face kStart = {"play.fill", "Empezar"};
constexpr Face kPause = {"pause.fill", "Pausar"};
constexpr const char* kPlayHelp = "También con un clic sobre el texto o ⌃T";

class Line final : public QWidget {
public:
    Line() { setFixedSize(13, kPicture); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(QRectF(6, 4, 1, height() - 8), Theme::border); }
};

void setFace(Button& button, const Face& face) {
    button.setSymbol(QString::fromUtf8(face.symbol));
    button.setText(QString::fromUtf8(face.title));
    button.setAccessibleName(button.text());
}

} // namespace

PrompterControls::PrompterControls(Teleprompter& prompter, const Prefs& prefs) : prompter_(prompter), prefs_(prefs) {
    setFixedHeight(kHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    play_ = new Button(ButtonStyle::primarySmall);
    play_->setFocusPolicy(Qt::NoFocus);
    for (const Face& face : {kStart, kPause}) {
        setFace(*play_, face);
        play_->setMinimumWidth(std::max(play_->minimumWidth(), play_->sizeHint().width())); // one width for both
    }
    connect(play_, &Button::clicked, &prompter_, &Teleprompter::togglePlay);
    row->addWidget(play_);
    row->addSpacing(8);
    row->addWidget(addButton("tortoise", "Más lento", &Teleprompter::slower));
    row->addSpacing(2);
    row->addWidget(makeLabel(QStringLiteral("Velocidad"), TextStyle::caption, Theme::muted));
    row->addSpacing(2);
    row->addWidget(addButton("hare.fill", "Más rápido", &Teleprompter::faster));
    row->addWidget(new Line);
    row->addWidget(addButton("textformat.size.smaller", "Letra más pequeña", &Teleprompter::smallerText));
    row->addWidget(addButton("textformat.size.larger", "Letra más grande", &Teleprompter::biggerText));
    row->addStretch();
    row->addWidget(note_ = makeLabel(QStringLiteral("No sale en el video"), TextStyle::micro, Theme::muted));
    row->addSpacing(6);
    row->addWidget(addButton("xmark", "Ocultar el guion", &Teleprompter::hide));
    roomForNote_ = row->minimumSize().width();
    setMinimumWidth(1); // a narrow screen has no room for the note
    connect(&prompter_, &Teleprompter::playingChanged, this, &PrompterControls::showPlaying);
    connect(&prefs_, &Prefs::changed, this, &PrompterControls::showHelp);
    showPlaying();
    showHelp();
}

Button* PrompterControls::addButton(const char* symbol, const char* help, void (Teleprompter::*action)()) {
    auto* button = new Button(ButtonStyle::icon);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSubdued(true);
    button->setSymbol(QString::fromUtf8(symbol));
    button->setSymbolSize(kIcon);
    button->setToolTip(QString::fromUtf8(help));
    button->setAccessibleName(button->toolTip());
    connect(button, &Button::clicked, &prompter_, action);
    return button;
}

void PrompterControls::showHelp() {
    play_->setToolTip(shortcutText(QString::fromUtf8(kPlayHelp), prefs_.shortcutModifier));
}

void PrompterControls::showPlaying() {
    setFace(*play_, prompter_.playing() ? kPause : kStart);
}

void PrompterControls::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    note_->setVisible(width() >= roomForNote_);
}

} // namespace velmo
