#pragma once

#include "panels/welcome/PermissionRow.h"
#include "platform/DeviceFinding.h"
#include "session/Collaborators.h"

/// What a row of the welcome says for what was found out: never a button that leads nowhere.
namespace velmo::PermissionWords {

PermissionRow::Standing screen(PermissionState state, bool hasSettings);
PermissionRow::Standing device(DevicePermissions::Media media, PermissionState state, DeviceFinding finding,
                               bool hasSettings);

} // namespace velmo::PermissionWords
