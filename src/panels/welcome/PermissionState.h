#pragma once

namespace velmo {

enum class PermissionState { granted, denied, unknown };

/// Of the number that a system tells: 3 is authorized, 0 not determined; all else keeps the device away.
constexpr PermissionState permissionState(int status) {
    return status == 3 ? PermissionState::granted : status == 0 ? PermissionState::unknown : PermissionState::denied;
}

} // namespace velmo
