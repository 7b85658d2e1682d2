#include "app/StatusItem.h"

#include "FakeTray.h"
#include "support/WaitUntil.h"

#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <gmock/gmock.h>

namespace velmo {
namespace {

/// What the item of the tray says of itself over the bus.
class StatusItemTest : public testing::Test {
protected:
    QVariant property(const char* name) {
        auto call = QDBusMessage::createMethodCall(tray_.item(), "/StatusNotifierItem",
                                                   "org.freedesktop.DBus.Properties", "Get");
        call.setArguments({"org.kde.StatusNotifierItem", name});
        QDBusPendingCallWatcher answer(bus_.asyncCall(call)); // the item answers from this very event loop
        EXPECT_TRUE(test::waitUntil([&answer] { return answer.isFinished(); }));
        const QDBusMessage reply = answer.reply();
        return reply.arguments().isEmpty() ? QVariant() : reply.arguments().first().value<QDBusVariant>().variant();
    }
    QString toolTip() {
        const auto argument = property("ToolTip").value<QDBusArgument>();
        QString icon;
        QString title;
        argument.beginStructure();
        argument >> icon;
        skipPictures(argument);
        argument >> title;
        return title;
    }
    static void skipPictures(const QDBusArgument& argument) {
        argument.beginArray();
        while (!argument.atEnd()) {
            int width = 0;
            int height = 0;
            QByteArray pixels;
            argument.beginStructure();
            argument >> width >> height >> pixels;
            argument.endStructure();
        }
        argument.endArray();
    }

    test::FakeTray tray_;
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "panel");
    ShellActions actions_;
};

TEST_F(StatusItemTest, ItAppearsInTheTrayAndTheClockIsItsToolTip) {
    StatusItem item(actions_);
    item.setMenu(StatusItemModel::menu(StatusItemModel::State::recording, false));
    item.setLook(StatusItemModel::look(StatusItemModel::State::recording, 61));
    ASSERT_TRUE(test::waitUntil([this] { return !tray_.item().isEmpty(); }));
    EXPECT_EQ(toolTip(), "Grabando 01:01");
    item.setLook(StatusItemModel::look(StatusItemModel::State::idle, 0));
    EXPECT_EQ(toolTip(), "Velmo Studio");
}

} // namespace
} // namespace velmo
