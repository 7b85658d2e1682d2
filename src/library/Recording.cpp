#include "library/Recording.h"

#include "classkit/ClassKit.h"

#include <QHash>

#include <system_error>

namespace velmo {

QString Recording::title() const {
    return QString::fromStdString(url.stem().native());
}

std::optional<std::filesystem::path> Recording::classFolder() const {
    const std::filesystem::path folder = ClassKit::folder(url);
    std::error_code ignored;
    return std::filesystem::exists(folder, ignored) ? std::optional(folder) : std::nullopt;
}

} // namespace velmo

std::size_t std::hash<velmo::Recording>::operator()(const velmo::Recording& recording) const noexcept {
    const std::size_t markers = qHashRange(recording.markers.begin(), recording.markers.end());
    return qHashMulti(std::filesystem::hash_value(recording.url), recording.created.time_since_epoch().count(),
                      recording.size, recording.duration, markers, recording.markerTitles,
                      recording.driveLink.value_or(QString()));
}
