#include "classkit/views/KitDrop.h"

#include "classkit/ClassKit.h"

#include <QFile>
#include <QMimeData>
#include <QUrl>

#include <algorithm>
#include <filesystem>

namespace velmo::KitDrop {

namespace {

bool isWeb(const QUrl& url) {
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

bool isFile(const QUrl& url) {
    return url.isLocalFile() && !url.toLocalFile().isEmpty();
}

} // namespace

bool holdsMaterial(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return isFile(url) || isWeb(url); });
}

bool addTo(ClassKit& kit, const QMimeData& data) {
    for (const QUrl& url : data.urls()) {
        if (isFile(url)) {
            kit.add({std::filesystem::path(QFile::encodeName(url.toLocalFile()).toStdString())});
        } else if (isWeb(url)) {
            kit.add(url.toString());
        }
    }
    return holdsMaterial(data);
}

} // namespace velmo::KitDrop
