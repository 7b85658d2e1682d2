#include "settings/JsonDefaultsStore.h"

#include "base/AtomicFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QStandardPaths>

#include <cerrno>
#include <system_error>
#include <utility>

namespace velmo {

JsonDefaultsStore::JsonDefaultsStore(std::filesystem::path file, Log log)
    : file_(std::move(file)), log_(std::move(log)) {
    load();
}

std::filesystem::path JsonDefaultsStore::standardFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::filesystem::path(QFile::encodeName(folder).toStdString()) / "velmo-studio" / "defaults.json";
}

QJsonValue JsonDefaultsStore::any(const QString& key) const {
    return values_.value(key);
}

void JsonDefaultsStore::setAny(const QString& key, const QJsonValue& value) {
    if (keep(key, value) || behind_) {
        save();
    }
}

void JsonDefaultsStore::setAll(const QJsonObject& values) {
    bool changes = false;
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
        changes |= keep(entry.key(), entry.value());
    }
    if (changes || behind_) {
        save();
    }
}

bool JsonDefaultsStore::keep(const QString& key, const QJsonValue& value) {
    const QJsonValue kept = value.isNull() ? QJsonValue(QJsonValue::Undefined) : value;
    if (kept == values_.value(key)) {
        return false;
    }
    values_.insert(key, kept); // an undefined value removes the key
    return true;
}

void JsonDefaultsStore::load() {
    const auto content = readWholeFile(file_);
    if (!content && content.error().code == ENOENT) {
        return;
    }
    const QJsonDocument document =
        content ? QJsonDocument::fromJson(QByteArray::fromStdString(content.value())) : QJsonDocument();
    if (document.isObject()) {
        values_ = document.object();
        return;
    }
    if (const auto aside = keepDamagedFileAside(file_)) {
        log("defaults file unreadable, kept as " + aside.value().string(), content ? Error{} : content.error());
    } else {
        log("defaults file unreadable and stuck", aside.error());
    }
}

void JsonDefaultsStore::save() {
    std::error_code ignored; // writing says what is wrong
    std::filesystem::create_directories(file_.parent_path(), ignored);
    const QByteArray json = QJsonDocument(values_).toJson(QJsonDocument::Indented);
    const auto written = writeFileAtomically(file_, {json.constData(), static_cast<std::size_t>(json.size())});
    behind_ = !written;
    if (!written) {
        log("defaults not written", written.error());
    }
}

void JsonDefaultsStore::log(const std::string& what, const Error& error) const {
    if (log_) {
        log_(error.text.empty() ? what : what + ": " + error.text);
    }
}

} // namespace velmo
