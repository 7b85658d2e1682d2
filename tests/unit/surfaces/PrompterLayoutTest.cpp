#include "surfaces/internal/PrompterLayout.h"

#include "ui/Type.h"

#include <QColor>
#include <QTextLayout>
#include <QTextOption>

#include <gmock/gmock.h>

namespace velmo {
namespace {

constexpr double kWidth = 600;
constexpr double kSpacing = 7;
constexpr int kInset = 18;

QFont font() {
    QFont font(Type::family());
    font.setPixelSize(28);
    return font;
}

PrompterLayout laidOut(const QString& text) {
    PrompterLayout layout(text, font(), kWidth, kSpacing);
    layout.extend(text.size() + 1);
    return layout;
}

/// Where the lines begin when a text is laid out as a whole.
std::vector<qsizetype> startsInOneGo(const QString& paragraph) {
    QTextLayout layout(paragraph, font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    std::vector<qsizetype> starts;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(kWidth);
        starts.push_back(line.textStart());
    }
    layout.endLayout();
    return starts;
}

std::vector<qsizetype> starts(const PrompterLayout& layout) {
    std::vector<qsizetype> all;
    for (std::size_t line = 0; line < layout.lineCount(); ++line) {
        all.push_back(layout.start(line));
    }
    return all;
}

/// The columns of the first and the last inked pixel; -1 for none.
std::pair<int, int> inked(const QImage& image) {
    int first = -1;
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qAlpha(image.pixel(x, y)) > 100) {
                first = first < 0 ? x : first;
                last = x;
            }
        }
    }
    return {first, last};
}

TEST(PrompterLayout, BreaksALongParagraphInPiecesAsInOneGo) {
    QString text;
    for (int i = 0; text.size() < 20'000; ++i) {
        text += QString(i % 13 + 1, QChar(u'a' + i % 26)) + u' ';
    }
    const PrompterLayout layout = laidOut(text);
    EXPECT_TRUE(layout.isComplete());
    EXPECT_EQ(starts(layout), startsInOneGo(text));
}

TEST(PrompterLayout, BreaksAWordThatFitsNoLineWhereItMust) {
    const QString word(5000, u'm');
    EXPECT_EQ(starts(laidOut(word)), startsInOneGo(word));
}

TEST(PrompterLayout, KeepsEmptyLines) {
    const PrompterLayout layout = laidOut("uno\n\ndos\n");
    EXPECT_EQ(starts(layout), (std::vector<qsizetype>{0, 4, 5, 9}));
    EXPECT_EQ(layout.slotHeight(1), layout.slotHeight(0));
    EXPECT_EQ(layout.height(), 4 * layout.slotHeight(0));
}

TEST(PrompterLayout, AnEmptyTextIsOneEmptyLine) {
    const PrompterLayout layout = laidOut("");
    EXPECT_TRUE(layout.isComplete());
    EXPECT_EQ(layout.lineCount(), 1U);
    EXPECT_EQ(inked(layout.picture(0, Qt::white, kInset, 1)).first, -1);
}

TEST(PrompterLayout, LeavesOutWhatControlsAndKeepsWhatIsRead) {
    const QString text =
        QStringLiteral("uno\r\ndos\rtres\u2028cuatro\u0000\u0007\u001b[31m\t\u202Efin\u0085\u2069\uFFFF");
    EXPECT_EQ(PrompterLayout::cleaned(text), QStringLiteral("uno\ndos\ntres\ncuatro[31m    fin\n"));
    EXPECT_EQ(PrompterLayout::cleaned(QStringLiteral("ñ 漢 😀 e\u0301 \u200D")),
              QStringLiteral("ñ 漢 😀 e\u0301 \u200D"));
}

TEST(PrompterLayout, HalfACharacterIsReplaced) {
    const char16_t halves[] = {u'a', 0xD83D, u'b', 0xDE00};
    EXPECT_EQ(PrompterLayout::cleaned(QString::fromUtf16(halves, 4)), QStringLiteral("a\uFFFDb\uFFFD"));
}

TEST(PrompterLayout, TextFromRightToLeftStandsAtTheRight) {
    const PrompterLayout layout = laidOut(QStringLiteral("שלום לכולם\nHola a todos"));
    const auto [hebrewFirst, hebrewLast] = inked(layout.picture(0, Qt::white, kInset, 1));
    const auto [spanishFirst, spanishLast] = inked(layout.picture(1, Qt::white, kInset, 1));
    EXPECT_GT(hebrewFirst, kWidth / 2);
    EXPECT_NEAR(hebrewLast, kInset + kWidth, 6);
    EXPECT_NEAR(spanishFirst, kInset, 6);
    EXPECT_LT(spanishLast, kWidth / 2);
}

TEST(PrompterLayout, APictureIsOfTheSizeOfItsSlotInDevicePixels) {
    const PrompterLayout layout = laidOut("Hola");
    const QImage image = layout.picture(0, Qt::white, kInset, 2);
    EXPECT_EQ(image.size(), QSize(2 * 636, static_cast<int>(2 * layout.slotHeight(0))));
    EXPECT_EQ(image.devicePixelRatio(), 2);
}

TEST(PrompterLayout, FindsTheLinesThatAreSeen) {
    const PrompterLayout layout = laidOut("a\nb\nc\nd\ne");
    const double slot = layout.slotHeight(0);
    using Lines = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(layout.linesBetween(-40, 0), (Lines{0, 0}));
    EXPECT_EQ(layout.linesBetween(-40, 1), (Lines{0, 1}));
    EXPECT_EQ(layout.linesBetween(slot, 2 * slot), (Lines{1, 2}));
    EXPECT_EQ(layout.linesBetween(slot - 1, 3 * slot + 1), (Lines{0, 4}));
    EXPECT_EQ(layout.linesBetween(4.5 * slot, 90 * slot), (Lines{4, 5}));
    EXPECT_EQ(layout.lineOf(5), 2U);
}

TEST(PrompterLayout, ALineFollowsFromWhereItIsAsked) {
    const QString text =
        QStringLiteral("Una frase que pasa de un renglón al siguiente, y a otro más, para que haya tres.");
    const PrompterLayout layout = laidOut(text);
    ASSERT_GE(layout.lineCount(), 2U);
    EXPECT_EQ(layout.lineOf(layout.start(1)), 1U);
    EXPECT_EQ(layout.lineOf(layout.start(1) - 1), 0U);
}

TEST(PrompterLayout, AMillionCharactersAreLaidOutInPiecesThatEndSoon) {
    QString text;
    while (text.size() < 1024 * 1024) {
        text += QStringLiteral("La derivada parcial mide cada camino por su lado. ");
    }
    PrompterLayout layout(text, font(), kWidth, kSpacing);
    qsizetype known = 0;
    int pieces = 0;
    for (; !layout.isComplete(); ++pieces) {
        layout.extend(4000);
        const qsizetype now = layout.start(layout.lineCount() - 1);
        ASSERT_LT(now - known, 6000) << "no piece is much longer than was asked for";
        ASSERT_GT(now, known);
        known = now;
    }
    EXPECT_GT(pieces, 200);
    EXPECT_GT(layout.lineCount(), 20'000U);
}

TEST(PrompterLayout, AMillionLineBreaksAreAMillionLines) {
    const PrompterLayout layout = laidOut(QString(1024 * 1024, u'\n'));
    EXPECT_EQ(layout.lineCount(), 1024U * 1024U + 1);
}

TEST(PrompterLayout, CharactersWithoutWidthEnd) {
    EXPECT_TRUE(laidOut(QString(50'000, QChar(0x200B))).isComplete());
    EXPECT_TRUE(laidOut(QString(50'000, QChar(0x0301))).isComplete());
}

} // namespace
} // namespace velmo
