#include "app/ClassKitAdapter.h"

#include "support/FakeFileActions.h"
#include "support/ManualQueue.h"
#include "support/MemoryDefaultsStore.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::ManualQueue;
using test::TemporaryFolder;

class NoChooser final : public FileChooser {
public:
    void chooseFiles(const QString&, const QString&,
                     std::function<void(const std::vector<std::filesystem::path>&)>) override {}
};

class SessionsClassKit : public testing::Test {
protected:
    SessionsClassKit() {
        auto own = std::make_unique<ManualQueue>();
        queue = own.get();
        adapter.emplace(kit, std::move(own));
    }

    test::MemoryDefaultsStore store;
    test::FakeFileActions files;
    NoChooser chooser;
    ClassKit kit{store, {files, chooser, [] {}, [](const QString&, const QString&) {}, [](const QString&) {}}};
    ManualQueue* queue = nullptr;
    std::optional<ClassKitAdapter> adapter;
    TemporaryFolder folder;
};

TEST_F(SessionsClassKit, IsTheListAndTheSwitchAsTheyAreNow) {
    EXPECT_TRUE(adapter->items().empty());
    EXPECT_TRUE(adapter->copyFiles());
    kit.add(QStringLiteral("a.b"));
    kit.setCopyFiles(false);
    EXPECT_EQ(adapter->items(), kit.items());
    EXPECT_FALSE(adapter->copyFiles());
}

TEST_F(SessionsClassKit, WritesTheFolderOnItsQueueAndThenSaysSo) {
    const std::vector<Chapter> chapters{{3, QStringLiteral("Marcador 1"), std::nullopt}};
    bool done = false;
    adapter->writeFolder(folder / "a.mp4", {}, chapters, true, [&] {
        EXPECT_TRUE(std::filesystem::exists(folder / "a · material/Ver la clase.html"));
        done = true;
    });
    EXPECT_FALSE(std::filesystem::exists(folder / "a · material")) << "not on the thread that asks";
    queue->run();
    EXPECT_TRUE(done);
}

TEST_F(SessionsClassKit, AlsoSaysSoWhenThereIsNothingToWrite) {
    bool done = false;
    adapter->writeFolder(folder / "a.mp4", {}, {}, true, [&] { done = true; });
    queue->run();
    EXPECT_TRUE(done);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace
} // namespace velmo
