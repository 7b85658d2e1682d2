// A rectangle as the store holds it: refused, or the same when written again.

#include "Fuzz.h"
#include "settings/RectText.h"

using namespace velmo;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto rect = rectFromText(QString::fromUtf8(fuzz::bytesOf(data, size)))) {
        fuzz::require(rectFromText(rectText(*rect)) == rect);
    }
    return 0;
}
