#include "classkit/KitItem.h"

#include <QFileInfo>

#include <array>
#include <string_view>

namespace velmo {

namespace {

struct FileSymbol {
    std::string_view extension;
    const char* symbol;
};

constexpr std::array kFileSymbols{
    FileSymbol{"key", "rectangle.on.rectangle.angled"},
    FileSymbol{"ppt", "rectangle.on.rectangle.angled"},
    FileSymbol{"pptx", "rectangle.on.rectangle.angled"},
    FileSymbol{"odp", "rectangle.on.rectangle.angled"},
    FileSymbol{"pdf", "doc.richtext"},
    FileSymbol{"png", "photo"},
    FileSymbol{"jpg", "photo"},
    FileSymbol{"jpeg", "photo"},
    FileSymbol{"heic", "photo"},
    FileSymbol{"gif", "photo"},
    FileSymbol{"mp4", "film"},
    FileSymbol{"mov", "film"},
    FileSymbol{"m4v", "film"},
    FileSymbol{"xls", "tablecells"},
    FileSymbol{"xlsx", "tablecells"},
    FileSymbol{"numbers", "tablecells"},
    FileSymbol{"csv", "tablecells"},
};

const char* fileSymbol(const QString& path) {
    const QByteArray extension = QFileInfo(path).suffix().toLower().toUtf8();
    for (const FileSymbol& entry : kFileSymbols) {
        if (entry.extension == std::string_view(extension.constData(), static_cast<std::size_t>(extension.size()))) {
            return entry.symbol;
        }
    }
    return "doc";
}

} // namespace

std::optional<QUrl> KitItem::url() const {
    const QUrl parsed = kind == Kind::file ? QUrl::fromLocalFile(location) : QUrl(location, QUrl::StrictMode);
    return parsed.isValid() ? std::optional(parsed) : std::nullopt;
}

QString KitItem::symbol() const {
    if (kind == Kind::link) {
        return QStringLiteral("link");
    }
    return QString::fromLatin1(kind == Kind::video ? "play.rectangle.fill" : fileSymbol(location));
}

} // namespace velmo
