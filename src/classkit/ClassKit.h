#pragma once

#include "classkit/ClassData.h"
#include "classkit/KitItem.h"
#include "settings/DefaultsStore.h"

#include <QObject>

#include <filesystem>
#include <vector>

namespace velmo {

/// The material that a teacher gathers before a class, kept between launches in the store under "kit.items" and
/// "kit.copiar". Main thread. The static functions work on the class folder of a video, touch no shared state and
/// run on any thread.
class ClassKit final : public QObject {
    Q_OBJECT

public:
    /// `store` is borrowed and must outlive this object.
    explicit ClassKit(DefaultsStore& store);
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

    /// The class folder that belongs to `video`, whether or not it exists: its name without extension + " · material".
    static std::filesystem::path folder(const std::filesystem::path& video);
    /// Lets the class folder follow a video that was renamed. Does nothing without a folder under the old name or
    /// with one under the new; a record that cannot be read moves as it is.
    static void renameFolder(const std::filesystem::path& from, const std::filesystem::path& to);

signals:
    void itemsChanged();
    void copyFilesChanged();

private:
    void save();

    DefaultsStore& store_;
    std::vector<KitItem> items_;
    bool copyFiles_;
};

} // namespace velmo
