#pragma once

#include "Calls.h"
#include "session/MainThreadResult.h"
#include "session/SessionServices.h"
#include "settings/DefaultsStore.h"

#include <QHash>

#include <deque>
#include <map>
#include <utility>

namespace velmo::test {

class MemoryDefaults final : public DefaultsStore {
public:
    QJsonValue any(const QString& key) const override { return values_.value(key, QJsonValue(QJsonValue::Undefined)); }
    void setAny(const QString& key, const QJsonValue& value) override { values_[key] = value; }

private:
    QHash<QString, QJsonValue> values_;
};

/// Answers at once from `answers`; with none left the question stands until `answer`.
class FakeAlerts final : public AlertPort {
public:
    explicit FakeAlerts(Calls& calls) : calls_(calls) {}

    QCoro::Task<void> inform(QString message, QString informative) override {
        const QStringList none;
        calls_.push_back(("inform " + message + " | " + informative).toStdString());
        const int ignored = co_await wait();
        Q_UNUSED(ignored);
    }
    QCoro::Task<int> ask(QString message, QString informative, QStringList buttons, bool destructive) override {
        calls_.push_back(
            ("ask " + message + " | " + informative + " | " + buttons.join(',') + (destructive ? " destructive" : ""))
                .toStdString());
        const int chosen = co_await wait();
        co_return chosen;
    }

    void answer(int button) {
        auto pending = std::exchange(pending_, {});
        pending(button);
    }
    void drop() { pending_ = {}; }
    bool stands() const { return bool(pending_); }

    std::deque<int> answers;

private:
    QCoro::Task<int> wait() {
        if (!answers.empty()) {
            const int first = answers.front();
            answers.pop_front();
            co_return first;
        }
        MainThreadResult<int> result{-1};
        pending_ = result.callback();
        const int chosen = co_await result;
        co_return chosen;
    }

    Calls& calls_;
    std::function<void(int)> pending_;
};

struct FakeApplication final : ApplicationPort {
    explicit FakeApplication(Calls& log) : calls(log) {}
    void toFront() override { calls.push_back("application.toFront"); }
    void openScreenCaptureSettings() override { calls.push_back("application.openScreenCaptureSettings"); }
    Calls& calls;
};

struct FakeScreens final : Screens {
    std::vector<Screen> all() const override { return screens; }
    std::vector<Screen> screens{{1, {0, 0, 1920, 1080}, 1}, {2, {1920, 0, 1280, 720}, 2}};
};

struct FakePower final : PowerSources {
    std::vector<PowerSource> list() const override { return sources; }
    std::vector<PowerSource> sources;
};

struct FakeDisk final : DiskSpace {
    std::optional<std::int64_t> available(const std::filesystem::path&) const override { return bytes; }
    std::optional<std::int64_t> size(const std::filesystem::path&) const override { return fileBytes; }
    std::optional<std::int64_t> bytes;
    std::optional<std::int64_t> fileBytes = 0;
};

struct FakeCameras final : CameraDevices {
    std::vector<CameraDevice> cameras() const override { return list; }
    std::optional<CameraDevice> defaultCamera() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    std::vector<CameraDevice> list{{"cam1", "Camera 1"}, {"cam2", "Camera 2"}};
};

struct FakeMicrophones final : AudioInputService {
    std::vector<AudioDevice> microphones() const override { return list; }
    std::optional<AudioDevice> defaultMicrophone() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string&, SerialQueue&, Handler) override {
        return Error{"test", 1, "not here"};
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override {
        return Error{"test", 1, "not here"};
    }
    std::vector<AudioDevice> list{{"mic1", "Microphone 1"}, {"mic2", "Microphone 2"}};
};

struct FakePermissions final : DevicePermissions {
    explicit FakePermissions(Calls& log) : calls(log) {}
    int status(Media media) const override { return media == Media::video ? video : audio; }
    QCoro::Task<void> request(Media media) override {
        calls.push_back(media == Media::video ? "permissions.request video" : "permissions.request audio");
        if (isHeld) {
            MainThreadResult<Done> answered{Done{}};
            held = answered.callback();
            co_await answered;
        }
    }
    bool isHeld = false;
    std::function<void(Done)> held;
    Calls& calls;
    int video = 3;
    int audio = 3;
};

struct FakeLibrary final : LibraryStore {
    explicit FakeLibrary(Calls& log) : calls(log) {}
    std::filesystem::path folder() const override { return "/videos"; }
    std::filesystem::path newRecordingURL() override {
        calls.push_back("library.newRecordingURL");
        return url;
    }
    void add(const std::filesystem::path& file, double seconds, const std::vector<double>& marks,
             const QStringList& names) override {
        calls.push_back("library.add " + file.string());
        duration = seconds;
        markers = marks;
        titles = names;
    }
    Calls& calls;
    std::filesystem::path url = "/videos/class.mp4";
    double duration = -1;
    std::vector<double> markers;
    QStringList titles;
};

struct FakeMixer final : MixService {
    explicit FakeMixer(Calls& log) : calls(log) {}
    void mixIfNeeded(const std::filesystem::path& url, std::function<void()> done) override {
        calls.push_back("mixer.mixIfNeeded " + url.string());
        done();
    }
    Calls& calls;
};

/// Answers with `content`, or with `errors` by the number of the query from 0.
struct FakeCapture final : ScreenCaptureService {
    explicit FakeCapture(Calls& log) : calls(log) {}
    void queryShareableContent(ContentCompletion completion) override {
        calls.push_back("capture.query");
        const auto error = errors.find(queries++);
        completion(error == errors.end() ? Result<ShareableContent>(content) : Result<ShareableContent>(error->second));
    }
    double pointPixelScale(const ContentFilter&) const override { return scale; }
    Result<std::unique_ptr<CaptureStream>> makeStream(const ContentFilter&, const StreamConfiguration&,
                                                      StreamDelegate*) override {
        return Error{"test", 1, "not here"};
    }
    void captureImage(const ContentFilter&, const StreamConfiguration&, ImageCompletion completion) override {
        completion(Error{"test", 1, "not here"});
    }
    bool preflightAccess() const override { return preflight; }
    bool requestAccess() override {
        calls.push_back("capture.requestAccess");
        return false;
    }
    Calls& calls;
    ShareableContent content;
    std::map<int, Error> errors;
    int queries = 0;
    double scale = 1;
    bool preflight = true;
};

} // namespace velmo::test
