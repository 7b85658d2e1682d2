#include "app/AppDelegate.h"
#include "app/Composition.h"
#include "app/DisplayCheck.h"
#include "app/ExitHandler.h"
#include "app/LaunchOptions.h"
#include "app/RecordingRescue.h"
#include "app/SignalWatcher.h"
#include "app/SingleInstance.h"
#include "ui/Look.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QSessionManager>
#include <QTranslator>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>

namespace {

using namespace velmo;

/// Large things come from pools. What is left is small, and one heap a thread would each keep what a busy minute once
/// needed.
constexpr int kHeaps = 2;
/// From this size on memory goes back to the system when it is freed. By itself the limit rises to the largest block that was
/// ever freed; pictures and small things then lie mixed in the heaps, which grew by 38 MiB in ten minutes.
constexpr int kOwnMapping = 512 * 1024; // bytes

void prepareProcess() {
    mallopt(M_ARENA_MAX, kHeaps);
    mallopt(M_MMAP_THRESHOLD, kOwnMapping);
    qputenv("QT_QPA_PLATFORM", "xcb"); // capture, keys and surfaces speak to an X server, also under Wayland
    std::signal(SIGPIPE, SIG_IGN);     // a server that goes away is an error of the call, not the end
    QCoreApplication::setApplicationName(QStringLiteral("velmo-studio"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMO_VERSION));
}

/// Qt's own few texts (menus of text fields) in the program's language, where the translation is installed.
void speakSpanish(QApplication& application) {
    auto* translator = new QTranslator(&application);
    if (translator->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
    }
}

void dressUp(QApplication& application) {
    Look::apply(application);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Velmo Studio"));
    QGuiApplication::setDesktopFileName(QStringLiteral("velmo-studio"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/velmo/icon.svg")));
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

int run(QApplication& application, SingleInstance& instance, const LaunchOptions& options) {
    Composition composition(options);
    AppDelegate& delegate = composition.delegate();
    RecordingRescue& rescue = composition.rescue();
    SignalWatcher termination;
    ExitHandler exitHandler(rescue);
    QObject::connect(&composition.recorder(), &RecorderController::stateChanged, &delegate, [&] {
        if (composition.recorder().isActive()) {
            exitHandler.renew();
        }
    });
    QObject::connect(&instance, &SingleInstance::reopenRequested, &delegate,
                     [&delegate] { delegate.applicationShouldHandleReopen(); });
    QObject::connect(&termination, &SignalWatcher::terminationRequested, &delegate,
                     [&rescue] { rescue.leave([] { QCoreApplication::exit(EXIT_SUCCESS); }); });
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &delegate, &AppDelegate::commitData,
                     Qt::DirectConnection);
    delegate.applicationDidFinishLaunching();
    const int status = QCoreApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    prepareProcess();
    auto display = std::make_unique<DisplayCheck>();
    if (const auto reason = display->missing()) {
        std::fprintf(stderr, "%s\n", reason->c_str());
        return EXIT_FAILURE;
    }
    QApplication application(argc, argv);
    display.reset();
    const LaunchOptions options = LaunchOptions::parse(QCoreApplication::arguments());
    SingleInstance instance(SingleInstance::standardFolder());
    if (instance.claim() == SingleInstance::Role::later) {
        return instance.askToReopen() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    speakSpanish(application);
    dressUp(application);
    return run(application, instance, options);
}
