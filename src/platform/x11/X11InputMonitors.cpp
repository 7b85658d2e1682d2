#include "platform/x11/X11InputMonitors.h"

#include "platform/x11/internal/InputWatcher.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <mutex>
#include <utility>
#include <vector>

namespace velmo {

namespace {

constexpr std::chrono::milliseconds kBetweenCalibrations{10'000};
constexpr int kFirstCalibrations = 5; ///< the narrowest exchange of them counts

} // namespace

/// One of the functions is set.
struct X11InputMonitors::Handlers {
    std::function<void(double)> button;
    std::function<void()> left;
    std::function<void(const InputGesture&)> gesture;
};

struct X11InputMonitors::Entry {
    explicit Entry(Handlers all) : handlers(std::move(all)) {}

    const Handlers handlers;
    std::atomic<bool> ended{false};
};

/// What the tokens, the thread and the owner share. Any thread.
class X11InputMonitors::Registry final : public x11::InputSink {
public:
    using List = std::vector<std::shared_ptr<Entry>>;

    Registry() : wakeFile_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    ~Registry() override { close(wakeFile_); }
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    void add(std::shared_ptr<Entry> entry) {
        change([&](List& list) { list.push_back(std::move(entry)); });
    }
    void remove(const std::shared_ptr<Entry>& entry) {
        entry->ended = true;
        change([&](List& list) { std::erase(list, entry); });
    }
    void stop() {
        stops_ = true;
        wake();
    }
    bool stops() const { return stops_; }
    bool isOver() const { return over_; }

    /// The thread's work, until it is stopped or the server has gone.
    void run(x11::InputWatcher& watcher);

private:
    template <typename Edit>
    void change(Edit edit) {
        {
            const std::lock_guard guard(lock_);
            auto next = std::make_shared<List>(*list_);
            edit(*next);
            list_ = std::move(next);
        }
        wake();
    }
    std::shared_ptr<const List> current() const {
        const std::lock_guard guard(lock_);
        return list_;
    }
    void wake() const {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = write(wakeFile_, &one, sizeof one);
    }
    void sleep(int file, int milliseconds) const;
    static int patience(const x11::InputWatcher& watcher);

    template <typename Call>
    void tell(Call call) const {
        const auto list = current(); // held until all have been told: a token may go meanwhile
        for (const auto& entry : *list) {
            if (!entry->ended) {
                call(entry->handlers);
            }
        }
    }
    void buttonMoved(double time) override {
        tell([time](const Handlers& each) { each.button ? each.button(time) : void(); });
    }
    void leftPressed() override {
        tell([](const Handlers& each) { each.left ? each.left() : void(); });
    }
    void gestureMade(const InputGesture& gesture) override {
        tell([&gesture](const Handlers& each) { each.gesture ? each.gesture(gesture) : void(); });
    }

    int wakeFile_;
    std::atomic<bool> stops_{false};
    std::atomic<bool> over_{false};
    mutable std::mutex lock_;
    std::shared_ptr<const List> list_ = std::make_shared<List>(); // protected by lock_
};

void X11InputMonitors::Registry::sleep(int file, int milliseconds) const {
    std::array<pollfd, 2> waits{{{file, POLLIN, 0}, {wakeFile_, POLLIN, 0}}};
    poll(waits.data(), waits.size(), milliseconds);
    if (waits[1].revents != 0) {
        std::uint64_t wakes = 0;
        [[maybe_unused]] const auto got = read(wakeFile_, &wakes, sizeof wakes);
    }
}

/// Milliseconds for which nothing is to be done.
int X11InputMonitors::Registry::patience(const x11::InputWatcher& watcher) {
    const double most = static_cast<double>(kBetweenCalibrations.count());
    const double untilDelivery = watcher.secondsToDelivery().value_or(most) * 1000;
    return static_cast<int>(std::ceil(std::clamp(untilDelivery, 0.0, most)));
}

void X11InputMonitors::Registry::run(x11::InputWatcher& watcher) {
    using std::chrono::steady_clock;
    bool listens = false;
    steady_clock::time_point calibration;
    while (!stops_ && !watcher.lost()) {
        const bool wanted = !current()->empty();
        const bool begins = wanted && !listens;
        listens = wanted;
        watcher.listen(listens);
        if (begins || (listens && steady_clock::now() >= calibration)) {
            for (int i = 0; i < (begins ? kFirstCalibrations : 1); ++i) {
                watcher.calibrate();
                watcher.deliver(*this);
            }
            calibration = steady_clock::now() + kBetweenCalibrations;
        }
        watcher.deliver(*this);
        sleep(watcher.file(), listens ? patience(watcher) : -1);
    }
    over_ = true;
}

/// A token.
class X11InputMonitors::Monitor final : public InputMonitor {
public:
    Monitor(std::shared_ptr<Registry> registry, std::shared_ptr<Entry> entry)
        : registry_(std::move(registry)), entry_(std::move(entry)) {}
    ~Monitor() override { registry_->remove(entry_); }

private:
    std::shared_ptr<Registry> registry_;
    std::shared_ptr<Entry> entry_;
};

X11InputMonitors::X11InputMonitors(std::optional<std::string> displayName, const Clock& clock)
    : displayName_(std::move(displayName)), clock_(clock) {}

X11InputMonitors::~X11InputMonitors() {
    end();
}

void X11InputMonitors::end() {
    if (thread_.joinable()) {
        registry_->stop();
        thread_.join();
    }
}

bool X11InputMonitors::isRunning() {
    if (registry_ && !registry_->isOver()) {
        return true;
    }
    end();
    std::unique_ptr<x11::InputWatcher> watcher = x11::InputWatcher::open(displayName_, clock_);
    if (!watcher) {
        return false;
    }
    registry_ = std::make_shared<Registry>();
    thread_ = std::thread([registry = registry_, watcher = std::move(watcher)] {
        pthread_setname_np(pthread_self(), "velmo.x11.input");
        registry->run(*watcher);
    });
    return true;
}

InputMonitors::Token X11InputMonitors::add(Handlers handlers) {
    if (!isRunning()) {
        return nullptr;
    }
    auto entry = std::make_shared<Entry>(std::move(handlers));
    registry_->add(entry);
    return std::make_unique<Monitor>(registry_, std::move(entry));
}

InputMonitors::Token X11InputMonitors::addMouseButtons(std::function<void(double time)> moved) {
    return add({.button = std::move(moved), .left = {}, .gesture = {}});
}

InputMonitors::Token X11InputMonitors::addLeftMouseDown(std::function<void()> pressed) {
    return add({.button = {}, .left = std::move(pressed), .gesture = {}});
}

InputMonitors::Token X11InputMonitors::addScrollAndMagnify(std::function<void(const InputGesture&)> made) {
    return add({.button = {}, .left = {}, .gesture = std::move(made)});
}

} // namespace velmo
