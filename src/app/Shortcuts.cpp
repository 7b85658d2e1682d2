#include "app/Shortcuts.h"

namespace velmo {

const std::array<Shortcuts::Row, 15> Shortcuts::list{{
    {"⌃G", "Empezar o terminar la grabación"},
    {"⌃P", "Pausar o reanudar"},
    {"⌃M", "Marcador"},
    {"⌃K", "Material de la clase"},
    {"⌃T", "Guion (teleprompter): mostrar, empezar o pausar"},
    {"⌃D", "Dibujar sobre la pantalla"},
    {"⌃B", "Mostrar u ocultar la quadrel"},
    {"⌃C", "Cámara completa ↔ burbuja"},
    {"⌃1 … ⌃4", "Vistas: pantalla y burbuja · solo yo · yo al lado · yo en columna"},
    {"⌃Z", "Zoom donde está el mouse / volver"},
    {"⌃+  ⌃−", "Acercar o alejar un paso"},
    {"⌃A", "Zoom a un área"},
    {"⌃F", "Foco alrededor del mouse"},
    {"⌃R", "Grabar solo una zona"},
    {"⌥ + pellizco", "Zoom continuo con el trackpad"},
}};

QString Shortcuts::message() {
    return QStringLiteral("Atajos de Velmo Studio");
}

QString Shortcuts::introduction() {
    return QStringLiteral(
        "⌃ es la tecla Control (abajo a la izquierda del teclado). ⌃G funciona siempre; los demás, mientras grabas.");
}

QString Shortcuts::informativeText() {
    QStringList lines;
    for (const Row& row : list) {
        lines << QString::fromUtf8(row.key) + u'\t' + QString::fromUtf8(row.description);
    }
    return introduction() + QStringLiteral("\n\n") + lines.join(u'\n');
}

QString Shortcuts::button() {
    return QStringLiteral("Listo");
}

void Shortcuts::show(const std::function<void()>& toFront, const Presenter& presenter) {
    toFront();
    presenter(message(), informativeText(), {button()});
}

} // namespace velmo
