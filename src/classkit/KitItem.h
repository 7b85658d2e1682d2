#pragma once

#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace velmo {

/// One piece of class material.
struct KitItem {
    enum class Kind { file, link, video };

    QUuid id = QUuid::createUuid();
    Kind kind = Kind::file;
    QString title;
    QString location; ///< file path for `file`, else a web address
    friend bool operator==(const KitItem&, const KitItem&) = default;

    /// A new `link` or `video` from an address as it was pasted, also without its scheme. Absent when the text has no
    /// host with a dot in it.
    static std::optional<KitItem> web(const QString& text);

    /// Absent for an address that does not parse.
    std::optional<QUrl> url() const;
    /// Name of the icon.
    QString symbol() const;
};

} // namespace velmo
