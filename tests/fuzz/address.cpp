// An address as somebody pastes it: refused, or one that opens and survives the store.

#include "Fuzz.h"
#include "classkit/KitItem.h"
#include "classkit/KitJson.h"

#include <QJsonDocument>

using namespace velmo;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto item = KitItem::web(QString::fromUtf8(fuzz::bytesOf(data, size)));
    if (!item) {
        return 0;
    }
    const auto url = item->url();
    fuzz::require(url && url->host().contains(u'.') && !item->title.isEmpty());
    const QByteArray stored = QJsonDocument(jsonFromItems({*item})).toJson();
    fuzz::require(itemsFromJson(QJsonDocument::fromJson(stored).array()) == std::vector{*item});
    return 0;
}
