#include "library/Library.h"

#include "base/AppName.h"
#include "base/AtomicFile.h"
#include "classkit/ClassKit.h"
#include "library/internal/FolderScan.h"
#include "library/internal/MoveFile.h"
#include "library/internal/RecordingName.h"
#include "media/RecordingJournal.h"

#include <QFile>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <system_error>
#include <utility>

namespace velmo {

namespace {

Library* sharedLibrary = nullptr;

constexpr std::chrono::milliseconds kReloadDelay{600};
constexpr int kThumbnailSide = 720;
constexpr double kThumbnailSeconds = 1.0;
constexpr double kShortRecording = 2.0; // shorter ones show their first picture

std::filesystem::path pathFrom(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

double thumbnailTime(double duration) {
    return duration == 0 || duration > kShortRecording ? kThumbnailSeconds : 0;
}

/// By a video, or by one that waits under this name to be repaired. A folder that cannot be looked into has nothing
/// taken: the recording itself will tell.
bool isTaken(const std::filesystem::path& video) {
    const auto isThere = [](const std::filesystem::path& file) {
        std::error_code ignored;
        return std::filesystem::exists(std::filesystem::symlink_status(file, ignored));
    };
    return isThere(video) || isThere(journalOf(video)) || isThere(asideOf(video));
}

FrameRef readThumbnail(const AssetInspector& inspector, const std::filesystem::path& url, double seconds) {
    auto image = inspector.image(url, seconds, kThumbnailSide);
    if (!image) {
        image = inspector.image(url, 0, kThumbnailSide);
    }
    return image ? std::move(image).value() : FrameRef();
}

std::optional<double> readDuration(const AssetInspector& inspector, const std::filesystem::path& url) {
    const auto duration = inspector.duration(url);
    return duration && std::isfinite(duration.value()) && duration.value() > 0 ? std::optional(duration.value())
                                                                               : std::nullopt;
}

/// Who saves a recording keeps to the name under which it was made.
Error stillBeingSaved() {
    return {"VelmoStudio", 4, "La grabación todavía se está guardando."};
}

} // namespace

Library::Library(std::filesystem::path folder, Services services)
    : folder_(std::move(folder)), services_(std::move(services)), metadataFile_(folder_), renameIntent_(folder_) {
    createFolder();
    meta_ = metadataFile_.load();
    completeRename();
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &Library::folderChanged);
    reload();
}

Library::~Library() {
    closing_ = true;
    services_.worker.reset();
    if (sharedLibrary == this) {
        sharedLibrary = nullptr;
    }
}

Library& Library::shared() {
    assert(sharedLibrary != nullptr);
    return *sharedLibrary;
}

void Library::setShared(Library* library) {
    sharedLibrary = library;
}

std::filesystem::path Library::standardFolder() {
    return pathFrom(QStandardPaths::writableLocation(QStandardPaths::MoviesLocation)) / AppName::current;
}

FrameRef Library::thumbnail(const std::filesystem::path& url) const {
    const auto found = thumbnails_.find(url);
    return found == thumbnails_.end() ? FrameRef() : found->second;
}

void Library::setFocus(std::optional<std::filesystem::path> focus) {
    focus_ = std::move(focus);
    emit focusChanged();
}

bool Library::createFolder() const {
    std::error_code ignored;
    std::filesystem::create_directories(folder_, ignored);
    return std::filesystem::is_directory(folder_, ignored);
}

void Library::watchFolder() {
    std::error_code ignored;
    // A folder that was deleted has dropped out of the watcher; one that is there again is taken in again.
    if (watcher_.directories().isEmpty() && std::filesystem::is_directory(folder_, ignored)) {
        watcher_.addPath(QFile::decodeName(folder_.c_str()));
    }
}

void Library::folderChanged() {
    if (std::exchange(reloadPending_, true)) {
        return;
    }
    QTimer::singleShot(kReloadDelay, this, [this] {
        reloadPending_ = false;
        reload();
    });
}

Recording Library::recordingOf(const std::filesystem::path& url, WallTime created, std::int64_t size) const {
    const auto entry = meta_.find(url.filename().native());
    if (entry == meta_.end()) {
        return {url, created, size, 0, {}, {}, std::nullopt};
    }
    const internal::Meta& known = entry->second;
    return {url, created, size, known.duration, known.markers, known.titles.value_or(QStringList()), known.driveLink};
}

void Library::reload() {
    assert(QThread::currentThread() == thread());
    watchFolder();
    std::vector<Recording> found;
    for (const internal::VideoFile& file : internal::videosIn(folder_, services_.now())) {
        found.push_back(recordingOf(file.path, file.created, file.size));
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Recording& a, const Recording& b) { return a.created > b.created; });
    if (found != items_) {
        items_ = std::move(found);
        emit itemsChanged();
    }
    for (const Recording& recording : std::vector(items_)) {
        startLoads(recording);
    }
}

void Library::startLoads(const Recording& recording) {
    if (!thumbnails_.contains(recording.url) && loadingThumbs_.insert(recording.url).second) {
        loadThumbnail(recording);
    }
    if (recording.duration == 0 && loadingDurations_.insert(recording.url).second) {
        loadDuration(recording);
    }
}

void Library::loadThumbnail(const Recording& recording) {
    services_.worker->async([this, url = recording.url, seconds = thumbnailTime(recording.duration)] {
        if (!closing_) {
            QMetaObject::invokeMethod(
                this,
                [this, url, image = readThumbnail(services_.inspector, url, seconds)] { thumbnailArrived(url, image); },
                Qt::QueuedConnection);
        }
    });
}

void Library::loadDuration(const Recording& recording) {
    services_.worker->async([this, url = recording.url] {
        if (!closing_) {
            QMetaObject::invokeMethod(
                this, [this, url, seconds = readDuration(services_.inspector, url)] { durationArrived(url, seconds); },
                Qt::QueuedConnection);
        }
    });
}

void Library::thumbnailArrived(const std::filesystem::path& url, FrameRef image) {
    loadingThumbs_.erase(url);
    if (image && find(url) != nullptr) {
        thumbnails_[url] = std::move(image);
        emit thumbnailsChanged();
    }
}

void Library::durationArrived(const std::filesystem::path& url, std::optional<double> seconds) {
    loadingDurations_.erase(url);
    Recording* recording = find(url);
    // Gone, renamed or entered with its true duration meanwhile: what was read is no longer asked for.
    if (!seconds || recording == nullptr || recording->duration != 0) {
        return;
    }
    meta_[url.filename().native()].duration = *seconds;
    metadataFile_.save(meta_);
    recording->duration = *seconds;
    emit itemsChanged();
}

Recording* Library::find(const std::filesystem::path& url) {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Recording& each) { return each.url == url; });
    return found == items_.end() ? nullptr : &*found;
}

std::filesystem::path Library::newRecordingURL() {
    createFolder();
    const std::string base = internal::recordingName(services_.now()).toStdString();
    std::filesystem::path candidate = folder_ / (base + ".mp4");
    for (int n = 2; isTaken(candidate); ++n) {
        candidate = folder_ / (base + " (" + std::to_string(n) + ").mp4");
    }
    return candidate;
}

bool Library::add(const std::filesystem::path& url, double duration, const std::vector<double>& markers,
                  const QStringList& titles) {
    meta_[url.filename().native()] = {duration, markers, titles.isEmpty() ? std::nullopt : std::optional(titles),
                                      std::nullopt};
    const bool saved = metadataFile_.save(meta_);
    if (saved) {
        removeJournal(url);
    } else {
        unlockJournal(url); // nobody works on it any more; the next launch enters it again
    }
    reload();
    setFocus(url);
    return saved;
}

void Library::setDriveLink(const QString& link, const std::filesystem::path& url) {
    meta_[url.filename().native()].driveLink = link;
    metadataFile_.save(meta_);
    if (Recording* recording = find(url)) {
        recording->driveLink = link;
        emit itemsChanged();
    }
}

Result<std::filesystem::path> Library::rename(const Recording& recording, const QString& newName) {
    const std::filesystem::path from = recording.url;
    const QString name = internal::cleanedName(newName);
    if (name.isEmpty() || name == recording.title()) {
        return from;
    }
    if (isWorkedOn(from)) {
        return stillBeingSaved();
    }
    const std::filesystem::path to = folder_ / (name.toStdString() + from.extension().native());
    renameIntent_.save({from.filename().native(), to.filename().native()});
    if (const auto moved = internal::moveVideo(from, to); !moved) {
        renameIntent_.remove();
        return moved.error();
    }
    meta_.erase(to.filename().native()); // of a file that has gone
    followRename(from, to);
    if (auto image = thumbnails_.extract(from)) {
        thumbnails_[to] = std::move(image.mapped());
    }
    reload();
    return to;
}

/// What belongs to a video that has been moved. Doing it again changes nothing.
void Library::followRename(const std::filesystem::path& from, const std::filesystem::path& to) {
    syncFolder(folder_);
    ClassKit::renameFolder(from, to);
    static_cast<void>(internal::moveVideo(journalOf(from), journalOf(to))); // of one that is yet to be recovered
    if (auto entry = meta_.extract(from.filename().native())) {
        meta_.insert_or_assign(to.filename().native(), std::move(entry.mapped()));
    }
    if (metadataFile_.save(meta_)) {
        renameIntent_.remove();
    }
}

/// A rename that was cut short: the video has its new name, the rest may not.
void Library::completeRename() {
    const auto intent = renameIntent_.load();
    if (!intent) {
        return;
    }
    const std::filesystem::path from = folder_ / intent->from;
    const std::filesystem::path to = folder_ / intent->to;
    std::error_code ignored;
    if (std::filesystem::exists(to, ignored) && !std::filesystem::exists(from, ignored)) {
        followRename(from, to);
        ClassKit::renewFolder(to); // it may have its name, but not yet the record and the pages that go with it
    } else {
        renameIntent_.remove();
    }
}

Result<void> Library::trash(const Recording& recording) {
    const std::filesystem::path url = recording.url; // `recording` may be one of ours
    if (isWorkedOn(url)) {
        return stillBeingSaved();
    }
    const std::optional<std::filesystem::path> classFolder = recording.classFolder();
    const Result<void> moved = services_.files.moveToTrash(url);
    if (classFolder) {
        static_cast<void>(services_.files.moveToTrash(*classFolder));
    }
    meta_.erase(url.filename().native());
    metadataFile_.save(meta_);
    thumbnails_.erase(url);
    reload();
    return moved ? moved : Error{moved.error().domain, moved.error().code, "No se pudo mover el video a la papelera."};
}

Result<void> Library::openFolder() {
    if (!createFolder()) {
        return Error{"VelmoStudio", 3, "No se puede abrir la carpeta de grabaciones: no existe y no se puede crear."};
    }
    services_.files.open(folder_);
    return {};
}

} // namespace velmo
