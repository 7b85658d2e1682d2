#pragma once

#include "library/Library.h"

#include <QAbstractListModel>

#include <filesystem>
#include <optional>

namespace velmo {

/// The library's recordings as rows, newest first. Main thread. A new order or another set of files resets the model;
/// news of a single recording only changes its row.
class RecordingModel final : public QAbstractListModel {
    Q_OBJECT

public:
    /// `library` is borrowed and must outlive this object.
    explicit RecordingModel(Library& library, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    /// Title, tooltip and the text for screen readers.
    QVariant data(const QModelIndex& index, int role) const override;

    /// Of a valid row.
    const Recording& recording(int row) const { return items_[static_cast<std::size_t>(row)]; }
    FrameRef thumbnail(int row) const { return library_.thumbnail(recording(row).url); }
    std::optional<int> rowOf(const std::filesystem::path& url) const;
    /// "hace 2 horas"
    QString dateText(int row) const;

private:
    void readAgain();

    Library& library_;
    std::vector<Recording> items_;
};

} // namespace velmo
