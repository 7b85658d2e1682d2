// A window that paints known things at known times, for the demonstration, the end-to-end tests and the benches:
//
//   velmo-stage WORKLOAD [--fps N] [--size WxH] [--at X,Y] [--seconds S] [--color RRGGBB] [--title T] [--unmanaged]
//                        [--clock] [--no-pointer]
//
//   plain    one colour
//   tick     one colour, a shade darker in every second frame
//   still    one slide, painted once
//   lecture  a slide on which a letter appears ten times a second, and which changes every 10 s
//   scroll   a page of text that moves by 8 pixels a frame
//   motion   every pixel changes in every frame
//   tone     one colour, and a steady tone with marks on the sink `micfeed`, see ToneSound
//   beep     one colour, and a 1 kHz beep of 100 ms at the even seconds of CLOCK_MONOTONIC on the sink `micfeed`
//   flash    black; white for 100 ms every 2 s while a 1 kHz beep sounds on the sink `micfeed`
//
// All but plain, tick, tone, beep and flash burn a frame counter into the upper left corner: 24 cells of 16 pixels,
// most significant bit first, white for 1, with a white and a black cell before them. With --clock it is the time of
// the painting, in milliseconds of CLOCK_MONOTONIC.

#include "FlashSound.h"
#include "ToneSound.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace {

constexpr int kCell = 16;
constexpr int kBits = 24;

struct Options {
    std::string workload;
    int fps = 30;
    int width = 1920;
    int height = 1080;
    int x = 0;
    int y = 0;
    double seconds = 1e9;
    std::uint32_t color = 0x35506b;
    std::string title = "stage";
    bool unmanaged = false;
    bool clock = false;
    bool noPointer = false;
};

struct Server {
    xcb_connection_t* connection = nullptr;
    xcb_screen_t* screen = nullptr;
    xcb_window_t window = 0;
    xcb_pixmap_t back = 0;
    xcb_gcontext_t pen = 0;

    void fill(xcb_drawable_t target, std::uint32_t color, xcb_rectangle_t area) const {
        xcb_change_gc(connection, pen, XCB_GC_FOREGROUND, &color);
        xcb_poly_fill_rectangle(connection, target, pen, 1, &area);
    }
    void copy(xcb_drawable_t from, xcb_drawable_t to, int fromX, int fromY, int x, int y, int width, int height) const {
        xcb_copy_area(connection, from, to, pen, static_cast<std::int16_t>(fromX), static_cast<std::int16_t>(fromY),
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height));
    }
    xcb_pixmap_t makePixmap(int width, int height) const {
        const xcb_pixmap_t pixmap = xcb_generate_id(connection);
        xcb_create_pixmap(connection, screen->root_depth, pixmap, screen->root, static_cast<std::uint16_t>(width),
                          static_cast<std::uint16_t>(height));
        return pixmap;
    }
    void upload(xcb_pixmap_t pixmap, const std::vector<std::uint32_t>& pixels, int width) const {
        const int rows = static_cast<int>(pixels.size()) / width;
        const int band = std::max(1, 200'000 / (width * 4));
        for (int y = 0; y < rows; y += band) {
            const int height = std::min(band, rows - y);
            xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, pen, static_cast<std::uint16_t>(width),
                          static_cast<std::uint16_t>(height), 0, static_cast<std::int16_t>(y), 0, screen->root_depth,
                          static_cast<std::uint32_t>(width * height * 4),
                          reinterpret_cast<const std::uint8_t*>(pixels.data() + std::ptrdiff_t{y} * width));
        }
    }
};

// Something like text: words of small dark marks in lines, on a light page.
std::vector<std::uint32_t> page(int width, int height, unsigned seed) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0xf7f4ec);
    std::mt19937 random(seed);
    for (int y = 60; y + 22 < height; y += 30) {
        for (int x = 80; x < width - 80; x += 12) {
            if (random() % 6 == 0) {
                continue; // a gap between words
            }
            const std::uint32_t shape = random();
            for (int row = 0; row < 16; ++row) {
                for (int column = 0; column < 9; ++column) {
                    if ((shape >> ((row / 4) * 3 + column / 3)) & 1U) {
                        pixels[static_cast<std::size_t>((y + row) * width + x + column)] = 0x1c2733;
                    }
                }
            }
        }
    }
    return pixels;
}

std::vector<std::uint32_t> plasma(int width, int height, int phase) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int wave = ((x + phase * 37) ^ (y - phase * 23)) & 0xff;
            const int other = (x * 2 + y + phase * 61) / 3 & 0xff;
            pixels.push_back(static_cast<std::uint32_t>(wave << 16 | other << 8 | ((wave + other) / 2)));
        }
    }
    return pixels;
}

class Workload {
public:
    virtual ~Workload() = default;
    // Paints frame `n` into the back picture; false when nothing changed.
    virtual bool paint(const Server& server, int n) = 0;
    virtual bool countsFrames() const { return true; }
};

class Plain : public Workload {
public:
    explicit Plain(const Options& options) : options_(options) {}
    bool paint(const Server& server, int n) override {
        server.fill(server.back, color(), area());
        return n == 0;
    }
    bool countsFrames() const override { return false; }

protected:
    std::uint32_t color() const { return options_.color; }
    xcb_rectangle_t area() const {
        return {0, 0, static_cast<std::uint16_t>(options_.width), static_cast<std::uint16_t>(options_.height)};
    }

private:
    Options options_;
};

class Tone final : public Plain {
public:
    using Plain::Plain;

private:
    ToneSound sound_;
};

class Beep final : public Plain {
public:
    using Plain::Plain;

private:
    FlashSound sound_{FlashSound::Times::hostClock};
};

class Tick final : public Plain {
public:
    using Plain::Plain;
    bool paint(const Server& server, int n) override {
        const std::uint32_t shade = n % 2 == 0 ? color() : color() & 0xf8f8f8U;
        server.fill(server.back, shade, area());
        return true;
    }
};

class Still : public Workload {
public:
    explicit Still(const Options& options) : options_(options) {}
    bool paint(const Server& server, int n) override {
        if (n == 0) {
            server.upload(server.back, page(options_.width, options_.height, 1), options_.width);
        }
        return n == 0;
    }

private:
    Options options_;
};

class Lecture : public Workload {
public:
    explicit Lecture(const Options& options) : options_(options) {}
    bool paint(const Server& server, int n) override {
        const int slide = n / (options_.fps * 10);
        if (slide != slide_) {
            slide_ = slide;
            letters_ = 0;
            server.upload(server.back, page(options_.width, options_.height, static_cast<unsigned>(slide) + 7),
                          options_.width);
            return true;
        }
        if (n % std::max(1, options_.fps / 10) != 0) {
            return false;
        }
        const auto x = static_cast<std::int16_t>(100 + (letters_ % 100) * 14);
        const auto y = static_cast<std::int16_t>(options_.height / 2 + (letters_ / 100) * 30);
        server.fill(server.back, 0x8a2430, {x, y, 9, 18});
        ++letters_;
        return true;
    }

private:
    Options options_;
    int slide_ = -1;
    int letters_ = 0;
};

class Scroll : public Workload {
public:
    explicit Scroll(const Options& options) : options_(options) {}
    bool paint(const Server& server, int n) override {
        if (n == 0) {
            sheet_ = server.makePixmap(options_.width, options_.height);
            server.upload(sheet_, page(options_.width, options_.height, 3), options_.width);
        }
        const int shift = n * 8 % options_.height;
        server.copy(sheet_, server.back, 0, shift, 0, 0, options_.width, options_.height - shift);
        server.copy(sheet_, server.back, 0, 0, 0, options_.height - shift, options_.width, shift);
        return true;
    }

private:
    Options options_;
    xcb_pixmap_t sheet_ = 0;
};

class Motion : public Workload {
public:
    explicit Motion(const Options& options) : options_(options) {}
    bool paint(const Server& server, int n) override {
        if (n == 0) {
            for (int phase = 0; phase < kPhases; ++phase) {
                pictures_.push_back(server.makePixmap(options_.width, options_.height));
                server.upload(pictures_.back(), plasma(options_.width, options_.height, phase), options_.width);
            }
        }
        server.copy(pictures_[static_cast<std::size_t>(n % kPhases)], server.back, 0, 0, 0, 0, options_.width,
                    options_.height);
        return true;
    }

private:
    static constexpr int kPhases = 12;
    Options options_;
    std::vector<xcb_pixmap_t> pictures_;
};

class Flash : public Workload {
public:
    explicit Flash(const Options& options) : options_(options) {}
    bool paint(const Server& server, int n) override {
        const bool lit = sound_.beepIsSounding();
        if (n > 0 && lit == lit_) {
            return false;
        }
        lit_ = lit;
        server.fill(server.back, lit ? 0xffffffU : 0U,
                    {0, 0, static_cast<std::uint16_t>(options_.width), static_cast<std::uint16_t>(options_.height)});
        return true;
    }
    bool countsFrames() const override { return false; }

private:
    Options options_;
    FlashSound sound_;
    bool lit_ = false;
};

template <typename T>
std::unique_ptr<Workload> make(const Options& options) {
    return std::make_unique<T>(options);
}

const std::map<std::string, std::function<std::unique_ptr<Workload>(const Options&)>> kWorkloads = {
    {"plain", make<Plain>},   {"still", make<Still>},   {"lecture", make<Lecture>},
    {"scroll", make<Scroll>}, {"motion", make<Motion>}, {"flash", make<Flash>},
    {"tone", make<Tone>},     {"tick", make<Tick>},     {"beep", make<Beep>},
};

int millisecondsNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<int>((now.tv_sec * 1000 + now.tv_nsec / 1'000'000) % (1L << kBits));
}

void burnCounter(const Server& server, int n) {
    const auto cell = [&](int index, bool lit) {
        server.fill(server.back, lit ? 0xffffffU : 0U, {static_cast<std::int16_t>(index * kCell), 0, kCell, kCell});
    };
    cell(0, true);
    cell(1, false);
    for (int bit = 0; bit < kBits; ++bit) {
        cell(bit + 2, ((n >> (kBits - 1 - bit)) & 1) != 0);
    }
}

// The mouse is not to be seen over the window.
void hidePointer(const Server& server) {
    const xcb_pixmap_t none = xcb_generate_id(server.connection);
    xcb_create_pixmap(server.connection, 1, none, server.window, 1, 1);
    const xcb_gcontext_t pen = xcb_generate_id(server.connection);
    const std::uint32_t clear = 0;
    xcb_create_gc(server.connection, pen, none, XCB_GC_FOREGROUND, &clear);
    const xcb_rectangle_t all{0, 0, 1, 1};
    xcb_poly_fill_rectangle(server.connection, none, pen, 1, &all);
    const xcb_cursor_t cursor = xcb_generate_id(server.connection);
    xcb_create_cursor(server.connection, cursor, none, none, 0, 0, 0, 0, 0, 0, 0, 0);
    const std::uint32_t values[] = {cursor};
    xcb_change_window_attributes(server.connection, server.window, XCB_CW_CURSOR, values);
}

bool openWindow(Server& server, const Options& options) {
    server.connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(server.connection) != 0) {
        return false;
    }
    server.screen = xcb_setup_roots_iterator(xcb_get_setup(server.connection)).data;
    server.window = xcb_generate_id(server.connection);
    const std::uint32_t values[] = {options.color, options.unmanaged ? 1U : 0U, XCB_EVENT_MASK_EXPOSURE};
    const auto width = static_cast<std::uint16_t>(options.width);
    const auto height = static_cast<std::uint16_t>(options.height);
    xcb_create_window(server.connection, XCB_COPY_FROM_PARENT, server.window, server.screen->root,
                      static_cast<std::int16_t>(options.x), static_cast<std::int16_t>(options.y), width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, server.screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_change_property(server.connection, XCB_PROP_MODE_REPLACE, server.window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(options.title.size()), options.title.data());
    const std::uint32_t hints[18] = {1 | 2 | 4 | 8, static_cast<std::uint32_t>(options.x),
                                     static_cast<std::uint32_t>(options.y), width, height};
    xcb_change_property(server.connection, XCB_PROP_MODE_REPLACE, server.window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
    const std::uint32_t undecorated[5] = {2, 0, 0, 0, 0};
    const auto cookie = xcb_intern_atom(server.connection, 0, 15, "_MOTIF_WM_HINTS");
    if (auto* atom = xcb_intern_atom_reply(server.connection, cookie, nullptr)) {
        xcb_change_property(server.connection, XCB_PROP_MODE_REPLACE, server.window, atom->atom, atom->atom, 32, 5,
                            undecorated);
        std::free(atom);
    }
    server.pen = xcb_generate_id(server.connection);
    const std::uint32_t noExposures = 0;
    xcb_create_gc(server.connection, server.pen, server.window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    server.back = server.makePixmap(options.width, options.height);
    if (options.noPointer) {
        hidePointer(server);
    }
    xcb_map_window(server.connection, server.window);
    xcb_flush(server.connection);
    return true;
}

// True when the window must be painted again from the back picture.
bool drainEvents(const Server& server) {
    bool exposed = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(server.connection)) {
        exposed |= (event->response_type & 0x7f) == XCB_EXPOSE;
        std::free(event);
    }
    return exposed;
}

int play(Server& server, const Options& options, Workload& workload) {
    timespec due{};
    clock_gettime(CLOCK_MONOTONIC, &due);
    const long interval = 1'000'000'000L / options.fps;
    const int frames = options.seconds > 1e8 ? 1 << 30 : static_cast<int>(options.seconds * options.fps);
    int painted = 0;
    for (int n = 0; n < frames && xcb_connection_has_error(server.connection) == 0; ++n) {
        const bool changed = workload.paint(server, n);
        if (changed && workload.countsFrames()) {
            burnCounter(server, options.clock ? millisecondsNow() : n);
        }
        painted += changed ? 1 : 0;
        if (drainEvents(server) || changed) {
            server.copy(server.back, server.window, 0, 0, 0, 0, options.width, options.height);
        }
        xcb_flush(server.connection);
        due.tv_nsec += interval;
        due.tv_sec += due.tv_nsec / 1'000'000'000L;
        due.tv_nsec %= 1'000'000'000L;
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &due, nullptr);
    }
    std::printf("painted %d\n", painted);
    return 0;
}

bool parse(int count, char** arguments, Options& options) {
    if (count < 2 || kWorkloads.find(arguments[1]) == kWorkloads.end()) {
        return false;
    }
    options.workload = arguments[1];
    for (int i = 2; i < count; ++i) {
        const std::string name = arguments[i];
        if (name == "--unmanaged") {
            options.unmanaged = true;
            continue;
        }
        if (name == "--no-pointer") {
            options.noPointer = true;
            continue;
        }
        if (name == "--clock") {
            options.clock = true;
            continue;
        }
        if (i + 1 >= count) {
            return false;
        }
        const char* value = arguments[++i];
        if (name == "--fps") {
            options.fps = std::max(1, std::atoi(value));
        } else if (name == "--size") {
            if (std::sscanf(value, "%dx%d", &options.width, &options.height) != 2) {
                return false;
            }
        } else if (name == "--at") {
            if (std::sscanf(value, "%d,%d", &options.x, &options.y) != 2) {
                return false;
            }
        } else if (name == "--seconds") {
            options.seconds = std::atof(value);
        } else if (name == "--color") {
            options.color = static_cast<std::uint32_t>(std::strtoul(value, nullptr, 16));
        } else if (name == "--title") {
            options.title = value;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace

int main(int count, char** arguments) {
    Options options;
    if (!parse(count, arguments, options)) {
        std::fprintf(stderr, "usage: velmo-stage plain|tick|still|lecture|scroll|motion|flash|tone|beep [--fps N] "
                             "[--size WxH] [--at X,Y] "
                             "[--seconds S] [--color RRGGBB] [--title T] [--unmanaged] [--clock] [--no-pointer]\n");
        return 2;
    }
    Server server;
    if (!openWindow(server, options)) {
        std::fprintf(stderr, "velmo-stage: no X server\n");
        return 1;
    }
    if (options.workload == "flash") {
        options.fps = 250; // how often it asks whether the beep sounds
    }
    const auto workload = kWorkloads.at(options.workload)(options);
    return play(server, options, *workload);
}
