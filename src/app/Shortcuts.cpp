#include "app/Shortcuts.h"

namespace velmo {

const std::array<Shortcuts::Row, 15> Shortcuts::list{{
    {"⌃G", "Empezar o terminar la grabación", 1, 1},
    {"⌃P", "Pausar o reanudar", 2, 2},
    {"⌃M", "Marcador", 3, 3},
    {"⌃K", "Material de la clase", 13, 13},
    {"⌃T", "Guion (teleprompter): mostrar, empezar o pausar", 14, 14},
    {"⌃D", "Dibujar sobre la pantalla", 4, 4},
    {"⌃B", "Mostrar u ocultar la quadrel", 5, 5},
    {"⌃C", "Cámara completa ↔ burbuja", 12, 12},
    {"⌃1 … ⌃4", "Vistas: pantalla y burbuja · solo yo · yo al lado · yo en columna", 20, 23},
    {"⌃Z", "Zoom donde está el mouse / volver", 6, 6},
    {"⌃+  ⌃−", "Acercar o alejar un paso", 8, 9},
    {"⌃A", "Zoom a un área", 10, 10},
    {"⌃F", "Foco alrededor del mouse", 11, 11},
    {"⌃R", "Grabar solo una zona", 7, 7},
    {"⌥ + pellizco", "Zoom continuo con el trackpad"},
}};

QString Shortcuts::message() {
    return QStringLiteral("Atajos de Velmo Studio");
}

QString Shortcuts::introduction(const State& state) {
    return QString::fromUtf8(rowOf(state.modifier).explanation) +
           shortcutText(QStringLiteral(" ⌃G funciona siempre; los demás, mientras grabas."), state.modifier);
}

QString Shortcuts::informativeText(const State& state) {
    QStringList lines;
    for (const Row& row : list) {
        const QString note = isTaken(row, state) ? QStringLiteral(" · ") + takenNote() : QString();
        lines << shortcutText(QString::fromUtf8(row.key), state.modifier) + u'\t' + QString::fromUtf8(row.description) +
                     note;
    }
    return introduction(state) + QStringLiteral("\n\n") + lines.join(u'\n');
}

bool Shortcuts::isTaken(const Row& row, const State& state) {
    const auto first = state.taken.lower_bound(row.firstID);
    return row.firstID > 0 && first != state.taken.end() && *first <= row.lastID;
}

QString Shortcuts::takenNote() {
    return QStringLiteral("La usa otro programa");
}

QString Shortcuts::button() {
    return QStringLiteral("Listo");
}

void Shortcuts::show(const State& state, const std::function<void()>& toFront, const Presenter& presenter) {
    toFront();
    presenter(message(), informativeText(state), {button()});
}

} // namespace velmo
