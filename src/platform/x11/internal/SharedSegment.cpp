#include "platform/x11/internal/SharedSegment.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <xcb/shm.h>

namespace velmo::x11 {

std::unique_ptr<SharedSegment> SharedSegment::create(const XConnection& connection, std::size_t bytes) {
    const int file = memfd_create("velmo-pixels", MFD_CLOEXEC);
    if (file < 0) {
        return nullptr;
    }
    void* memory = MAP_FAILED;
    if (ftruncate(file, static_cast<off_t>(bytes)) == 0) {
        // with its pages now: the first picture that needs them should not wait for them, however late it comes
        memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, file, 0);
    }
    if (memory == MAP_FAILED) {
        close(file);
        return nullptr;
    }
    std::unique_ptr<SharedSegment> segment(new SharedSegment(connection));
    segment->data_ = static_cast<std::uint8_t*>(memory);
    segment->size_ = bytes;
    segment->attach(file);
    return segment;
}

void SharedSegment::attach(int file) {
    if (!connection_.hasSharedMemory()) {
        close(file);
        return;
    }
    const std::uint32_t id = xcb_generate_id(connection_.xcb());
    // XCB closes the file once it is sent
    const auto cookie = xcb_shm_attach_fd_checked(connection_.xcb(), id, file, 0);
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection_.xcb(), cookie));
    id_ = error ? 0 : id;
}

SharedSegment::~SharedSegment() {
    if (id_ != 0) {
        xcb_shm_detach(connection_.xcb(), id_);
    }
    munmap(data_, size_);
}

} // namespace velmo::x11
