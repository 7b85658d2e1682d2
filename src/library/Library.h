#pragma once

#include "base/Result.h"
#include "base/SerialQueue.h"
#include "library/Recording.h"
#include "library/internal/MetadataFile.h"
#include "library/internal/RenameIntent.h"
#include "media/AssetInspector.h"
#include "media/PixelBuffer.h"
#include "platform/FileActions.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace velmo {

/// The one store of finished recordings: the video files of one folder, and a hidden file beside them with what they
/// cannot tell. Main thread; pictures and durations are read on a queue of its own and arrive on the main thread.
///
/// What is in the folder is a recording, however it came there. What the user does elsewhere in the folder shows
/// within a second. Failures to write the hidden file are silent.
class Library final : public QObject {
    Q_OBJECT

public:
    using WallTime = std::chrono::system_clock::time_point;

    struct Services {
        FileActions& files;              ///< borrowed, outlives the library
        const AssetInspector& inspector; ///< borrowed, outlives the library; only used on `worker`
        std::unique_ptr<SerialQueue> worker;
        std::function<WallTime()> now = std::chrono::system_clock::now;
    };

    /// Creates `folder` where it can; without it the library is empty.
    Library(std::filesystem::path folder, Services services);
    /// Waits for the one file that the worker may be reading.
    ~Library() override;

    /// The program's one object, registered by the composition root before anything asks for it.
    static Library& shared();
    /// Borrowed; null takes the registration back.
    static void setShared(Library* library);

    /// "Velmo Studio" in the user's folder for videos.
    static std::filesystem::path standardFolder();

    const std::filesystem::path& folder() const { return folder_; }
    /// Newest first.
    const std::vector<Recording>& items() const { return items_; }
    /// BGRA, at most 720 pixels on its longer side. Null while it is not there.
    FrameRef thumbnail(const std::filesystem::path& url) const;
    /// The recording that a view should select.
    const std::optional<std::filesystem::path>& focus() const { return focus_; }
    void setFocus(std::optional<std::filesystem::path> focus);

    /// Scans the folder again.
    void reload();
    /// A name for the next recording under which no file exists, nor any that waits to be repaired.
    std::filesystem::path newRecordingURL();
    /// Enters a finished recording and sets the focus to it. `titles` by index into `markers`. True when the disk has
    /// it too; the recording's journal then goes.
    bool add(const std::filesystem::path& url, double duration, const std::vector<double>& markers,
             const QStringList& titles);
    void setDriveLink(const QString& link, const std::filesystem::path& url);

    /// The file under its new name, or under the old one when nothing had to change. Errors: domain "VelmoStudio",
    /// code 1, when the name is taken, code 4, while the recording is still being saved, and the failures of the move;
    /// nothing has changed then. What is left to recover of a recording goes along.
    Result<std::filesystem::path> rename(const Recording& recording, const QString& newName);
    /// Moves the video and its class folder to the trash and forgets what was known of it, even when the move fails;
    /// then the next scan shows the file again. The error is that of the video's move. A recording
    /// that is still being saved stays as it is: domain "VelmoStudio", code 4.
    Result<void> trash(const Recording& recording);

    void reveal(const std::filesystem::path& url) { services_.files.reveal(url); }
    void copyToPasteboard(const std::filesystem::path& url) { services_.files.copyToClipboard(url); }
    /// Fails when there is no folder and none can be made.
    Result<void> openFolder();

signals:
    void itemsChanged();
    void thumbnailsChanged();
    void focusChanged();

private:
    void followRename(const std::filesystem::path& from, const std::filesystem::path& to);
    void completeRename();
    void watchFolder();
    void folderChanged();
    bool createFolder() const;
    Recording recordingOf(const std::filesystem::path& url, WallTime created, std::int64_t size) const;
    void startLoads(const Recording& recording);
    void loadThumbnail(const Recording& recording);
    void loadDuration(const Recording& recording);
    void thumbnailArrived(const std::filesystem::path& url, FrameRef image);
    void durationArrived(const std::filesystem::path& url, std::optional<double> seconds);
    Recording* find(const std::filesystem::path& url);

    const std::filesystem::path folder_;
    Services services_;
    std::vector<Recording> items_;
    std::map<std::filesystem::path, FrameRef> thumbnails_;
    std::optional<std::filesystem::path> focus_;
    internal::MetadataFile metadataFile_;
    internal::RenameIntentFile renameIntent_;
    internal::MetaByName meta_;
    std::set<std::filesystem::path> loadingThumbs_;
    std::set<std::filesystem::path> loadingDurations_;
    QFileSystemWatcher watcher_;
    bool reloadPending_ = false;
    std::atomic<bool> closing_ = false; ///< read on the worker
};

} // namespace velmo
