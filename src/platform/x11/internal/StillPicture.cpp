#include "platform/x11/internal/StillPicture.h"

#include "platform/x11/internal/CaptureSource.h"
#include "platform/x11/internal/CursorLayer.h"
#include "platform/x11/internal/FrameWriter.h"

namespace velmo::x11 {
namespace {

constexpr int kTries = 3; // windows that come and go while they are read

Error failure() {
    return {kStreamErrorDomain, kStreamErrorFailedToStart, "No se pudo leer la pantalla."};
}

} // namespace

Result<FrameRef> stillPicture(XConnection& connection, const ContentFilter& filter,
                              const StreamConfiguration& configuration) {
    auto created = CaptureSource::create(connection, filter);
    if (!created) {
        return created.error();
    }
    const std::unique_ptr<CaptureSource> source = std::move(created).value();
    if (const auto begun = source->begin(); !begun) {
        return begun.error();
    }
    WindowComposer& composer = source->composer();
    composer.compose();
    for (int i = 1; i < kTries && composer.hasUnread(); ++i) {
        composer.compose();
    }
    const Picture& picture = composer.picture();
    const auto writer = FrameWriter::create({configuration.pixelFormat, configuration.width, configuration.height, 1});
    if (picture.data == nullptr || writer == nullptr) {
        return failure();
    }
    if (configuration.showsCursor) {
        CursorLayer cursor(connection);
        cursor.begin();
        cursor.update();
        cursor.draw(picture, composer.frame().x, composer.frame().y);
    }
    writer->setSource(picture.width, picture.height);
    return writer->write(picture);
}

} // namespace velmo::x11
