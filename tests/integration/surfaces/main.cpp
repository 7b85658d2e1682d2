#include "ui/Look.h"

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    velmo::Look::apply(application);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
