#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string_view>

namespace velmo {

/// The diagnostics log: a text file that only grows, one line an entry: ISO 8601 time in UTC, a blank, the text.
///
/// Any thread, no lock: each entry is one write at the end of the file, so entries of several threads never mix.
/// A failure to write is silent. For starts, stops and failures, never for each frame.
class DiagLog {
public:
    using WallClock = std::function<std::chrono::system_clock::time_point()>;

    /// Makes the folder of `file`; a failure is ignored.
    explicit DiagLog(std::filesystem::path file, WallClock now = std::chrono::system_clock::now);

    /// A text with line feeds is written as it stands.
    void append(std::string_view text) const;

    const std::filesystem::path& file() const { return file_; }

    /// The log of this process, "app.log" in `logFolder()`, made at first use.
    static const DiagLog& shared();
    /// Appends to `shared()`.
    static void write(std::string_view text);

private:
    std::filesystem::path file_;
    WallClock now_;
};

} // namespace velmo
