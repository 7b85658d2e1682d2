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
                                     "Podrás recuperarla desde la papelera de tu computador."};

} // namespace velmo::PlatformWords
