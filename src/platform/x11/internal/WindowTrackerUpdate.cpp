#include "platform/x11/internal/WindowTracker.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

namespace velmo::x11 {
namespace {

/// Damage in more pieces than this is taken as its bounding rectangle.
constexpr int kMaxDamageRects = 64;

bool needsProbe(const TrackedWindow& window) {
    const bool asksOfVisible = window.viewable && (window.ownerAgain || window.opacityAgain);
    return window.describeAgain || window.shapeAgain || asksOfVisible;
}

Region damageOnRoot(const xcb_xfixes_fetch_region_reply_t& reply, const TrackedWindow& window) {
    Region region;
    const xcb_rectangle_t* rects = xcb_xfixes_fetch_region_rectangles(&reply);
    const int count = xcb_xfixes_fetch_region_rectangles_length(&reply);
    const auto add = [&region](const xcb_rectangle_t& r) { region.add(PixelRect{r.x, r.y, r.width, r.height}); };
    if (count > kMaxDamageRects) {
        add(reply.extents);
    } else {
        std::for_each(rects, rects + count, add);
    }
    region.translate(window.outer.x + window.border, window.outer.y + window.border);
    region.intersect(window.bounds());
    return region;
}

} // namespace

Region WindowTracker::update() {
    refreshStale();
    listVisible();
    collectDamage();
    return std::exchange(dirty_, Region());
}

void WindowTracker::refreshStale() {
    std::vector<TrackedWindow*> stale;
    for (auto& [id, window] : windows_) {
        if (needsProbe(window)) {
            stale.push_back(&window);
        }
    }
    if (!stale.empty()) {
        std::for_each(stale.begin(), stale.end(), [this](TrackedWindow* each) { markDirty(*each); });
        probeWindows(connection_, exclusion_, stale);
        std::for_each(stale.begin(), stale.end(), [this](TrackedWindow* each) { markDirty(*each); });
    }
    for (auto& [id, window] : windows_) {
        prepareToRead(window);
    }
}

/// Gives a visible window its pixmap and its damage object, and takes them from one that does not need them.
void WindowTracker::prepareToRead(TrackedWindow& window) {
    if (!window.isVisible()) {
        releaseServerObjects(window);
        window.pixmapAgain = true;
        return;
    }
    xcb_connection_t* xcb = connection_.xcb();
    if (window.damage == 0) {
        window.damage = xcb_generate_id(xcb);
        xcb_damage_create(xcb, window.damage, window.id, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        // a new one calls everything damaged; so do we
        window.fetched = xcb_damage_subtract(xcb, window.damage, XCB_NONE, XCB_NONE).sequence;
        markDirty(window);
    }
    if (std::exchange(window.pixmapAgain, false)) {
        if (window.pixmap != 0) {
            xcb_free_pixmap(xcb, window.pixmap);
        }
        window.pixmap = xcb_generate_id(xcb);
        xcb_composite_name_window_pixmap(xcb, window.id, window.pixmap);
        markDirty(window);
    }
}

void WindowTracker::listVisible() {
    visible_.clear();
    for (const xcb_window_t id : order_.bottomToTop()) {
        TrackedWindow* window = find(id);
        if (window != nullptr && window->isVisible()) {
            visible_.push_back(window);
        }
    }
}

void WindowTracker::collectDamage() {
    std::vector<std::pair<TrackedWindow*, Region>> damage; // top to bottom
    fetchDamage(damage);
    if (damage.empty()) {
        return;
    }
    Region hidden;
    auto next = damage.begin();
    for (auto it = visible_.rbegin(); it != visible_.rend() && next != damage.end(); ++it) {
        if (*it == next->first) {
            next->second.subtract(hidden);
            dirty_.add(next->second);
            ++next;
        }
        if ((*it)->isOpaque()) {
            hidden.add((*it)->bounds());
        }
    }
}

void WindowTracker::fetchDamage(std::vector<std::pair<TrackedWindow*, Region>>& into) {
    damagedNow_.clear();
    for (auto it = visible_.rbegin(); it != visible_.rend(); ++it) {
        if (std::exchange((*it)->damaged, false)) {
            damagedNow_.push_back(*it);
            askForDamage(**it);
        }
    }
    for (const auto& [window, sequence] : asked_) {
        const xcb_xfixes_fetch_region_cookie_t cookie{sequence};
        if (const auto reply = take(xcb_xfixes_fetch_region_reply, connection_.xcb(), cookie)) {
            into.emplace_back(window, damageOnRoot(*reply, *window));
        }
    }
    asked_.clear();
}

void WindowTracker::askForDamage(TrackedWindow& window) {
    window.fetched = xcb_damage_subtract(connection_.xcb(), window.damage, XCB_NONE, fixesRegion_).sequence;
    asked_.emplace_back(&window, xcb_xfixes_fetch_region(connection_.xcb(), fixesRegion_).sequence);
}

void WindowTracker::askForLateDamage() {
    for (TrackedWindow* window : damagedNow_) {
        askForDamage(*window);
    }
    damagedNow_.clear();
}

Region WindowTracker::takeLateDamage() {
    Region late;
    for (const auto& [window, sequence] : asked_) {
        const xcb_xfixes_fetch_region_cookie_t cookie{sequence};
        if (const auto reply = take(xcb_xfixes_fetch_region_reply, connection_.xcb(), cookie)) {
            late.add(damageOnRoot(*reply, *window));
        }
    }
    asked_.clear();
    return late;
}

} // namespace velmo::x11
