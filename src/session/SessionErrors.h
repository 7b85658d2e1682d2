#pragma once

#include "base/Result.h"

#include <QString>

#include <optional>

namespace velmo {

/// The user, or the system on the user's behalf, does not permit capture. Also recognises what the system reports in
/// other domains, by its words.
bool isPermissionError(const Error& error);
/// What to tell the user of a capture that ended by itself: the disk's, the encoder's or the display's own words.
/// Absent where there are none.
std::optional<QString> reasonOfEnd(const Error& error);

/// A service ended without an answer.
Error unansweredError();

} // namespace velmo
