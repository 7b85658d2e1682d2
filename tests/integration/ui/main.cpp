#include <gmock/gmock.h>

#include <QApplication>

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
