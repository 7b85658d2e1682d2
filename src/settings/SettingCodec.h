#pragma once

#include "base/Geometry.h"
#include "settings/DefaultsStore.h"
#include "settings/EnumTable.h"
#include "settings/VideoQuality.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace velmo {

/// How a field's type lies in the store: `read` is absent when the key is or when its value cannot be used.
template <typename T>
struct SettingCodec;

template <>
struct SettingCodec<QString> {
    static std::optional<QString> read(const DefaultsStore& store, const QString& key) { return store.text(key); }
    static void write(DefaultsStore& store, const QString& key, const QString& value) { store.setText(key, value); }
};

template <>
struct SettingCodec<bool> {
    static std::optional<bool> read(const DefaultsStore& store, const QString& key) { return store.boolean(key); }
    static void write(DefaultsStore& store, const QString& key, bool value) { store.setBoolean(key, value); }
};

template <>
struct SettingCodec<double> {
    static std::optional<double> read(const DefaultsStore& store, const QString& key) { return store.real(key); }
    static void write(DefaultsStore& store, const QString& key, double value) { store.setReal(key, value); }
};

template <>
struct SettingCodec<std::int64_t> {
    static std::optional<std::int64_t> read(const DefaultsStore& store, const QString& key) {
        return store.integer(key);
    }
    static void write(DefaultsStore& store, const QString& key, std::int64_t value) { store.setInteger(key, value); }
};

template <SettingsEnum E>
struct SettingCodec<E> {
    static std::optional<E> read(const DefaultsStore& store, const QString& key) {
        const auto raw = store.text(key);
        return raw ? fromRawValue<E>(*raw) : std::nullopt;
    }
    static void write(DefaultsStore& store, const QString& key, E value) { store.setText(key, rawValue(value)); }
};

/// Falls back on the boolean "highResolution" of earlier versions, which nothing writes any more.
template <>
struct SettingCodec<VideoQuality> {
    static std::optional<VideoQuality> read(const DefaultsStore& store, const QString& key);
    static void write(DefaultsStore& store, const QString& key, VideoQuality value);
};

/// A region of the screen in fractions. Absent removes the key; a text outside the screen or too small is not read.
template <>
struct SettingCodec<std::optional<Rect>> {
    static std::optional<std::optional<Rect>> read(const DefaultsStore& store, const QString& key);
    static void write(DefaultsStore& store, const QString& key, const std::optional<Rect>& value);
};

} // namespace velmo
