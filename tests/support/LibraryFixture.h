#pragma once

#include "library/Library.h"
#include "support/FakeAssetInspector.h"
#include "support/FakeFileActions.h"
#include "support/ManualQueue.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace velmo::test {

/// A library on a real folder, with a worker that runs when the test says so.
class LibraryFixture : public testing::Test {
protected:
    LibraryFixture() { std::filesystem::create_directory(folder); }

    Library& open() {
        auto queue = std::make_unique<ManualQueue>();
        worker = queue.get();
        library.reset();
        library = std::make_unique<Library>(
            folder, Library::Services{files, inspector, std::move(queue), [this] { return now; }});
        return *library;
    }

    /// What the worker has to do, and what it posts.
    void settle() {
        worker->run();
        QCoreApplication::sendPostedEvents();
    }

    std::filesystem::path video(const std::string& name) {
        return root.write("Velmo Studio" / std::filesystem::path(name));
    }

    void writeMetadata(std::string_view json) { root.write("Velmo Studio/.velmo-studio.json", json); }
    std::string metadataText() const { return contentOf(folder / ".velmo-studio.json"); }
    QJsonObject metadata() const { return QJsonDocument::fromJson(QByteArray::fromStdString(metadataText())).object(); }

    const Recording& item(const std::string& name) const {
        for (const Recording& each : library->items()) {
            if (each.url.filename().native() == name) {
                return each;
            }
        }
        static const Recording none;
        ADD_FAILURE() << name << " is not in the library";
        return none;
    }

    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const Recording& each : library->items()) {
            all.push_back(each.url.filename().native());
        }
        return all;
    }

    static Library::WallTime at(int year, int month, int day, int hour, int minute) {
        const QDateTime local(QDate(year, month, day), QTime(hour, minute));
        return Library::WallTime(std::chrono::milliseconds(local.toMSecsSinceEpoch()));
    }

    TemporaryFolder root;
    TemporaryFolder trash;
    std::filesystem::path folder = root / "Velmo Studio";
    FakeFileActions files{trash.path()};
    FakeAssetInspector inspector;
    Library::WallTime now = at(2026, 11, 15, 19, 14);
    ManualQueue* worker = nullptr;
    std::unique_ptr<Library> library;
};

} // namespace velmo::test
