#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Each fuzzer reads what a file, a person or another program may hand to this one: read or refused, never more.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace velmo::fuzz {

inline QByteArray bytesOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

/// Damage that the program would go on with is a finding like a crash.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace velmo::fuzz
