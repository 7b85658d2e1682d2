#include <gmock/gmock.h>

#include <QGuiApplication>

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // fonts need an application; also where the tests are only listed
    QGuiApplication application(count, arguments);
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
