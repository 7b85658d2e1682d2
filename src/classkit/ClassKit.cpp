#include "classkit/ClassKit.h"

#include "base/AtomicFile.h"
#include "classkit/KitJson.h"

#include <QJsonDocument>

#include <cassert>
#include <system_error>

namespace velmo {

namespace {

ClassKit* sharedKit = nullptr;

const QString kItemsKey = QStringLiteral("kit.items");
const QString kCopyKey = QStringLiteral("kit.copiar");
constexpr const char* kFolderSuffix = " · material";
constexpr const char* kRecordName = ".clase.json";

std::vector<KitItem> storedItems(const DefaultsStore& store) {
    const auto json = store.data(kItemsKey);
    return json ? itemsFromJson(QJsonDocument::fromJson(*json).array()).value_or(std::vector<KitItem>())
                : std::vector<KitItem>();
}

bool storedCopyFiles(const DefaultsStore& store) {
    return store.boolean(kCopyKey).value_or(true);
}

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

} // namespace

ClassKit::ClassKit(DefaultsStore& store)
    : store_(store), items_(storedItems(store)), copyFiles_(storedCopyFiles(store)) {}

ClassKit::~ClassKit() {
    if (sharedKit == this) {
        sharedKit = nullptr;
    }
}

ClassKit& ClassKit::shared() {
    assert(sharedKit != nullptr);
    return *sharedKit;
}

void ClassKit::setShared(ClassKit* kit) {
    sharedKit = kit;
}

void ClassKit::setCopyFiles(bool copy) {
    const bool changes = copy != copyFiles_;
    copyFiles_ = copy;
    store_.setBoolean(kCopyKey, copy);
    if (changes) {
        emit copyFilesChanged();
    }
}

void ClassKit::reload() {
    auto stored = storedItems(store_);
    if (stored != items_) {
        items_ = std::move(stored);
        save();
        emit itemsChanged();
    }
    setCopyFiles(storedCopyFiles(store_));
}

void ClassKit::save() {
    store_.setData(kItemsKey, QJsonDocument(jsonFromItems(items_)).toJson(QJsonDocument::Compact));
}

std::filesystem::path ClassKit::folder(const std::filesystem::path& video) {
    return video.parent_path() / (video.stem().native() + kFolderSuffix);
}

void ClassKit::renameFolder(const std::filesystem::path& from, const std::filesystem::path& to) {
    const std::filesystem::path target = folder(to);
    if (!isThere(folder(from)) || isThere(target)) {
        return;
    }
    std::error_code failure;
    std::filesystem::rename(folder(from), target, failure);
    const auto json = failure ? Result<std::string>(Error{}) : readWholeFile(target / kRecordName);
    auto record = json ? ClassData::fromJson(QByteArray::fromStdString(json.value())) : std::nullopt;
    if (!record) {
        return;
    }
    record->video = QString::fromStdString(to.filename().native());
    // The folder has moved already; a record that cannot be written keeps its old name of the video.
    static_cast<void>(writeFileAtomically(target / kRecordName, record->toJson().toStdString()));
}

} // namespace velmo
