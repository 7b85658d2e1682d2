#pragma once

#include "settings/Prefs.h"

class QVBoxLayout;

/// The rows of the bubble's look. Main thread.
namespace velmo::BubbleRows {

void addShape(QVBoxLayout& column, Prefs& prefs);
void addBorder(QVBoxLayout& column, Prefs& prefs);
void addColors(QVBoxLayout& column, Prefs& prefs);

} // namespace velmo::BubbleRows
