#include "session/RecorderController.h"
#include "session/internal/Tell.h"

#include "settings/NameTag.h"

// What the viewer sees of the teacher. The presenter's window shows `me` and `side`, the compositor shows `column`.

namespace velmo {

using internal::tell;

namespace {

constexpr double kSceneFlashSeconds = 1.6;
constexpr double kColumnSlidesOutSeconds = 0.9; ///< the camera must not freeze while it can be seen
constexpr bool kColumnLeft = true;

bool hasPresenter(Scene scene) {
    return scene == Scene::me || scene == Scene::side;
}

PresenterStyle styleFor(Scene scene, PresenterStyle chosen) {
    const bool beside = scene == Scene::side;
    if (isSide(chosen) == beside) {
        return chosen;
    }
    return beside ? PresenterStyle::sideRight : PresenterStyle::framed;
}

} // namespace

void RecorderController::togglePresenter() {
    const bool beside = isSide(services_.prefs.presenterStyle);
    setScene(scene_ != Scene::screen ? Scene::screen : beside ? Scene::side : Scene::me);
}

void RecorderController::setScene(Scene scene) {
    if (!isActive() || services_.prefs.mode != RecordMode::screenCam || surfaces_.camera == nullptr ||
        !surfaces_.camera->hasVideo() || !recordingScreen_) {
        return;
    }
    const Scene target = scene == scene_ ? Scene::screen : scene;
    if (target == scene_) {
        return;
    }
    const Scene old = scene_;
    publish(scene_, target, &RecorderController::sceneChanged);
    publish(presenterOn_, hasPresenter(target), &RecorderController::presenterOnChanged);
    if (surfaces_.bubble != nullptr && surfaces_.bubble->userHidden()) {
        surfaces_.bubble->toggleUserVisibility();
    }
    if (old == Scene::column) {
        leaveColumn();
    }
    if (surfaces_.presenter != nullptr && surfaces_.presenter->isFull()) {
        surfaces_.presenter->exit([this, target, life = Life(life_)] {
            if (!life.expired()) {
                enterScene(target);
            }
        });
    } else {
        enterScene(target);
    }
    showFlash(title(target), kSceneFlashSeconds);
}

void RecorderController::watchPresenter() {
    tell(surfaces_.presenter, &PresenterPort::setOnSettled, [this, life = Life(life_)] {
        if (!life.expired()) {
            settleScene();
        }
    });
}

/// The presenter drops what is asked of it during a flight, so that quick keys can leave it where nobody wants it.
void RecorderController::settleScene() {
    if (!isActive() || surfaces_.presenter == nullptr) {
        return;
    }
    const bool full = surfaces_.presenter->isFull();
    if (full && shownPresenter_ != scene_) {
        surfaces_.presenter->exit([this, life = Life(life_)] {
            if (!life.expired()) {
                enterScene(scene_);
            }
        });
    } else if (!full && hasPresenter(scene_)) {
        enterScene(scene_);
    }
}

void RecorderController::leaveColumn() {
    if (recorder_) {
        recorder_->zoom().setColumn(false, kColumnLeft);
    }
    tell(surfaces_.bubble, &BubblePort::setCoveredByColumn, false);
    services_.timers.after(kColumnSlidesOutSeconds, [this, life = Life(life_)] {
        if (!life.expired() && scene_ != Scene::column) {
            tell(surfaces_.camera, &CameraPort::stopFrames);
        }
    });
}

/// When the old presenter has gone; by then the user may have gone on.
void RecorderController::enterScene(Scene scene) {
    if (scene_ != scene || !recordingScreen_) {
        return;
    }
    if (hasPresenter(scene) && surfaces_.presenter != nullptr) {
        const bool wasFull = surfaces_.presenter->isFull();
        surfaces_.presenter->enter(*recordingScreen_, styleFor(scene, services_.prefs.presenterStyle));
        if (!wasFull && surfaces_.presenter->isFull()) {
            shownPresenter_ = scene;
        }
    } else if (scene == Scene::column) {
        enterColumn();
    }
}

void RecorderController::enterColumn() {
    if (!recorder_) {
        return;
    }
    tell(surfaces_.camera, &CameraPort::startFrames, services_.prefs.mirror.value(), recorder_->cameraFrames());
    tell(surfaces_.bubble, &BubblePort::setCoveredByColumn, true);
    recorder_->zoom().setNameTag(NameTag::current(services_.prefs));
    recorder_->zoom().setColumn(true, kColumnLeft);
}

} // namespace velmo
