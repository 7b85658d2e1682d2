#pragma once

class QVBoxLayout;

namespace velmo {

struct SetupContext;

/// The switches of the panel's upper part, in order: begin with the camera, name tag, phone.
namespace BasicRows {

void addTo(QVBoxLayout& column, SetupContext& context);

} // namespace BasicRows
} // namespace velmo
