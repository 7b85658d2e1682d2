#include "platform/synthetic/SyntheticCameras.h"

#include "platform/synthetic/internal/HandsScene.h"
#include "platform/synthetic/internal/SyntheticStream.h"
#include "platform/synthetic/internal/TeacherScene.h"

#include <utility>

namespace velmo {

namespace {

template <typename T>
std::unique_ptr<internal::Scene> make() {
    return std::make_unique<T>();
}

struct Row {
    const char* id;
    const char* name;
    std::unique_ptr<internal::Scene> (*scene)();
};

constexpr Row kRows[] = {
    {SyntheticCameras::kTeacher, "Cámara de demostración", &make<internal::TeacherScene>},
    {SyntheticCameras::kHands, "Manos de demostración", &make<internal::HandsScene>},
};

} // namespace

SyntheticCameras::SyntheticCameras(const Clock& clock, Options options) : clock_(clock), options_(options) {}

std::vector<CameraDevice> SyntheticCameras::cameras() const {
    std::vector<CameraDevice> devices;
    for (const Row& row : kRows) {
        devices.push_back({row.id, row.name});
    }
    return devices;
}

std::optional<CameraDevice> SyntheticCameras::defaultCamera() const {
    return cameras().front();
}

Result<std::unique_ptr<CameraStream>> SyntheticCameras::open(const std::string& uniqueID, SerialQueue& queue,
                                                             CameraHandlers handlers) {
    for (const Row& row : kRows) {
        if (uniqueID == row.id) {
            auto mailbox = std::make_shared<CameraMailbox>(queue, std::move(handlers));
            return std::unique_ptr<CameraStream>(std::make_unique<internal::SyntheticStream>(
                clock_, std::move(mailbox), internal::ScenePictures(row.scene(), options_)));
        }
    }
    return Error{kErrorDomain, kErrorNoDevice, "La cámara no está conectada."};
}

std::shared_ptr<void> SyntheticCameras::watchDevices(std::function<void()>) {
    return nullptr;
}

} // namespace velmo
