#pragma once

#include "platform/DeviceFinding.h"

#include <filesystem>

/// The camera nodes of the system, tried without starting a picture: no light goes on.
namespace velmo::CameraNodes {

/// Any thread; may wait for a device that sleeps. `folder` is where the nodes are.
DeviceFinding tryAll(const std::filesystem::path& folder = "/dev");

} // namespace velmo::CameraNodes
