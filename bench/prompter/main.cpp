// What the teleprompter costs: CPU of this process, which holds nothing else, and of the X server, in parts of one
// core; how far the text stands from time by speed whenever it is painted; and how long a script of a megabyte takes.
//
//   tools/desk --no-sound run build/release/bin/bench_prompter [SECONDS]

#include "base/Clock.h"
#include "bench/support/CpuTime.h"
#include "session/QtTimers.h"
#include "settings/Prefs.h"
#include "support/MemoryDefaultsStore.h"
#include "surfaces/Teleprompter.h"
#include "surfaces/internal/PrompterPanel.h"
#include "surfaces/internal/PrompterView.h"
#include "ui/Look.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace velmo {
namespace {

void pass(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

double now() {
    return HostClock::shared().now().seconds();
}

/// Looks at each painting of the text: where it stands, and when.
class Paintings final : public QObject {
public:
    explicit Paintings(Teleprompter& prompter) : prompter_(prompter) {
        const_cast<PrompterView&>(prompter.panel()->text()).installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && prompter_.playing()) {
            const double time = now();
            if (start == 0) {
                start = time - (prompter_.position() - from) / speed;
            }
            apart.push_back(std::abs(prompter_.position() - from - (time - start) * speed));
        }
        return false;
    }
    double start = 0;
    double from = 0;
    double speed = 0;
    std::vector<double> apart;

private:
    Teleprompter& prompter_;
};

QString script(int characters) {
    QString text;
    while (text.size() < characters) {
        text += QStringLiteral("La derivada parcial mide cada camino por su lado, y el gradiente los junta todos. ");
    }
    return text;
}

void run(int seconds) {
    test::MemoryDefaultsStore store;
    Prefs prefs(store);
    QtTimers timers;
    const Screen screen{1, {0, 0, 1920, 1080}, 1};
    Teleprompter prompter({prefs, HostClock::shared(), timers});
    prefs.scriptText = script(40'000);
    prompter.show(screen);
    pass(1500);
    Paintings paintings(prompter);
    std::printf("%-24s %10s %10s %22s\n", "", "prompter", "X server", "points from time");
    for (const double speed : {0.0, 8.0, 32.0, 140.0}) {
        paintings.apart.clear();
        paintings.start = 0;
        paintings.from = prompter.position();
        paintings.speed = speed;
        if (speed > 0) {
            prefs.prompterSpeed = speed;
            prompter.play();
        }
        const double own = bench::ownCpu();
        const double server = bench::serverCpu();
        pass(seconds * 1000);
        std::printf("%4.0f points a second    %8.2f %% %8.2f %%", speed, (bench::ownCpu() - own) * 100 / seconds,
                    (bench::serverCpu() - server) * 100 / seconds);
        std::vector<double>& apart = paintings.apart;
        std::sort(apart.begin(), apart.end());
        if (!apart.empty()) {
            std::printf("   median %.2f, 95 %% %.2f", apart[apart.size() / 2], apart[apart.size() * 95 / 100]);
        }
        std::printf("\n");
        prompter.pause();
    }
    prompter.hide();
    prefs.scriptText = script(1024 * 1024);
    const double begin = now();
    prompter.show(screen);
    const double shown = now();
    double longest = 0;
    while (!std::isfinite(prompter.panel()->text().end())) {
        const double before = now();
        QApplication::processEvents();
        longest = std::max(longest, now() - before);
    }
    std::printf("a megabyte: shown after %.1f ms, laid out after %.0f ms, events waited at most %.1f ms\n",
                (shown - begin) * 1e3, (now() - begin) * 1e3, longest * 1e3);
}

} // namespace
} // namespace velmo

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    velmo::Look::apply(application);
    velmo::run(argc > 1 ? std::atoi(argv[1]) : 10);
    return EXIT_SUCCESS;
}
