#pragma once

#include <QString>

/// What comes from a clipboard or an old settings file, made fit for a field: characters that are not seen but do harm
/// (controls, marks that turn the reading direction, halves of characters) are taken out.
namespace velmo::PlainText {

/// One line: any break, tab or control becomes a blank, blanks that follow it are kept. At most `most` code units.
QString singleLine(const QString& text, qsizetype most);
/// Several lines, broken by "\n" alone; tabs stay. At most `most` code units.
QString lines(const QString& text, qsizetype most);

} // namespace velmo::PlainText
