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

/// A plain comparison of letters: other hosts that end in them count too.
bool isYouTube(const QString& host) {
    return host.endsWith(QLatin1String("youtube.com")) || host == QLatin1String("youtu.be");
}

/// What people paste often holds blanks and accents; those are encoded, as a browser would.
QUrl parsed(const QString& address) {
    return QUrl(address, QUrl::TolerantMode);
}

QString shortened(const QUrl& url) {
    QString host = url.host().toLower();
    constexpr QLatin1String kUsual("www.");
    if (host.startsWith(kUsual) && host.size() > kUsual.size()) {
        host.remove(0, kUsual.size());
    }
    const QString path = url.path(QUrl::FullyDecoded);
    return path.size() < 2 ? host : host + path;
}

} // namespace

std::optional<KitItem> KitItem::web(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) {
        return std::nullopt;
    }
    const QString address = trimmed.contains(QLatin1String("://")) ? trimmed : QStringLiteral("https://") + trimmed;
    const QUrl url = parsed(address);
    const QString host = url.host().toLower();
    if (!url.isValid() || !host.contains(u'.')) {
        return std::nullopt;
    }
    if (isYouTube(host)) {
        return KitItem{QUuid::createUuid(), Kind::video, QStringLiteral("Video de YouTube"), address};
    }
    return KitItem{QUuid::createUuid(), Kind::link, shortened(url), address};
}

std::optional<QUrl> KitItem::url() const {
    const QUrl address = kind == Kind::file ? QUrl::fromLocalFile(location) : parsed(location);
    return address.isValid() ? std::optional(address) : std::nullopt;
}

QString KitItem::symbol() const {
    if (kind == Kind::link) {
        return QStringLiteral("link");
    }
    return QString::fromLatin1(kind == Kind::video ? "play.rectangle.fill" : fileSymbol(location));
}

} // namespace velmo
