#include "platform/desktop/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>

#include <gmock/gmock.h>
#include <xcb/randr.h>

#include <cstdlib>
#include <memory>

namespace velmo {
namespace {

TEST(QtScreens, AScreenHasTheNumberOfItsRandrOutput) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::unique_ptr<xcb_randr_get_screen_resources_current_reply_t, decltype(&std::free)> resources(
        xcb_randr_get_screen_resources_current_reply(connection,
                                                     xcb_randr_get_screen_resources_current(connection, root), nullptr),
        &std::free);
    ASSERT_TRUE(resources);
    const std::uint32_t output = xcb_randr_get_screen_resources_current_outputs(resources.get())[0];
    xcb_disconnect(connection);

    const auto screens = QtScreens().all();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].displayID, output);
    EXPECT_EQ(QtScreens::find(output), QGuiApplication::primaryScreen());
    EXPECT_EQ(QtScreens::find(output + 1), nullptr);
}

TEST(QtScreens, ThePrimaryScreenBeginsAtTheOriginOfTheGlobalPoints) {
    const QRect shown = QGuiApplication::primaryScreen()->geometry();
    const auto screens = QtScreens().all();
    ASSERT_FALSE(screens.empty());
    EXPECT_EQ(screens[0].frame, (Rect{0, 0, double(shown.width()), double(shown.height())}));
    EXPECT_EQ(screens[0].backingScaleFactor, 1);
}

} // namespace
} // namespace velmo
