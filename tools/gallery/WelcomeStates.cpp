#include "WelcomeStates.h"

#include "panels/WelcomeWindow.h"
#include "unit/panels/FakeFindings.h"
#include "unit/session/World.h"

namespace velmo {
namespace {

class States final : public test::World {
public:
    explicit States(const Easel& easel) : easel_(easel) {}

    void showAll() {
        findings.video = DeviceFinding::granted;
        findings.audio = DeviceFinding::granted;
        show(QStringLiteral("ready"));
        permissions.video = permissions.audio = 0;
        findings.video = findings.audio = DeviceFinding::unknown;
        show(QStringLiteral("unasked"));
        findings.video = findings.audio = DeviceFinding::absent;
        show(QStringLiteral("nothing-there"));
        capture.errors[0] = Error{"test", 1, "no"};
        capture.queries = 0;
        permissions.video = 2;
        permissions.audio = 3;
        findings.video = DeviceFinding::refused;
        findings.audio = DeviceFinding::silent;
        show(QStringLiteral("refused"));
        capture.queries = 0;
        hasSettings_ = false;
        show(QStringLiteral("refused-no-settings"));
    }

private:
    void TestBody() override {}

    void show(const QString& name) {
        WelcomeWindow window(
            {capture, permissions, findings, timers, [](auto) {}, [this](auto) { return hasSettings_; }}, prefs);
        window.present();
        easel_.save(QStringLiteral("welcome-") + name, [&window] { return window.card().translated(window.pos()); });
    }

    const Easel& easel_;
    test::FakeFindings findings;
    bool hasSettings_ = true;
};

} // namespace

void WelcomeStates::showAll(const Easel& easel) {
    States(easel).showAll();
}

} // namespace velmo
