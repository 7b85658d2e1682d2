#pragma once

namespace velmo {

/// Sends an edit command ("copy", "paste", ...) to the widget that has the keyboard focus. One that does not know it
/// is left alone. Main thread.
void sendEditCommand(const char* command);

} // namespace velmo
