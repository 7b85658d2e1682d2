#pragma once

#include <unistd.h>

namespace velmo {

/// Owns an open file of the system and closes it. Negative: none, as a failed `open` gives it.
class FileDescriptor {
public:
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }

    int number() const { return number_; }

private:
    int number_;
};

} // namespace velmo
