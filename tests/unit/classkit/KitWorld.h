#pragma once

#include "classkit/KitServices.h"

#include "support/FakeFileActions.h"
#include "support/MemoryDefaultsStore.h"

#include <QString>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmo::test {

/// Confirms with the files that it was given, or holds the question open.
class FakeFileChooser final : public FileChooser {
public:
    void chooseFiles(const QString& title, const QString& prompt,
                     std::function<void(const std::vector<std::filesystem::path>&)> chosen) override {
        asked.push_back((title + QStringLiteral(" / ") + prompt).toStdString());
        confirm = std::move(chosen);
    }

    std::vector<std::string> asked;
    std::function<void(const std::vector<std::filesystem::path>&)> confirm;
};

/// What stands around a class kit in a test. Everything that the kit does to it is in `calls`, in order, but what it
/// asks of `files` and `chooser`, who keep their own.
struct KitWorld {
    MemoryDefaultsStore store;
    FakeFileActions files;
    FakeFileChooser chooser;
    std::vector<std::string> calls;

    KitServices services() {
        return {files, chooser, [this] { calls.push_back("toFront"); },
                [this](const QString& title, const QString& location) {
                    calls.push_back("chapter " + title.toStdString() + " @ " + location.toStdString());
                },
                [this](const QString& text) { calls.push_back("flash " + text.toStdString()); }};
    }
};

} // namespace velmo::test
