#include "ui/FloatingPanel.h"
#include "support/WaitUntil.h"
#include "ui/AlertDialog.h"
#include "ui/Button.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace velmo {
namespace {

using namespace std::chrono_literals;
using test::waitUntil;

xcb_connection_t* x11() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_window_t root() {
    return xcb_setup_roots_iterator(xcb_get_setup(x11())).data->root;
}

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
    return {reply, &std::free};
}

xcb_window_t idOf(const QWidget& widget) {
    return static_cast<xcb_window_t>(widget.winId());
}

/// Children of the root, from back to front.
std::vector<xcb_window_t> stack() {
    const auto tree = owned(xcb_query_tree_reply(x11(), xcb_query_tree(x11(), root()), nullptr));
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

bool standsAbove(const QWidget& front, const QWidget& back) {
    const auto windows = stack();
    return std::find(windows.begin(), windows.end(), idOf(front)) >
           std::find(windows.begin(), windows.end(), idOf(back));
}

std::vector<QRect> inputRegion(const QWidget& widget) {
    const auto reply = owned(xcb_shape_get_rectangles_reply(
        x11(), xcb_shape_get_rectangles(x11(), idOf(widget), XCB_SHAPE_SK_INPUT), nullptr));
    std::vector<QRect> rects;
    const xcb_rectangle_t* list = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
        rects.emplace_back(list[i].x, list[i].y, list[i].width, list[i].height);
    }
    return rects;
}

/// By the server's word and by Qt's: what Qt heard may be of a moment that is over.
bool hasKeyboard(const QWidget& window) {
    const auto reply = owned(xcb_get_input_focus_reply(x11(), xcb_get_input_focus(x11()), nullptr));
    return reply->focus == idOf(window) && window.isActiveWindow();
}

class Card final : public FloatingPanel {
public:
    explicit Card(PanelLevel level, const QRect& place = {100, 100, 300, 80}) : FloatingPanel(level, {}) {
        setCardGeometry(place);
        show();
        const bool seen = waitUntil([this] { return windowHandle()->isExposed(); });
        EXPECT_TRUE(seen);
    }
};

TEST(FloatingPanel, IsAChildOfTheRootAtItsExactPlaceThatNoWindowManagerTouches) {
    const Card panel(PanelLevel::bar);
    const auto windows = stack();
    EXPECT_NE(std::find(windows.begin(), windows.end(), idOf(panel)), windows.end());
    const auto attributes =
        owned(xcb_get_window_attributes_reply(x11(), xcb_get_window_attributes(x11(), idOf(panel)), nullptr));
    EXPECT_TRUE(attributes->override_redirect);
    EXPECT_EQ(panel.cardGeometry(), QRect(100, 100, 300, 80));
}

TEST(FloatingPanel, TheMouseGoesThroughTheRoomForTheShadow) {
    const Card panel(PanelLevel::bar);
    const std::vector<QRect> card{panel.cardGeometry().translated(-panel.pos())};
    EXPECT_TRUE(waitUntil([&] { return inputRegion(panel) == card; })) << testing::PrintToString(inputRegion(panel));
}

TEST(FloatingPanel, WhatIsClickThroughTakesNoMouseAtAll) {
    Card panel(PanelLevel::spotlight);
    panel.setClickThrough(true);
    EXPECT_TRUE(waitUntil([&] { return inputRegion(panel).empty(); }));
    panel.setClickThrough(false);
    EXPECT_TRUE(waitUntil([&] { return inputRegion(panel).size() == 1; }));
}

TEST(FloatingPanel, AGreaterLevelIsInFrontWhicheverCameUpLast) {
    const Card countdown(PanelLevel::countdown);
    const Card bar(PanelLevel::bar);
    const Card spotlight(PanelLevel::spotlight);
    const Card bubble(PanelLevel::bubble);
    EXPECT_TRUE(waitUntil([&] { return standsAbove(countdown, bar); }));
    EXPECT_TRUE(waitUntil([&] { return standsAbove(bar, bubble); }));
    EXPECT_TRUE(waitUntil([&] { return standsAbove(bubble, spotlight); }));
}

TEST(FloatingPanel, DoesNotTakeTheFocusFromWhatIsInFront) {
    QWidget other;
    other.setGeometry(200, 200, 300, 200);
    other.show();
    other.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(other); }));
    const Card panel(PanelLevel::bar);
    test::pass(200ms);
    EXPECT_TRUE(hasKeyboard(other));
}

TEST(AlertDialog, ComesToTheFrontWithTheKeyboard) {
    QWidget other;
    other.setGeometry(200, 200, 300, 200);
    other.show();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(other); }));
    auto* dialog = new AlertDialog({AlertDialog::Icon::loss,
                                    QStringLiteral("¿Descartar esta grabación?"),
                                    QStringLiteral("El video se eliminará."),
                                    {QStringLiteral("Descartar"), QStringLiteral("Cancelar")},
                                    AlertDialog::First::isDestructive});
    dialog->present();
    EXPECT_TRUE(waitUntil([&] { return hasKeyboard(*dialog); }));
    const auto* focused = qobject_cast<Button*>(QApplication::focusWidget());
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(focused->text(), QStringLiteral("Cancelar"));
    dialog->close();
}

} // namespace
} // namespace velmo
