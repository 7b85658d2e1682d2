#include "classkit/ClassKit.h"

#include "classkit/KitJson.h"
#include "classkit/internal/FilePath.h"

#include <QJsonDocument>

#include <cassert>
#include <set>
#include <system_error>
#include <utility>

namespace velmo {

namespace {

ClassKit* sharedKit = nullptr;

const QString kItemsKey = QStringLiteral("kit.items");
const QString kCopyKey = QStringLiteral("kit.copiar");

std::vector<KitItem> storedItems(const DefaultsStore& store) {
    const auto json = store.data(kItemsKey);
    return json ? itemsFromJson(QJsonDocument::fromJson(*json).array()).value_or(std::vector<KitItem>())
                : std::vector<KitItem>();
}

bool storedCopyFiles(const DefaultsStore& store) {
    return store.boolean(kCopyKey).value_or(true);
}

} // namespace

ClassKit::ClassKit(DefaultsStore& store, KitServices services)
    : store_(store), services_(std::move(services)), items_(storedItems(store)), copyFiles_(storedCopyFiles(store)) {}

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
        changed();
    }
    setCopyFiles(storedCopyFiles(store_));
}

void ClassKit::addFiles() {
    services_.toFront();
    services_.chooser.chooseFiles(QStringLiteral("Agregar material a la clase"), QStringLiteral("Agregar"),
                                  [this](const std::vector<std::filesystem::path>& files) { add(files); });
}

void ClassKit::add(const std::vector<std::filesystem::path>& files) {
    std::set<QString> present;
    for (const KitItem& item : items_) {
        present.insert(item.location);
    }
    const std::size_t before = items_.size();
    for (const std::filesystem::path& file : files) {
        const std::filesystem::path path = internal::withoutEndingSlash(file);
        const QString location = QString::fromStdString(path.native());
        if (!present.contains(location)) {
            items_.push_back(
                {QUuid::createUuid(), KitItem::Kind::file, QString::fromStdString(path.stem().native()), location});
        }
    }
    if (items_.size() > before) {
        changed();
    }
}

bool ClassKit::add(const QString& web) {
    auto item = KitItem::web(web);
    if (!item) {
        return false;
    }
    items_.push_back(std::move(*item));
    changed();
    return true;
}

void ClassKit::setTitle(const QUuid& id, const QString& title) {
    for (KitItem& item : items_) {
        if (item.id == id) {
            item.title = title;
            changed();
            return;
        }
    }
}

void ClassKit::remove(const KitItem& item) {
    std::erase_if(items_, [id = item.id](const KitItem& each) { return each.id == id; });
    changed();
}

void ClassKit::removeAll() {
    items_.clear();
    changed();
}

void ClassKit::open(const KitItem& item) {
    const KitItem opened = item; // `item` may be one of ours, and the list may change below
    if (opened.kind == KitItem::Kind::file) {
        const std::filesystem::path file = internal::pathOf(opened.location);
        std::error_code ignored;
        if (!std::filesystem::exists(file, ignored)) {
            services_.flash(QStringLiteral("No se encuentra «") + opened.title + QStringLiteral("»"));
            return;
        }
        services_.files.open(file);
    } else {
        const auto url = opened.url();
        if (!url) {
            return;
        }
        services_.files.openAddress(url->toEncoded().toStdString());
    }
    services_.addChapter(opened.title, opened.location);
}

void ClassKit::save() {
    store_.setData(kItemsKey, QJsonDocument(jsonFromItems(items_)).toJson(QJsonDocument::Compact));
}

void ClassKit::changed() {
    save();
    emit itemsChanged();
}

} // namespace velmo
