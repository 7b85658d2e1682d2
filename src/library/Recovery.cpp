#include "library/Recovery.h"

#include "classkit/ClassKit.h"
#include "library/internal/LeftoverFiles.h"

#include <optional>
#include <set>
#include <utility>

namespace velmo {

namespace {

std::vector<Chapter> chaptersFrom(const std::vector<RecordingMark>& marks) {
    std::vector<Chapter> chapters;
    for (const RecordingMark& mark : marks) {
        chapters.push_back({mark.time, QString::fromStdString(mark.title),
                            mark.location ? std::optional(QString::fromStdString(*mark.location)) : std::nullopt});
    }
    return chapters;
}

std::optional<std::filesystem::path> nextJournal(const std::filesystem::path& folder,
                                                 const std::set<std::filesystem::path>& seen) {
    for (const std::filesystem::path& journal : journalsIn(folder)) {
        if (!seen.contains(journal)) {
            return journal;
        }
    }
    return std::nullopt;
}

} // namespace

Recovery::Recovery(Library& library, Services services) : library_(library), services_(std::move(services)) {}

Recovery::~Recovery() {
    closing_ = true;
    services_.worker.reset();
}

void Recovery::start(std::vector<KitItem> items, bool copyFiles) {
    services_.worker->async([this, items = std::move(items), copyFiles] { work(items, copyFiles); });
}

// On the worker.
void Recovery::work(const std::vector<KitItem>& items, bool copyFiles) {
    internal::removeLeftovers(library_.folder(), std::filesystem::file_time_type::clock::now());
    // Asked for anew each time: a recording that the user renames takes its journal along.
    std::set<std::filesystem::path> seen;
    while (const auto journal = closing_ ? std::nullopt : nextJournal(library_.folder(), seen)) {
        seen.insert(*journal);
        recover(*journal, items, copyFiles);
    }
    tellMain([this] {
        done_ = true;
        emit finished();
    });
}

// On the worker.
void Recovery::recover(const std::filesystem::path& journal, const std::vector<KitItem>& items, bool copyFiles) {
    auto repaired = repairRecording(journal);
    if (!repaired) {
        services_.log("recuperación: " + journal.filename().native() + " falló: " + repaired.error().text);
        tellMain([this] { ++failures_; });
        return;
    }
    if (!repaired.value()) {
        return;
    }
    const RepairedRecording& recording = *repaired.value();
    services_.log("recuperación: " + recording.video.filename().native() + ", " + std::to_string(recording.seconds) +
                  " s");
    services_.mix(recording.video);
    const std::vector<Chapter> chapters = chaptersFrom(recording.marks);
    if (ClassKit::chaptersOf(recording.video) != chapters) {
        ClassKit::writeFolder(recording.video, items, chapters, copyFiles);
    }
    tellMain([this, recording] { enter(recording); });
}

void Recovery::enter(const RepairedRecording& recording) {
    std::vector<double> markers;
    QStringList titles;
    for (const RecordingMark& mark : recording.marks) {
        markers.push_back(mark.time);
        titles << QString::fromStdString(mark.title);
    }
    if (library_.add(recording.video, recording.seconds, markers, titles)) {
        forget(recording);
    }
    recovered_.push_back(recording.video);
}

void Recovery::tellMain(std::function<void()> news) {
    if (!closing_) {
        QMetaObject::invokeMethod(this, std::move(news), Qt::QueuedConnection);
    }
}

} // namespace velmo
