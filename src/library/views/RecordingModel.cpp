#include "library/views/RecordingModel.h"

#include "settings/Format.h"

#include <QStringList>

#include <algorithm>

namespace velmo {

namespace {

bool sameFiles(const std::vector<Recording>& a, const std::vector<Recording>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Recording& left, const Recording& right) { return left.url == right.url; });
}

QString spokenText(const Recording& recording, const QString& date) {
    QStringList parts{recording.title(), date};
    if (recording.duration > 0) {
        parts.append(QStringLiteral("duración ") + Format::duration(recording.duration));
    }
    if (!recording.markers.empty()) {
        const auto count = recording.markers.size();
        parts.append(QStringLiteral("%1 %2").arg(count).arg(count == 1 ? QStringLiteral("marcador")
                                                                       : QStringLiteral("marcadores")));
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

RecordingModel::RecordingModel(Library& library, QObject* parent)
    : QAbstractListModel(parent), library_(library), items_(library.items()) {
    connect(&library, &Library::itemsChanged, this, &RecordingModel::readAgain);
    connect(&library, &Library::thumbnailsChanged, this, [this] {
        if (!items_.empty()) {
            emit dataChanged(index(0), index(rowCount() - 1));
        }
    });
}

int RecordingModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant RecordingModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return recording(index.row()).title();
    case Qt::AccessibleTextRole:
        return spokenText(recording(index.row()), dateText(index.row()));
    default:
        return {};
    }
}

std::optional<int> RecordingModel::rowOf(const std::filesystem::path& url) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Recording& each) { return each.url == url; });
    return found == items_.end() ? std::nullopt : std::optional(static_cast<int>(found - items_.begin()));
}

QString RecordingModel::dateText(int row) const {
    return Format::relative(recording(row).created, std::chrono::system_clock::now());
}

void RecordingModel::readAgain() {
    if (sameFiles(items_, library_.items())) {
        items_ = library_.items();
        if (!items_.empty()) {
            emit dataChanged(index(0), index(rowCount() - 1));
        }
        return;
    }
    beginResetModel();
    items_ = library_.items();
    endResetModel();
}

} // namespace velmo
