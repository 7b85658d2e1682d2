#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // unit tests need no display
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
