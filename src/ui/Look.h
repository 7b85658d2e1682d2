#pragma once

class QApplication;

namespace velmo::Look {

/// Gives the application its font, palette and tooltips. Once, after the application object was made.
void apply(QApplication& application);

} // namespace velmo::Look
