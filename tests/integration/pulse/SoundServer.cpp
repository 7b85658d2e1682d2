#include "integration/pulse/SoundServer.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace velmo {

namespace {

[[noreturn]] void runServer(const std::string& folder) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    setenv("HOME", folder.c_str(), 1);
    // One server a D-Bus session: a second one refuses to start.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
    unsetenv("DISPLAY");
    const std::string socket = "module-native-protocol-unix socket=" + folder + "/pa.sock auth-anonymous=1";
    const char* sinkEnd = " norewinds=1 rate=48000 channels=2";
    const std::string speakers = std::string("module-null-sink sink_name=speakers") + sinkEnd;
    const std::string other = std::string("module-null-sink sink_name=other") + sinkEnd;
    const std::string feed = std::string("module-null-sink sink_name=micfeed") + sinkEnd;
    execlp("pulseaudio", "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
           "--log-target=file:/dev/null", "-L", speakers.c_str(), "-L", other.c_str(), "-L", feed.c_str(), "-L",
           "module-remap-source source_name=mic master=micfeed.monitor remix=no", "-L", socket.c_str(), nullptr);
    _exit(127);
}

} // namespace

SoundServer::SoundServer() {
    char pattern[] = "/tmp/velmo-sound-XXXXXX";
    folder_ = mkdtemp(pattern);
    const char* before = std::getenv("PULSE_SERVER");
    before_ = before != nullptr ? before : "";
    setenv("PULSE_SERVER", ("unix:" + folder_ + "/pa.sock").c_str(), 1);
    start();
}

SoundServer::~SoundServer() {
    kill();
    setenv("PULSE_SERVER", before_.c_str(), 1);
    std::filesystem::remove_all(folder_);
}

void SoundServer::start() {
    pid_ = fork();
    if (pid_ == 0) {
        runServer(folder_);
    }
    for (int i = 0; i < 200; ++i) {
        if (pactl("info")) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    throw std::runtime_error("the sound server did not start");
}

void SoundServer::kill() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
    }
    std::filesystem::remove(folder_ + "/pa.sock");
}

bool SoundServer::pactl(const std::string& arguments) const {
    return std::system(("pactl " + arguments + " >/dev/null 2>&1").c_str()) == 0;
}

} // namespace velmo
