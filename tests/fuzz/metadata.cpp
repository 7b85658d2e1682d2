// The library's metadata file, whole or damaged: what is read of it is written and read back the same.

#include "library/internal/Metadata.h"
#include "Fuzz.h"

using namespace velmo;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const internal::MetaReading reading = internal::metaFromJson(fuzz::bytesOf(data, size));
    const internal::MetaReading again = internal::metaFromJson(internal::jsonFromMeta(reading.entries));
    fuzz::require(again.isWhole && again.entries == reading.entries);
    return 0;
}
