#pragma once

#include "classkit/ClassData.h"
#include "classkit/KitItem.h"
#include "classkit/KitServices.h"
#include "settings/DefaultsStore.h"

#include <QObject>

#include <filesystem>
#include <optional>
#include <vector>

namespace velmo {

/// The material that a teacher gathers before a class, kept between launches in the store under "kit.items" and
/// "kit.copiar". Main thread. The static functions work on the class folder of a video, touch no shared state, run on
/// any thread and block on the disk. What fails in a class folder is left out, and what succeeded stays.
class ClassKit final : public QObject {
    Q_OBJECT

public:
    /// `store` is borrowed and must outlive this object.
    ClassKit(DefaultsStore& store, KitServices services);
    ~ClassKit() override;

    /// The program's one object, registered by the composition root before anything asks for it.
    static ClassKit& shared();
    /// Borrowed; null takes the registration back.
    static void setShared(ClassKit* kit);

    /// In the user's order of adding.
    const std::vector<KitItem>& items() const { return items_; }
    /// Whether a copy of the files is kept with the class.
    bool copyFiles() const { return copyFiles_; }
    void setCopyFiles(bool copy);

    /// Brings the list and the switch up to what the store holds now.
    void reload();
    /// Lets the user choose files to add.
    void addFiles();
    /// Files that were in the list before this call are skipped.
    void add(const std::vector<std::filesystem::path>& files);
    /// False for a text that is no web address; the list is then as it was.
    bool add(const QString& web);
    /// Nothing happens without an item of that id.
    void setTitle(const QUuid& id, const QString& title);
    void remove(const KitItem& item);
    void removeAll();
    /// Opens it with its default application and leaves a chapter. A file that has gone is told to the user, an
    /// address that does not parse is left alone; neither makes a chapter.
    void open(const KitItem& item);

    /// The class folder that belongs to `video`, whether or not it exists: its name without extension + " · material".
    static std::filesystem::path folder(const std::filesystem::path& video);
    /// Makes the class folder with its record, its pages and, if wanted, copies of the files. It comes under its name
    /// when it is whole. Absent, and nothing made, without items and chapters.
    static std::optional<std::filesystem::path> writeFolder(const std::filesystem::path& video,
                                                            const std::vector<KitItem>& items,
                                                            const std::vector<Chapter>& chapters, bool copyFiles);
    /// Lets the class folder follow a video that was renamed. Does nothing without a folder under the old name or
    /// with one under the new; a record that cannot be read moves as it is.
    static void renameFolder(const std::filesystem::path& from, const std::filesystem::path& to);
    /// Writes the record and the pages of a class folder again, for the name that the video has now. Does nothing
    /// without a record that can be read.
    static void renewFolder(const std::filesystem::path& video);
    /// The chapters in the record of a video's class folder; absent without one that can be read.
    static std::optional<std::vector<Chapter>> chaptersOf(const std::filesystem::path& video);
    /// Keeps the chapters from `start` to `end`, both in seconds and included, and counts their times from `start`.
    static void trimChapters(const std::filesystem::path& video, double start, double end);
    /// The lines of time and title that video platforms read as chapters, from "00:00 Inicio" on. A chapter that does
    /// not begin at least one whole second after the line before it is left out. No line feed at the end.
    static QString youtubeIndex(const std::vector<Chapter>& chapters);

signals:
    void itemsChanged();
    void copyFilesChanged();

private:
    void save();
    void changed();

    DefaultsStore& store_;
    KitServices services_;
    std::vector<KitItem> items_;
    bool copyFiles_;
};

} // namespace velmo
