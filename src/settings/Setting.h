#pragma once

#include "settings/SettingCodec.h"

#include <QString>

#include <utility>

namespace velmo {

class Prefs;

/// What all fields of `Prefs` have in common.
class SettingBase {
public:
    SettingBase(const SettingBase&) = delete;
    SettingBase& operator=(const SettingBase&) = delete;

    const QString& key() const { return key_; }

protected:
    SettingBase(Prefs& prefs, const char* key) : prefs_(prefs), key_(QString::fromLatin1(key)) {}
    ~SettingBase() = default;

    DefaultsStore& store() const;
    void announce();

private:
    Prefs& prefs_;
    QString key_;
};

/// One field of `Prefs`: read from the store once, when it is made, and written through at every assignment.
/// An assignment that changes nothing is still written (a wrong value in the store ends there) but not announced.
template <typename T>
class Setting final : public SettingBase {
public:
    Setting(Prefs& prefs, const char* key, T fallback)
        : SettingBase(prefs, key), value_(SettingCodec<T>::read(store(), this->key()).value_or(std::move(fallback))) {}

    const T& value() const { return value_; }
    operator const T&() const { return value_; }

    Setting& operator=(T value) {
        const bool changes = !(value == value_);
        value_ = std::move(value);
        SettingCodec<T>::write(store(), key(), value_);
        if (changes) {
            announce();
        }
        return *this;
    }

    /// Assigns the other's value where it differs.
    void takeOver(const Setting& other) {
        if (!(other.value_ == value_)) {
            *this = other.value_;
        }
    }

private:
    T value_;
};

} // namespace velmo
