// The record of a class folder and what is made of it: the page, the index, the chapters of the video's description.

#include "Fuzz.h"
#include "classkit/ClassKit.h"
#include "classkit/internal/ClassPage.h"

using namespace velmo;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto record = ClassData::fromJson(fuzz::bytesOf(data, size));
    if (!record) {
        return 0;
    }
    fuzz::require(ClassData::fromJson(record->toJson()) == record);
    fuzz::require(internal::html(*record, record->video).endsWith(QLatin1String("</html>")));
    fuzz::require(!internal::indexText(*record, record->video).isEmpty());
    fuzz::require(ClassKit::youtubeIndex(record->chapters).startsWith(QLatin1String("00:00 ")));
    for (const KitItem& item : record->items) {
        static_cast<void>(item.url());
        fuzz::require(!item.symbol().isEmpty());
    }
    return 0;
}
