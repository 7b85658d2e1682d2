#pragma once

#include "ui/Type.h"

#include <QColor>
#include <QLabel>
#include <QString>

namespace velmo {

/// Text of the program's own look, on one line or wrapped. The caller's layout takes ownership.
QLabel* makeLabel(const QString& text, TextStyle style, const QColor& color);
QLabel* makeWrappedLabel(const QString& text, TextStyle style, const QColor& color);

} // namespace velmo
