#include "session/SessionErrors.h"

#include "media/AssetWriter.h"
#include "platform/ScreenCapture.h"

#include <algorithm>
#include <array>

namespace velmo {

bool isPermissionError(const Error& error) {
    if (error.domain == kStreamErrorDomain && error.code == kStreamErrorUserDeclined) {
        return true;
    }
    static constexpr std::array kWords{"tcc", "declined", "not authorized", "permission"};
    const QString text = QString::fromStdString(error.text).toLower();
    return std::any_of(kWords.begin(), kWords.end(),
                       [&](const char* word) { return text.contains(QLatin1String(word)); });
}

std::optional<QString> reasonOfEnd(const Error& error) {
    const bool isOurs = error.domain == kMediaErrorDomain || error.domain == kStreamErrorDomain;
    return isOurs && !error.text.empty() ? std::optional(QString::fromStdString(error.text)) : std::nullopt;
}

Error unansweredError() {
    return {"VelmoStudio.Session", 0, "El sistema de captura terminó sin responder."};
}

} // namespace velmo
