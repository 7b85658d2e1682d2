#pragma once

#include "platform/x11/internal/XConnection.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace velmo::x11 {

/// Memory that the server can write pixels into. On a server that cannot share memory it is ordinary memory and
/// `id()` is 0. The connection is borrowed and must outlive it.
class SharedSegment {
public:
    /// Null when memory is out.
    static std::unique_ptr<SharedSegment> create(const XConnection& connection, std::size_t bytes);
    ~SharedSegment();
    SharedSegment(const SharedSegment&) = delete;
    SharedSegment& operator=(const SharedSegment&) = delete;

    std::uint8_t* data() const { return data_; }
    std::size_t size() const { return size_; }
    std::uint32_t id() const { return id_; }

private:
    explicit SharedSegment(const XConnection& connection) : connection_(connection) {}
    void attach(int file);

    const XConnection& connection_;
    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
    std::uint32_t id_ = 0;
};

} // namespace velmo::x11
