#pragma once

#include "base/Result.h"

namespace velmo {

/// The user, or the system on the user's behalf, does not permit capture. Also recognises what the system reports in
/// other domains, by its words.
bool isPermissionError(const Error& error);
/// Whether the file that is written could not be written on.
bool isDiskError(const Error& error);

/// A service ended without an answer.
Error unansweredError();

} // namespace velmo
