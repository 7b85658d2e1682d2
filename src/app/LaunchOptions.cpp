#include "app/LaunchOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFileInfo>

namespace velmo {

namespace {

/// "FORMAT:URL" for the one format that is no file, else a file's path.
FfmpegCameras::Source sourceOf(const QString& text) {
    const QString filters = QStringLiteral("lavfi:");
    const std::string id = text.toStdString();
    return text.startsWith(filters)
               ? FfmpegCameras::Source{{id, id}, "lavfi", text.mid(filters.size()).toStdString()}
               : FfmpegCameras::Source{{id, QFileInfo(text).fileName().toStdString()}, "", "file:" + id};
}

} // namespace

LaunchOptions LaunchOptions::parse(const QStringList& arguments) {
    const QCommandLineOption synthetic(QStringLiteral("synthetic-cameras"),
                                       QStringLiteral("Offers two cameras that need no hardware."));
    const QCommandLineOption noCounter(QStringLiteral("no-camera-counter"),
                                       QStringLiteral("Their pictures are not numbered."));
    const QCommandLineOption flash(QStringLiteral("camera-flash"),
                                   QStringLiteral("They are white for 100 ms at every multiple of <seconds>."),
                                   QStringLiteral("seconds"));
    const QCommandLineOption source(QStringLiteral("camera-source"),
                                    QStringLiteral("Offers a file or \"lavfi:GRAPH\" as a camera."),
                                    QStringLiteral("source"));
    const QCommandLineOption folder(QStringLiteral("camera-folder"),
                                    QStringLiteral("Looks for cameras in <folder> instead of /dev."),
                                    QStringLiteral("folder"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({synthetic, noCounter, flash, source, folder});
    parser.process(arguments);
    LaunchOptions options;
    if (parser.isSet(synthetic)) {
        options.syntheticCameras = {!parser.isSet(noCounter), parser.value(flash).toDouble()};
    }
    for (const QString& each : parser.values(source)) {
        options.cameraSources.push_back(sourceOf(each));
    }
    if (parser.isSet(folder)) {
        options.cameraFolder = parser.value(folder).toStdString();
    }
    return options;
}

} // namespace velmo
