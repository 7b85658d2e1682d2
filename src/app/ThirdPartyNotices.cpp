#include "app/ThirdPartyNotices.h"

#include "app/SharedFiles.h"

namespace velmo {

std::optional<QString> thirdPartyNotices(const QString& programFolder) {
    return sharedFile(programFolder, QStringLiteral("THIRD_PARTY_NOTICES.txt"));
}

} // namespace velmo
