#include "platform/ffmpeg/internal/OutputFile.h"

#include "platform/ffmpeg/internal/Errors.h"

extern "C" {
#include <libavformat/avio.h>
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace velmo::internal {

namespace {

constexpr int kBufferBytes = 256 * 1024;
constexpr std::int64_t kClaimStep = 8 << 20; // claimed ahead in one go
constexpr std::int64_t kCheckStep = 1 << 20; // written between two looks at the free space

} // namespace

Result<std::unique_ptr<OutputFile>> OutputFile::create(std::filesystem::path path, std::int64_t minimumFree) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (descriptor < 0) {
        return systemError(errno);
    }
    std::unique_ptr<OutputFile> file(new OutputFile(std::move(path), descriptor, minimumFree));
    if (file->context_ == nullptr) {
        file->remove();
        return systemError(ENOMEM);
    }
    if (const Result<void> free = file->checkFreeSpace(); !free) {
        file->remove();
        return free.error();
    }
    return file;
}

OutputFile::OutputFile(std::filesystem::path path, int descriptor, std::int64_t minimumFree)
    : path_(std::move(path)), descriptor_(descriptor), minimumFree_(minimumFree) {
    auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferBytes));
    context_ = avio_alloc_context(buffer, kBufferBytes, 1, this, nullptr, &onWrite, &onSeek);
    if (context_ == nullptr) {
        av_free(buffer);
    }
}

OutputFile::~OutputFile() {
    closeDescriptor();
    if (context_ != nullptr) {
        av_freep(&context_->buffer);
        avio_context_free(&context_);
    }
}

int OutputFile::writeAt(std::int64_t offset, std::span<const std::byte> bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(descriptor_, bytes.data(), bytes.size(), offset);
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            offset += count;
        }
    }
    return 0;
}

// Never reports a failure to libavformat, which would then refuse the index as well: the bytes are kept for a second
// try, and whoever feeds the file asks `failure` and stops.
int OutputFile::onWrite(void* self, std::uint8_t* bytes, int count) {
    auto& file = *static_cast<OutputFile*>(self);
    const std::span data(reinterpret_cast<const std::byte*>(bytes), static_cast<std::size_t>(count));
    if (const int number = file.writeAt(file.offset_, data); number != 0) {
        file.unwritten_.push_back({file.offset_, {data.begin(), data.end()}});
        if (!file.failure_) {
            file.failure_ = systemError(number);
        }
    }
    file.offset_ += count;
    file.end_ = std::max(file.end_, file.offset_);
    return count;
}

std::int64_t OutputFile::onSeek(void* self, std::int64_t offset, int whence) {
    auto& file = *static_cast<OutputFile*>(self);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return file.end_;
    case SEEK_SET:
        return file.offset_ = offset;
    case SEEK_CUR:
        return file.offset_ += offset;
    case SEEK_END:
        return file.offset_ = file.end_ + offset;
    default:
        return AVERROR(EINVAL);
    }
}

Result<void> OutputFile::claim(std::int64_t bytes, std::int64_t indexBytes) {
    if (end_ - checkedAt_ >= kCheckStep) {
        if (Result<void> free = checkFreeSpace(); !free) {
            return free;
        }
    }
    const std::int64_t needed = end_ + bytes + indexBytes;
    if (!canClaim_ || needed <= claimedEnd_) {
        return {};
    }
    if (::fallocate(descriptor_, FALLOC_FL_KEEP_SIZE, claimedEnd_, needed + kClaimStep - claimedEnd_) == 0) {
        claimedEnd_ = needed + kClaimStep;
        return {};
    }
    if (errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL) {
        canClaim_ = false;
        return {};
    }
    return errno == EINTR ? Result<void>() : Result<void>(systemError(errno));
}

Result<void> OutputFile::checkFreeSpace() {
    checkedAt_ = end_;
    struct statvfs disk {};
    if (::fstatvfs(descriptor_, &disk) != 0) {
        return {}; // nothing known, so the write itself will tell
    }
    const auto free = static_cast<std::int64_t>(disk.f_bavail * disk.f_frsize);
    return free < minimumFree_ ? Result<void>(systemError(ENOSPC)) : Result<void>();
}

void OutputFile::flush() {
    avio_flush(context_);
}

Result<void> OutputFile::close(Durability durability) {
    flush();
    int failed = 0;
    for (const Unwritten& part : unwritten_) {
        const int number = writeAt(part.offset, part.bytes);
        failed = failed == 0 ? number : failed;
    }
    if (::ftruncate(descriptor_, end_) != 0 && failed == 0) {
        failed = errno;
    }
    if (durability == Durability::synced && ::fsync(descriptor_) != 0 && failed == 0) {
        failed = errno;
    }
    closeDescriptor();
    return failed == 0 ? Result<void>() : Result<void>(systemError(failed));
}

void OutputFile::remove() {
    closeDescriptor();
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

void OutputFile::closeDescriptor() {
    if (descriptor_ >= 0) {
        ::close(std::exchange(descriptor_, -1));
    }
}

} // namespace velmo::internal
