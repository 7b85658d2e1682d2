#pragma once

#include "classkit/ClassData.h"

namespace velmo::test {

/// One of each kind, with one copy and two moments out of order.
inline ClassData someClass() {
    const KitItem file{QUuid::createUuid(), KitItem::Kind::file, QStringLiteral("guía"), QStringLiteral("/a/guía.pdf")};
    const KitItem link{QUuid::createUuid(), KitItem::Kind::link, QStringLiteral("a.b"), QStringLiteral("https://a.b")};
    return {QStringLiteral("Clase 1.mp4"),
            {file, link},
            {{12.5, QStringLiteral("Marcador 1"), std::nullopt}, {3, QStringLiteral("a.b"), link.location}},
            {{file.id, QStringLiteral("Material/guía.pdf")}}};
}

} // namespace velmo::test
