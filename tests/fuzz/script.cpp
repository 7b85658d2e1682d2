// A script as it is pasted into the prompter, in any language or none: all of it is laid out, in lines that follow each
// other, and each can be drawn.
//
// The first byte says how wide, the second how large.

#include "Fuzz.h"
#include "surfaces/internal/PrompterLayout.h"
#include "ui/Type.h"

#include <QApplication>
#include <QColor>

#include <algorithm>

using namespace velmo;

namespace {

void startQt() {
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(count, arguments);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    startQt();
    QFont font(Type::family());
    font.setPixelSize(14 + data[1] % 60);
    const QString script = QString::fromUtf8(fuzz::bytesOf(data + 2, size - 2));
    PrompterLayout layout(script, font, 40 + 3 * data[0], 7);
    while (!layout.isComplete()) {
        layout.extend(700);
    }
    const qsizetype length = PrompterLayout::cleaned(script).size();
    fuzz::require(layout.lineCount() > 0 && layout.start(0) == 0);
    for (std::size_t line = 1; line < layout.lineCount(); ++line) {
        fuzz::require(layout.start(line) > layout.start(line - 1) && layout.start(line) <= length);
        fuzz::require(layout.slotTop(line) > layout.slotTop(line - 1));
        fuzz::require(layout.lineOf(layout.start(line)) == line);
    }
    for (std::size_t line = 0; line < std::min<std::size_t>(layout.lineCount(), 8); ++line) {
        fuzz::require(!layout.picture(line, Qt::white, 18, 1).isNull());
    }
    return 0;
}
