#pragma once

#include <QString>
#include <QUuid>

namespace velmo {

/// One piece of class material.
struct KitItem {
    enum class Kind { file, link, video };

    QUuid id;
    Kind kind = Kind::file;
    QString title;
    QString location; ///< file path for `file`, else a web address
    friend bool operator==(const KitItem&, const KitItem&) = default;
};

} // namespace velmo
