#pragma once

#include "library/Library.h"
#include "session/SessionServices.h"

namespace velmo {

/// The library as a session sees it. Main thread.
class LibraryAdapter final : public LibraryStore {
public:
    /// Borrowed.
    explicit LibraryAdapter(Library& library) : library_(library) {}

    std::filesystem::path folder() const override { return library_.folder(); }
    std::filesystem::path newRecordingURL() override { return library_.newRecordingURL(); }
    void add(const std::filesystem::path& url, double duration, const std::vector<double>& markers,
             const QStringList& titles) override {
        library_.add(url, duration, markers, titles);
    }

private:
    Library& library_;
};

} // namespace velmo
