#pragma once

/// The texts that name things of one system only: the given wording, and the one that is true on this system.
/// Everything shown to the user takes `here`.
namespace velmo::PlatformWords {

struct Wording {
    const char* given;
    const char* here;
};

inline constexpr Wording kPermitScreenCapture{
    "Activa Velmo Studio en Ajustes del Sistema › Privacidad y seguridad › Grabación de pantalla y audio del sistema. "
    "Después vuelve a abrir la app.",
    "Permite a Velmo Studio grabar la pantalla en los ajustes de privacidad del sistema. Después vuelve a abrir la "
    "app."};

inline constexpr Wording kRevealFile{"Mostrar en Finder", "Mostrar en la carpeta"};

inline constexpr Wording kTrashKeeps{"Podrás recuperarla desde la Papelera de tu Mac.",
                                     "Podrás recuperarla desde la papelera de tu computadora."};

inline constexpr Wording kNormalIsFluid{
    "En esta Mac, la calidad Normal es la más fluida, sobre todo con videos en pantalla.",
    "En esta computadora, la calidad Normal es la más fluida, sobre todo con videos en pantalla."};

inline constexpr Wording kSystemNeedsPermission{"Para grabar, macOS necesita tu permiso. Dalo una sola vez:",
                                                "Para grabar, tu sistema necesita tu permiso. Dalo una sola vez:"};

inline constexpr Wording kMayAskToReopen{
    "Para grabar lo que muestras. Después de activarlo, macOS puede pedir reabrir la app.",
    "Para grabar lo que muestras. Después de activarlo, tu sistema puede pedir reabrir la app."};

inline constexpr Wording kStaysHere{
    "Privacidad: todo se graba y se guarda en tu Mac. Nada se sube a internet, salvo cuando tú pides un enlace de "
    "Google Drive.",
    "Privacidad: todo se graba y se guarda en tu computadora. Nada se sube a internet, salvo cuando tú pides un enlace "
    "de Google Drive."};

inline constexpr Wording kTemplates{
    "Abre las plantillas de diapositivas Velmo (PowerPoint y Keynote) con el espacio para tu cámara.",
    "Abre las plantillas de diapositivas Velmo (PowerPoint y LibreOffice) con el espacio para tu cámara."};

} // namespace velmo::PlatformWords
