#include <gmock/gmock.h>

#include <QApplication>

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // also where the tests are only listed
    QApplication application(count, arguments);
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
