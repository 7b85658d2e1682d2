#pragma once

#include "support/XTestClient.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace velmo::test {

/// Does things to windows that users and programs do, at random but the same for each seed.
class RandomDesktop {
public:
    enum class Kinds { opaque, all };

    RandomDesktop(const std::string& display, unsigned seed, Kinds kinds)
        : display_(display), random_(seed), kinds_(kinds) {
        for (auto& client : clients_) {
            client = std::make_unique<XTestClient>(display_);
        }
    }

    void step() {
        if (windows_.size() < 4 || (windows_.size() < 14 && below(6) == 0)) {
            open();
            return;
        }
        Window& window = windows_[static_cast<std::size_t>(below(static_cast<int>(windows_.size())))];
        XTestClient& client = *clients_[static_cast<std::size_t>(window.client)];
        switch (below(kinds_ == Kinds::all ? 13 : 10)) {
        case 0:
            return client.move(window.id, below(1500) - 150, below(900) - 100);
        case 1:
            return client.resize(window.id, 1 + below(500), 1 + below(400));
        case 2:
            return client.restack(window.id, below(2) == 0 ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW);
        case 3: {
            const Window& other = windows_[static_cast<std::size_t>(below(static_cast<int>(windows_.size())))];
            return client.restack(window.id, below(2) == 0 ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW,
                                  other.id == window.id ? 0 : other.id);
        }
        case 4:
            return client.unmap(window.id);
        case 5:
            return client.map(window.id);
        case 6:
            return paint(client, window);
        case 7:
            paint(client, window);
            return paint(client, window);
        case 8:
            return below(3) == 0 ? end(window) : client.circulate(below(2) == 0);
        case 9:
            return below(8) == 0 ? killClient() : paint(client, window);
        case 10:
            return client.setOpacity(window.id, below(5) / 4.0);
        case 11:
            return below(3) == 0 ? client.unshape(window.id)
                                 : client.shape(window.id, {{below(50), below(50), below(200), below(200)},
                                                            {below(200), below(100), 60, 50}});
        default:
            return resizeAndPaint(client, window);
        }
    }
    void sync() {
        for (auto& client : clients_) {
            client->sync();
        }
    }

private:
    struct Window {
        xcb_window_t id = 0;
        int client = 0;
        bool alpha = false;
    };

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    std::uint32_t color(bool alpha) {
        const std::uint32_t a = alpha ? static_cast<std::uint32_t>(below(256)) : 255;
        const auto part = [&] { return static_cast<std::uint32_t>(below(static_cast<int>(a) + 1)); };
        const std::uint32_t r = part();
        const std::uint32_t g = part();
        return a << 24 | r << 16 | g << 8 | part();
    }
    void open() {
        Window window{0, below(3), kinds_ == Kinds::all && below(3) == 0};
        XTestClient& client = *clients_[static_cast<std::size_t>(window.client)];
        window.id =
            client.show({below(1200) - 50, below(700) - 50, 1 + below(600), 1 + below(500)},
                        {.alpha = window.alpha, .border = below(3) == 0 ? below(6) : 0, .color = color(window.alpha)});
        windows_.push_back(window);
    }
    void paint(XTestClient& client, const Window& window) {
        client.fill(window.id, {below(300) - 20, below(200) - 20, 1 + below(300), 1 + below(200)}, color(window.alpha));
    }
    void resizeAndPaint(XTestClient& client, const Window& window) {
        client.resize(window.id, 1 + below(500), 1 + below(400));
        paint(client, window);
        client.move(window.id, below(800), below(400));
    }
    void end(const Window& window) {
        clients_[static_cast<std::size_t>(window.client)]->destroy(window.id);
        const xcb_window_t id = window.id;
        std::erase_if(windows_, [id](const Window& each) { return each.id == id; });
    }
    void killClient() {
        const int victim = below(3);
        clients_[static_cast<std::size_t>(victim)] = std::make_unique<XTestClient>(display_);
        std::erase_if(windows_, [victim](const Window& each) { return each.client == victim; });
    }

    std::string display_;
    std::mt19937 random_;
    Kinds kinds_;
    std::unique_ptr<XTestClient> clients_[3];
    std::vector<Window> windows_;
};

} // namespace velmo::test
