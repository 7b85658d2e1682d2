#pragma once

#include <QFont>
#include <QImage>
#include <QString>

#include <cstdint>
#include <utility>
#include <vector>

namespace velmo {

/// A long text broken into lines of one width. It is laid out piece by piece, since a text of a million characters
/// takes longer than a main thread may be away, and keeps 16 bytes a line beside the text itself. Main thread.
class PrompterLayout {
public:
    /// `width` in points. Nothing is laid out yet.
    PrompterLayout(const QString& script, const QFont& font, double width, double spacing);

    /// The text as it is laid out: one kind of line break, no tabs, nothing that controls.
    static QString cleaned(const QString& script);

    /// Lays out at least `characters` more, or to the end.
    void extend(qsizetype characters);
    bool isComplete() const { return next_ > text_.size(); }

    std::size_t lineCount() const { return lines_.size(); }
    /// Each line stands in a slot with half of the spacing above and below; slots touch. Whole points.
    double slotTop(std::size_t line) const { return line < lines_.size() ? lines_[line].top : bottom_; }
    double slotHeight(std::size_t line) const { return slotTop(line + 1) - slotTop(line); }
    /// Of what is laid out so far.
    double height() const { return bottom_; }
    /// First and one past the last of the lines whose slots meet `top` to `bottom`.
    std::pair<std::size_t, std::size_t> linesBetween(double top, double bottom) const;
    /// The character with which a line begins, in the cleaned text.
    qsizetype start(std::size_t line) const { return lines_[line].start; }
    /// The line that holds a character that is laid out.
    std::size_t lineOf(qsizetype character) const;

    /// The slot of a line on clear ground, `inset` points wider at both sides.
    QImage picture(std::size_t line, const QColor& color, int inset, double ratio) const;

private:
    struct Line {
        double top;
        std::uint32_t start;
        std::uint16_t length;
        std::uint16_t rightToLeft;
    };

    void beginParagraph();
    void layOutPiece();
    void addLine(qsizetype start, qsizetype length, double height);

    const QString text_;
    const QFont font_;
    const double width_;
    const int spacing_;
    double emptyHeight_ = 0;
    std::vector<Line> lines_;
    double bottom_ = 0;
    qsizetype next_ = 0;          // the first character that is not laid out; one past the end when all are
    qsizetype paragraphEnd_ = -1; // of the paragraph that holds it; before it while none is begun
    bool rightToLeft_ = false;
};

} // namespace velmo
