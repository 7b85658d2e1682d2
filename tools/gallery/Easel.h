#pragma once

#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QString>
#include <QTimer>

#include <cstdio>
#include <functional>

namespace velmo {

/// Where the gallery's pictures are made: grabbed from the screen once what moves has come to rest.
class Easel {
public:
    explicit Easel(QDir folder) : folder_(std::move(folder)) {}

    static void wait(int milliseconds) {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }

    /// `placeOf` is asked after the wait.
    void save(const QString& name, const std::function<QRect()>& placeOf) const {
        wait(450);
        const QRect place = placeOf();
        QScreen* screen = QGuiApplication::primaryScreen();
        const QRect part = place.marginsAdded(QMargins(40, 60, 40, 60)) & screen->geometry();
        const QPixmap picture = screen->grabWindow(0, part.x(), part.y(), part.width(), part.height());
        const QString path = folder_.filePath(name + QStringLiteral(".png"));
        picture.save(path);
        std::printf("%s at %d,%d\n", qPrintable(path), place.x(), place.y());
    }

    const QDir& folder() const { return folder_; }

private:
    QDir folder_;
};

} // namespace velmo
