#include "platform/LogFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace velmo {
namespace {

/// Sets a variable of the environment for the length of a test.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) {
            before_ = before;
        }
        set(value);
    }
    ~ScopedVariable() { set(before_ ? before_->c_str() : nullptr); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    void set(const char* value) {
        if (value == nullptr) {
            unsetenv(name_);
        } else {
            setenv(name_, value, 1);
        }
    }

    const char* name_;
    std::optional<std::string> before_;
};

TEST(LogFolder, IsBelowTheStateFolder) {
    const ScopedVariable state("XDG_STATE_HOME", "/somewhere/state");
    EXPECT_EQ(logFolder(), "/somewhere/state/velmo-studio");
}

TEST(LogFolder, IsBelowTheHomeWithoutAStateFolder) {
    const ScopedVariable state("XDG_STATE_HOME", nullptr);
    const ScopedVariable home("HOME", "/home/maestra");
    EXPECT_EQ(logFolder(), "/home/maestra/.local/state/velmo-studio");
}

TEST(LogFolder, ARelativeStateFolderDoesNotCount) {
    const ScopedVariable state("XDG_STATE_HOME", "state");
    const ScopedVariable home("HOME", "/home/maestra");
    EXPECT_EQ(logFolder(), "/home/maestra/.local/state/velmo-studio");
}

TEST(LogFolder, IsAbsoluteEvenWithoutAHomeVariable) {
    const ScopedVariable state("XDG_STATE_HOME", "");
    const ScopedVariable home("HOME", nullptr);
    EXPECT_TRUE(logFolder().is_absolute());
}

} // namespace
} // namespace velmo
