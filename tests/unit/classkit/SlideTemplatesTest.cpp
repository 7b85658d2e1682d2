#include "classkit/SlideTemplates.h"

#include "support/FakeFileActions.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace velmo {
namespace {

namespace fs = std::filesystem;

class SlideTemplatesTest : public testing::Test {
protected:
    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    static std::string read(const fs::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void reveal() { SlideTemplates::reveal(folder.path() / "share", folder.path() / "Documents", files); }

    test::TemporaryFolder folder;
    test::FakeFileActions files;
    const fs::path source = folder.path() / "share/plantillas";
    const fs::path target = folder.path() / "Documents/Velmo Studio/Plantillas";
};

TEST_F(SlideTemplatesTest, AreCopiedToTheDocumentsAndShown) {
    write(source / "clara.pptx", "clara");
    write(source / "oscura.key/datos", "dentro");
    reveal();
    EXPECT_EQ(read(target / "clara.pptx"), "clara");
    EXPECT_EQ(read(target / "oscura.key/datos"), "dentro");
    EXPECT_THAT(files.calls, testing::ElementsAre("open Plantillas"));
}

TEST_F(SlideTemplatesTest, ATemplateThatIsThereAlreadyStaysAsItIs) {
    write(source / "clara.pptx", "clara");
    write(source / "nueva.pptx", "nueva");
    write(target / "clara.pptx", "de la profesora");
    reveal();
    EXPECT_EQ(read(target / "clara.pptx"), "de la profesora");
    EXPECT_EQ(read(target / "nueva.pptx"), "nueva");
}

TEST_F(SlideTemplatesTest, WithoutTemplatesTheFolderIsShownEmpty) {
    reveal();
    EXPECT_TRUE(fs::is_empty(target));
    EXPECT_THAT(files.calls, testing::ElementsAre("open Plantillas"));
}

} // namespace
} // namespace velmo
