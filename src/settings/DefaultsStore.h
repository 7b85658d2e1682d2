#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <optional>

namespace velmo {

/// The flat map from key to value in which everything that the user has chosen is kept. Main thread.
///
/// A key that is absent is not a key that holds false, 0 or an empty text. The typed readers count a value of
/// another type as absent and leave it in place. Writes are durable when they return, as far as the disk allows.
class DefaultsStore {
public:
    virtual ~DefaultsStore() = default;

    /// Undefined when the key is absent. Lists and maps come as JSON arrays and objects.
    virtual QJsonValue any(const QString& key) const = 0;
    /// Undefined or null removes the key.
    virtual void setAny(const QString& key, const QJsonValue& value) = 0;
    /// Each as by `setAny`; where the store can, in one write.
    virtual void setAll(const QJsonObject& values);

    bool contains(const QString& key) const { return !any(key).isUndefined(); }
    void remove(const QString& key) { setAny(key, QJsonValue(QJsonValue::Undefined)); }

    std::optional<QString> text(const QString& key) const;
    /// A whole number, also when it was written as a double.
    std::optional<std::int64_t> integer(const QString& key) const;
    std::optional<bool> boolean(const QString& key) const;
    /// Any number.
    std::optional<double> real(const QString& key) const;
    std::optional<QByteArray> data(const QString& key) const;

    void setText(const QString& key, const QString& value);
    void setInteger(const QString& key, std::int64_t value);
    void setBoolean(const QString& key, bool value);
    void setReal(const QString& key, double value);
    void setData(const QString& key, const QByteArray& value);
};

} // namespace velmo
