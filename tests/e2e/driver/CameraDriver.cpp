// Loaded into the program under test, plays the driver of one camera as a file of orders says. The file is "orders" in
// the folder that VELMO_CAMERA names, is read again and again, and has a line for each of these:
//
//   node PATH      the camera is plugged in as this node; without the line it is not
//   busy           another program holds it
//   rate N         pictures a second; 0: it has fallen silent
//   picture PATH   a JPEG file; of several one after the other is shown, again and again
//
// How often the camera was started is written to "starts" beside it.

#include "integration/cameras/FakeVideoDevice.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace velmo::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kTick = std::chrono::milliseconds(5);
constexpr std::size_t kBuffers = 2; // pictures that nobody takes are lost
constexpr const char* kProgram = "velmo-studio";

struct Orders {
    std::string node;
    bool busy = false;
    double rate = 30;
    std::vector<std::string> pictures;
};

Orders readOrders(const std::filesystem::path& path) {
    Orders orders;
    std::ifstream file(path);
    for (std::string word; file >> word;) {
        if (word == "busy") {
            orders.busy = true;
        } else if (word == "rate") {
            file >> orders.rate;
        } else if (word == "node") {
            file >> orders.node;
        } else if (word == "picture") {
            file >> orders.pictures.emplace_back();
        }
    }
    return orders;
}

class Driver {
public:
    explicit Driver(std::filesystem::path folder) : folder_(std::move(folder)) {}

    [[noreturn]] void run() {
        for (;; std::this_thread::sleep_for(kTick)) {
            obey(readOrders(folder_ / "orders"));
            countStarts();
        }
    }

private:
    void obey(const Orders& orders) {
        if (orders.node != node_) {
            device_.reset();
            startsBefore_ = starts_;
            node_ = orders.node;
            if (!node_.empty()) {
                device_.emplace(node_, "Cámara de prueba", "usb-0000:00:14.0-1");
            }
        }
        if (!device_) {
            return;
        }
        device_->setBusy(orders.busy);
        if (orders.rate <= 0 || orders.pictures.empty() || Clock::now() < due_) {
            return;
        }
        due_ =
            Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / orders.rate));
        if (device_->waiting() < kBuffers) {
            device_->push(picture(orders.pictures[next_++ % orders.pictures.size()]));
        }
    }

    const Bytes& picture(const std::string& path) {
        const auto [entry, isNew] = files_.try_emplace(path);
        if (isNew) {
            std::ifstream file(path, std::ios::binary);
            entry->second.assign(std::istreambuf_iterator<char>(file), {});
        }
        return entry->second;
    }

    void countStarts() {
        const int starts = startsBefore_ + (device_ ? device_->starts() : 0);
        if (starts != starts_) {
            starts_ = starts;
            std::ofstream(folder_ / "starts") << starts_ << '\n';
        }
    }

    const std::filesystem::path folder_;
    std::string node_;
    std::optional<FakeVideoDevice> device_;
    std::map<std::string, Bytes> files_;
    Clock::time_point due_;
    std::size_t next_ = 0;
    int starts_ = 0;
    int startsBefore_ = 0; // of the cameras that were plugged in before
};

// Not in what the program starts. The thread lives until the process ends.
[[gnu::constructor]] void load() {
    const char* const folder = std::getenv("VELMO_CAMERA");
    if (folder != nullptr && std::string(program_invocation_short_name) == kProgram) {
        std::thread([folder = std::filesystem::path(folder)] { Driver(folder).run(); }).detach();
    }
}

} // namespace
} // namespace velmo::test
