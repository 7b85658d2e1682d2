// The library's metadata file, whole or damaged: what is read of it is written and read back the same.

#include "library/internal/Metadata.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo::internal;
    const MetaReading reading =
        metaFromJson(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const MetaReading again = metaFromJson(jsonFromMeta(reading.entries));
    if (!again.isWhole || again.entries != reading.entries) {
        std::abort();
    }
    return 0;
}
