#pragma once

#include "classkit/Chapter.h"
#include "classkit/KitItem.h"

#include <QJsonArray>

#include <optional>
#include <vector>

namespace velmo {

// The lists of the class kit as JSON. Reading is all or nothing: one entry that lacks a required key or has
// another type makes the list absent.

QJsonArray jsonFromItems(const std::vector<KitItem>& items);
std::optional<std::vector<KitItem>> itemsFromJson(const QJsonValue& json);

QJsonArray jsonFromChapters(const std::vector<Chapter>& chapters);
std::optional<std::vector<Chapter>> chaptersFromJson(const QJsonValue& json);

} // namespace velmo
