#pragma once

namespace velmo {

/// What was found out about a kind of device by trying it.
enum class DeviceFinding {
    unknown, ///< not tried yet, or the user has not been asked
    granted, ///< there is one and it works
    refused, ///< there is one, and the system does not let this program have it
    silent,  ///< it opens and gives nothing
    absent,  ///< there is none
};

} // namespace velmo
