#include "app/LaunchOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace velmo {

LaunchOptions LaunchOptions::parse(const QStringList& arguments) {
    const QCommandLineOption synthetic(QStringLiteral("synthetic-cameras"),
                                       QStringLiteral("Offers two cameras that need no hardware."));
    const QCommandLineOption noCounter(QStringLiteral("no-camera-counter"),
                                       QStringLiteral("Their pictures are not numbered."));
    const QCommandLineOption flash(QStringLiteral("camera-flash"),
                                   QStringLiteral("They are white for 100 ms at every multiple of <seconds>."),
                                   QStringLiteral("seconds"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({synthetic, noCounter, flash});
    parser.process(arguments);
    LaunchOptions options;
    if (parser.isSet(synthetic)) {
        options.syntheticCameras = {!parser.isSet(noCounter), parser.value(flash).toDouble()};
    }
    return options;
}

} // namespace velmo
