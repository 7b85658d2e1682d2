#pragma once

#include "base/SerialQueue.h"
#include "classkit/Chapter.h"
#include "classkit/KitItem.h"
#include "library/Library.h"
#include "media/RecordingRepair.h"

#include <QObject>

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmo {

/// Brings into the library what a recording left behind when the program, the machine or the disk went down: gives the
/// video its index, mixes its sound, writes its class folder and enters it with its marks. Main thread; the work is
/// done on a queue of its own, and each recording is entered as it is ready. Killed at any moment it can begin anew.
class Recovery final : public QObject {
    Q_OBJECT

public:
    struct Services {
        std::unique_ptr<SerialQueue> worker;
        std::function<void(const std::filesystem::path&)> mix; ///< called on `worker`; blocks
        std::function<void(const std::string&)> log;           ///< called on `worker`
    };

    /// `library` is borrowed and outlives this object.
    Recovery(Library& library, Services services);
    /// Waits for the recording in hand.
    ~Recovery() override;

    /// Once, before anything is recorded. `items` and `copyFiles` are the class material as it stands.
    void start(std::vector<KitItem> items, bool copyFiles);

    bool isDone() const { return done_; }
    /// In the order in which they were entered.
    const std::vector<std::filesystem::path>& recovered() const { return recovered_; }
    /// How many could not be made whole now; they are left for the next launch.
    int failures() const { return failures_; }

signals:
    /// All that was left behind has been looked at. Also when there was nothing.
    void finished();

private:
    void work(const std::vector<KitItem>& items, bool copyFiles);
    void recover(const std::filesystem::path& journal, const std::vector<KitItem>& items, bool copyFiles);
    void enter(const RepairedRecording& recording);
    void tellMain(std::function<void()> news);

    Library& library_;
    Services services_;
    std::vector<std::filesystem::path> recovered_;
    int failures_ = 0;
    bool done_ = false;
    std::atomic<bool> closing_ = false; ///< read on the worker
};

} // namespace velmo
