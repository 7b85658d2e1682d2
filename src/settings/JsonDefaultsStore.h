#pragma once

#include "base/Result.h"
#include "settings/DefaultsStore.h"

#include <QJsonObject>

#include <filesystem>
#include <functional>
#include <string>

namespace velmo {

/// The store as one JSON file. Main thread.
///
/// Every write that changes something is on the disk, whole, when it returns. A write that fails (full disk,
/// read-only folder) is logged, holds in memory, and is made up for by the next one. A file that cannot be read
/// (cut short, empty, no JSON object) is renamed to itself + ".damaged-" + n, and the store begins empty.
class JsonDefaultsStore final : public DefaultsStore {
public:
    using Log = std::function<void(const std::string& line)>;

    /// `log` hears of what the user should not be bothered with; may be empty.
    explicit JsonDefaultsStore(std::filesystem::path file, Log log = {});

    /// "velmo-studio/defaults.json" in the user's configuration folder.
    static std::filesystem::path standardFile();

    QJsonValue any(const QString& key) const override;
    void setAny(const QString& key, const QJsonValue& value) override;
    void setAll(const QJsonObject& values) override;

    const std::filesystem::path& file() const { return file_; }

private:
    /// Whether that changed something.
    bool keep(const QString& key, const QJsonValue& value);
    void load();
    void save();
    void log(const std::string& what, const Error& error) const;

    std::filesystem::path file_;
    Log log_;
    QJsonObject values_;
    bool behind_ = false; ///< the file lacks something that `values_` has
};

} // namespace velmo
