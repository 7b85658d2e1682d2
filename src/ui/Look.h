#pragma once

class QApplication;

namespace velmo::Look {

/// Gives the application its font, palette and tooltips; text is as large as the desktop wants it. Once, after the
/// application object was made.
void apply(QApplication& application);

} // namespace velmo::Look
