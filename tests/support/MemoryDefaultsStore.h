#pragma once

#include "settings/DefaultsStore.h"

#include <QJsonObject>

namespace velmo::test {

/// A store without a disk. Counts the writes, so that a test can tell a write from none.
class MemoryDefaultsStore final : public DefaultsStore {
public:
    MemoryDefaultsStore() = default;
    explicit MemoryDefaultsStore(QJsonObject values) : values_(std::move(values)) {}

    QJsonValue any(const QString& key) const override { return values_.value(key); }
    void setAny(const QString& key, const QJsonValue& value) override {
        ++writes_;
        values_.insert(key, value.isNull() ? QJsonValue(QJsonValue::Undefined) : value);
    }

    const QJsonObject& values() const { return values_; }
    int writes() const { return writes_; }

private:
    QJsonObject values_;
    int writes_ = 0;
};

} // namespace velmo::test
