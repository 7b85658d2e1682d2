#include "platform/x11/internal/CaptureRun.h"

#include <poll.h>

#include <algorithm>
#include <utility>

namespace velmo::x11 {
namespace {

/// While every buffer is with the receiver, how often to look whether one came back.
constexpr std::int64_t kBufferLook = 3'000'000;
/// How often to look for a pointer that moved without an event: programs can put it elsewhere.
constexpr std::int64_t kPointerLook = 100'000'000;
constexpr std::int64_t kForever = -1;

Error outOfMemory() {
    return {kStreamErrorDomain, kStreamErrorFailedToStart, "No hay memoria suficiente para grabar la pantalla."};
}

} // namespace

void CaptureRun::run(const CaptureStream::Completion& started) {
    const Result<void> prepared = prepare();
    if (prepared) {
        openSound();
    }
    if (started) {
        started(prepared);
    }
    std::optional<Error> reason;
    if (prepared) {
        reason = loop();
    }
    sound_.clear();
    context_.outputs->samples().close();
    cursor_.reset();
    writer_.reset();
    source_.reset();
    context_.connection.reset();
    context_.mailbox->finish();
    if (reason) {
        context_.outputs->reportStop(*reason);
    }
}

Result<void> CaptureRun::prepare() {
    auto source = CaptureSource::create(*context_.connection, context_.filter);
    if (!source) {
        return source.error();
    }
    source_ = std::move(source).value();
    if (Result<void> configured = configure(context_.configuration); !configured) {
        return configured;
    }
    cursor_.emplace(*context_.connection);
    if (showsCursor()) {
        cursor_->begin();
    }
    return source_->begin();
}

/// Sound that does not open stays silent: a lesson without it is better than none.
void CaptureRun::openSound() {
    if (context_.audio == nullptr) {
        return;
    }
    const auto keep = [this](Result<std::unique_ptr<AudioInput>> input) {
        if (input) {
            sound_.push_back(std::move(input).value());
        }
    };
    const auto handler = [outputs = context_.outputs](StreamOutput type) {
        return [outputs, type](const Sample& sample) { outputs->deliver(sample, type); };
    };
    const auto& system = context_.outputs->receiver(StreamOutput::audio);
    if (context_.configuration.capturesAudio && system.handler != nullptr) {
        keep(context_.audio->openSystemAudio(*system.queue, handler(StreamOutput::audio)));
    }
    const auto& microphone = context_.outputs->receiver(StreamOutput::microphone);
    if (context_.configuration.microphoneDeviceID && microphone.handler != nullptr) {
        keep(context_.audio->openMicrophone(*context_.configuration.microphoneDeviceID, *microphone.queue,
                                            handler(StreamOutput::microphone)));
    }
}

Result<void> CaptureRun::configure(const StreamConfiguration& configuration) {
    const FrameFormat format{configuration.pixelFormat, configuration.width, configuration.height,
                             std::max(1, configuration.queueDepth)};
    if (writer_ == nullptr || writer_->format() != format) {
        auto writer = FrameWriter::create(format);
        if (writer == nullptr) {
            return outOfMemory();
        }
        writer_ = std::move(writer);
        owesPicture_ = true;
    }
    if (configuration.showsCursor != showsCursor()) {
        source_->composer().invalidate();
        owesPicture_ = true;
        if (configuration.showsCursor) {
            cursor_->begin();
        }
    }
    context_.configuration = configuration;
    pacer_.setInterval(
        std::max<std::int64_t>(1'000'000, configuration.minimumFrameInterval.convertedTo(1'000'000'000)));
    if (owesPicture_) {
        pacer_.demand(now());
    }
    return {};
}

std::optional<Error> CaptureRun::loop() {
    while (true) {
        takeRequests();
        if (context_.mailbox->stopRequested()) { // after them: they take the wake of a stop with theirs
            return std::nullopt;
        }
        drainEvents();
        if (auto error = source_->ended()) {
            return context_.mailbox->stopRequested() ? std::nullopt : error;
        }
        const std::int64_t time = now();
        if (showsCursor() && time >= nextPointerLook_) {
            pacer_.pointerMoved(time);
        }
        if (isDue(time)) {
            buffersAreOut_ = !writer_->hasFreeBuffer();
            if (!buffersAreOut_) {
                grab();
                drainEvents(); // those that came with the replies would not wake the wait
            }
        }
        waitForWork();
    }
}

void CaptureRun::takeRequests() {
    std::vector<CaptureMailbox::Completion> answers;
    const auto update = context_.mailbox->takeUpdate(answers);
    const Result<void> result = update ? configure(*update) : Result<void>{};
    for (const auto& completion : answers) {
        if (completion) {
            completion(result);
        }
    }
}

void CaptureRun::drainEvents() {
    xcb_connection_t* xcb = context_.connection->xcb();
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(xcb)}) {
        if (source_->handle(*event)) {
            pacer_.damaged(now());
        }
        if (showsCursor() && cursor_->handle(*event)) {
            pacer_.pointerMoved(now());
        }
    }
}

bool CaptureRun::isDue(std::int64_t time) const {
    const auto due = pacer_.due();
    return due && time >= *due;
}

void CaptureRun::grab() {
    const MediaTime time = context_.clock->now();
    WindowComposer& composer = source_->composer();
    const Region painted = composer.compose();
    const Picture& picture = composer.picture();
    if (picture.data == nullptr) { // a window that is not to be seen
        pacer_.dismissed();
        return;
    }
    if (painted.isEmpty() && !owesPicture_) {
        pacer_.paintedNothing();
        if (!isDue(now())) {
            return;
        }
    }
    writer_->setSource(picture.width, picture.height);
    writer_->invalidate(painted);
    const bool pointerChanged = readPointer();
    if (painted.isEmpty() && !pointerChanged && !owesPicture_) {
        pacer_.dismissed();
    } else {
        deliver(time);
    }
    if (composer.hasUnread()) {
        pacer_.damaged(now() + pacer_.interval() / 2);
    }
}

/// True when the picture is another one for the pointer's sake.
bool CaptureRun::readPointer() {
    if (!showsCursor()) {
        return false;
    }
    const WindowComposer& composer = source_->composer();
    const bool hasMotionEvents = context_.connection->inputOpcode().has_value();
    nextPointerLook_ = now() + (hasMotionEvents ? kPointerLook : pacer_.interval());
    Region changed = cursor_->update();
    changed.intersect(composer.frame());
    changed.translate(-composer.frame().x, -composer.frame().y);
    writer_->invalidate(changed);
    return !changed.isEmpty();
}

void CaptureRun::deliver(MediaTime time) {
    const WindowComposer& composer = source_->composer();
    if (showsCursor()) {
        cursor_->draw(composer.picture(), composer.frame().x, composer.frame().y);
    }
    Sample sample;
    sample.image = writer_->write(composer.picture());
    if (showsCursor()) {
        cursor_->restore(composer.picture());
    }
    sample.timing = {context_.configuration.minimumFrameInterval, time, MediaTime::invalid()};
    context_.outputs->postPicture(sample);
    owesPicture_ = false;
    pacer_.delivered(time.convertedTo(1'000'000'000));
}

void CaptureRun::waitForWork() {
    xcb_flush(context_.connection->xcb());
    const std::int64_t wait = nanosecondsToWait();
    if (wait == 0) {
        return;
    }
    // once something is painted the rest of it may gather until the picture is due
    const bool watchesServer = !pacer_.due() || pacer_.waitsForPainting();
    pollfd files[] = {{context_.mailbox->wakeFile(), POLLIN, 0},
                      {xcb_get_file_descriptor(context_.connection->xcb()), POLLIN, 0}};
    const timespec timeout{wait / 1'000'000'000, wait % 1'000'000'000};
    ppoll(files, watchesServer ? 2 : 1, wait == kForever ? nullptr : &timeout, nullptr);
}

std::int64_t CaptureRun::nanosecondsToWait() const {
    const std::int64_t time = now();
    if (const auto due = pacer_.due()) {
        return std::max<std::int64_t>(buffersAreOut_ ? kBufferLook : 0, *due - time);
    }
    return showsCursor() ? std::max<std::int64_t>(0, nextPointerLook_ - time) : kForever;
}

std::int64_t CaptureRun::now() const {
    return context_.clock->now().convertedTo(1'000'000'000);
}

} // namespace velmo::x11
