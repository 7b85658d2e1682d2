#include "ui/PlainText.h"

#include <algorithm>

namespace velmo::PlainText {

namespace {

bool turnsDirection(char16_t c) {
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0x200E || c == 0x200F;
}

bool isBreak(char16_t c) {
    return c == u'\n' || c == u'\r' || c == 0x2028 || c == 0x2029 || c == 0x0B || c == 0x0C || c == 0x85;
}

bool isControl(char16_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

/// `give` gets each character that stays and says what it becomes; 0 takes it out.
template <typename Give>
QString filtered(const QString& text, qsizetype most, Give give) {
    QString kept;
    kept.reserve(std::min(text.size(), most));
    for (qsizetype i = 0; i < text.size() && kept.size() < most; ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            if (kept.size() + 2 > most) {
                break;
            }
            kept += c;
            kept += text[++i];
        } else if (!c.isSurrogate() && !turnsDirection(c.unicode()) && c != QChar::ObjectReplacementCharacter &&
                   c != QChar::ByteOrderMark) {
            if (const char16_t now = give(i); now != 0) {
                kept += QChar(now);
            }
        }
    }
    return kept;
}

} // namespace

QString singleLine(const QString& text, qsizetype most) {
    return filtered(text, most, [&text](qsizetype i) -> char16_t {
        const char16_t c = text[i].unicode();
        const bool second = c == u'\n' && i > 0 && text[i - 1] == u'\r';
        if (second) {
            return 0;
        }
        return isBreak(c) || isControl(c) ? u' ' : c;
    });
}

QString lines(const QString& text, qsizetype most) {
    return filtered(text, most, [&text](qsizetype i) -> char16_t {
        const char16_t c = text[i].unicode();
        if (isBreak(c)) {
            return c == u'\n' && i > 0 && text[i - 1] == u'\r' ? 0 : u'\n';
        }
        return isControl(c) && c != u'\t' ? 0 : c;
    });
}

} // namespace velmo::PlainText
