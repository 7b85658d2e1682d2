#include "classkit/views/KitDrop.h"

#include "classkit/ClassKit.h"

#include <QFile>
#include <QMimeData>
#include <QSet>
#include <QString>
#include <QUrl>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace velmo::KitDrop {

namespace {

bool isWeb(const QUrl& url) {
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

bool isFile(const QUrl& url) {
    return url.isLocalFile() && !url.toLocalFile().isEmpty();
}

/// Files that lie next to each other in what was dropped, each of them once. The kit writes for each call, to the disk.
class Run {
public:
    void take(const QUrl& file) {
        const QString location = file.adjusted(QUrl::StripTrailingSlash).toLocalFile();
        if (!taken_.contains(location)) {
            taken_.insert(location);
            files_.emplace_back(QFile::encodeName(location).toStdString());
        }
    }
    void addTo(ClassKit& kit) {
        kit.add(files_);
        files_.clear();
    }

private:
    std::vector<std::filesystem::path> files_;
    QSet<QString> taken_;
};

} // namespace

bool holdsMaterial(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return isFile(url) || isWeb(url); });
}

bool addTo(ClassKit& kit, const QMimeData& data) {
    Run run;
    for (const QUrl& url : data.urls()) {
        if (isFile(url)) {
            run.take(url);
        } else if (isWeb(url)) {
            run.addTo(kit);
            kit.add(url.toString());
        }
    }
    run.addTo(kit);
    return holdsMaterial(data);
}

} // namespace velmo::KitDrop
