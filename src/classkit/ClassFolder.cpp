#include "base/AtomicFile.h"
#include "classkit/ClassKit.h"
#include "classkit/internal/ClassPage.h"
#include "classkit/internal/CopyItem.h"
#include "classkit/internal/FilePath.h"

#include <algorithm>
#include <cmath>
#include <system_error>

// The class folder of a video: everything here works on its arguments and the disk alone.

namespace velmo {

namespace {

constexpr const char* kFolderSuffix = " · material";
constexpr const char* kPartSuffix = ".velmo-parte"; ///< of a folder that is not whole yet
constexpr const char* kRecordName = ".clase.json";
constexpr const char* kMaterialName = "Material";

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

std::filesystem::path freeName(const std::filesystem::path& folder, const std::filesystem::path& source) {
    const std::string extension = source.extension().native();
    const std::string afterDot = extension.empty() ? extension : extension.substr(1);
    std::filesystem::path name = folder / source.filename();
    for (int n = 2; isThere(name); ++n) {
        name = folder / (source.stem().native() + " (" + std::to_string(n) + ")." + afterDot);
    }
    return name;
}

std::map<QUuid, QString> copyMaterial(const std::vector<KitItem>& items, const std::filesystem::path& folder) {
    std::map<QUuid, QString> copied;
    const std::filesystem::path material = folder / kMaterialName;
    std::error_code ignored;
    for (const KitItem& item : items) {
        const auto source = internal::withoutEndingSlash(internal::pathOf(item.location));
        if (item.kind != KitItem::Kind::file || !std::filesystem::exists(source, ignored)) {
            continue;
        }
        std::filesystem::create_directories(material, ignored);
        const std::filesystem::path target = freeName(material, source);
        if (internal::copyItem(source, target)) {
            copied[item.id] = QString::fromStdString((kMaterialName / target.filename()).native());
        }
    }
    if (copied.empty()) {
        std::filesystem::remove(material, ignored); // only when it is empty
    }
    return copied;
}

/// An empty hidden folder in which the one of that name is put together. What a process that was killed has left there
/// goes. Without room for such a name it is put together where it belongs.
std::filesystem::path freshPlaceFor(const std::filesystem::path& target) {
    const std::filesystem::path place = target.parent_path() / ("." + target.filename().native() + kPartSuffix);
    std::error_code failure;
    std::filesystem::remove_all(place, failure);
    std::filesystem::create_directories(place, failure);
    if (!failure) {
        return place;
    }
    std::filesystem::create_directories(target, failure);
    return target;
}

std::optional<ClassData> readRecord(const std::filesystem::path& folder) {
    const auto json = readWholeFile(folder / kRecordName);
    return json ? ClassData::fromJson(QByteArray::fromStdString(json.value())) : std::nullopt;
}

/// Each of the three files by itself: one that cannot be written does not keep the others back.
void writeFiles(const ClassData& data, const std::filesystem::path& folder) {
    static_cast<void>(writeFileAtomically(folder / kRecordName, data.toJson().toStdString()));
    internal::writePages(data, folder);
}

} // namespace

std::filesystem::path ClassKit::folder(const std::filesystem::path& video) {
    return video.parent_path() / (video.stem().native() + kFolderSuffix);
}

std::optional<std::filesystem::path> ClassKit::writeFolder(const std::filesystem::path& video,
                                                           const std::vector<KitItem>& items,
                                                           const std::vector<Chapter>& chapters, bool copyFiles) {
    if (items.empty() && chapters.empty()) {
        return std::nullopt;
    }
    const std::filesystem::path target = folder(video);
    const std::filesystem::path place = isThere(target) ? target : freshPlaceFor(target);
    ClassData data{QString::fromStdString(video.filename().native()), items, chapters, {}};
    if (copyFiles) {
        data.copied = copyMaterial(items, place);
    }
    writeFiles(data, place);
    if (place != target) {
        std::error_code ignored;
        std::filesystem::rename(place, target, ignored);
        syncFolder(target.parent_path());
    }
    return target;
}

void ClassKit::renameFolder(const std::filesystem::path& from, const std::filesystem::path& to) {
    const std::filesystem::path target = folder(to);
    if (!isThere(folder(from)) || isThere(target)) {
        return;
    }
    std::error_code failure;
    std::filesystem::rename(folder(from), target, failure);
    if (!failure) {
        renewFolder(to);
    }
}

void ClassKit::renewFolder(const std::filesystem::path& video) {
    if (auto record = readRecord(folder(video))) {
        record->video = QString::fromStdString(video.filename().native());
        writeFiles(*record, folder(video));
    }
}

std::optional<std::vector<Chapter>> ClassKit::chaptersOf(const std::filesystem::path& video) {
    auto record = readRecord(folder(video));
    return record ? std::optional(std::move(record->chapters)) : std::nullopt;
}

void ClassKit::trimChapters(const std::filesystem::path& video, double start, double end) {
    auto record = readRecord(folder(video));
    if (!record) {
        return;
    }
    std::erase_if(record->chapters,
                  [start, end](const Chapter& chapter) { return !(start <= chapter.time && chapter.time <= end); });
    for (Chapter& chapter : record->chapters) {
        chapter.time -= start;
    }
    writeFiles(*record, folder(video));
}

QString ClassKit::youtubeIndex(const std::vector<Chapter>& chapters) {
    QString index = QStringLiteral("00:00 Inicio");
    double last = 0; // whole seconds
    for (const Chapter& chapter : internal::sortedByTime(chapters)) {
        const double second = std::trunc(chapter.time);
        if (second > last) {
            index += u'\n' + internal::timeLabel(chapter.time) + u' ' + chapter.title;
            last = second;
        }
    }
    return index;
}

} // namespace velmo
