#include "settings/DefaultsStore.h"

#include <QJsonObject>

#include <cmath>

namespace velmo {

namespace {

// JSON has no bytes: an object with this one key stands for them.
const QString kDataMember = QStringLiteral("base64");

} // namespace

void DefaultsStore::setAll(const QJsonObject& values) {
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
        setAny(entry.key(), entry.value());
    }
}

std::optional<QString> DefaultsStore::text(const QString& key) const {
    const QJsonValue value = any(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<std::int64_t> DefaultsStore::integer(const QString& key) const {
    const QJsonValue value = any(key);
    if (!value.isDouble()) {
        return std::nullopt;
    }
    // Two different fallbacks agree only when neither was used.
    const qint64 whole = value.toInteger(0);
    return whole == value.toInteger(1) ? std::optional<std::int64_t>(whole) : std::nullopt;
}

std::optional<bool> DefaultsStore::boolean(const QString& key) const {
    const QJsonValue value = any(key);
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> DefaultsStore::real(const QString& key) const {
    const QJsonValue value = any(key);
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<QByteArray> DefaultsStore::data(const QString& key) const {
    const QJsonObject object = any(key).toObject();
    if (object.size() != 1 || !object.value(kDataMember).isString()) {
        return std::nullopt;
    }
    auto decoded = QByteArray::fromBase64Encoding(object.value(kDataMember).toString().toLatin1(),
                                                  QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(std::move(*decoded)) : std::nullopt;
}

void DefaultsStore::setText(const QString& key, const QString& value) {
    setAny(key, value);
}

void DefaultsStore::setInteger(const QString& key, std::int64_t value) {
    setAny(key, static_cast<qint64>(value));
}

void DefaultsStore::setBoolean(const QString& key, bool value) {
    setAny(key, value);
}

void DefaultsStore::setReal(const QString& key, double value) {
    if (std::isfinite(value)) {
        setAny(key, value);
    } else {
        remove(key);
    }
}

void DefaultsStore::setData(const QString& key, const QByteArray& value) {
    setAny(key, QJsonObject{{kDataMember, QString::fromLatin1(value.toBase64())}});
}

} // namespace velmo
