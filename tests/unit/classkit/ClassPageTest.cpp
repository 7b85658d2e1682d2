#include "classkit/internal/ClassPage.h"

#include "classkit/ClassKit.h"

#include "support/ReadOnlyFolder.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using internal::escaped;
using internal::href;
using internal::html;
using internal::indexText;
using internal::timeLabel;
using test::contentOf;
using test::TemporaryFolder;
using testing::HasSubstr;
using testing::Not;

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

std::string golden(const char* name) {
    return contentOf(std::filesystem::path(GOLDEN_FOLDER) / name);
}

KitItem item(KitItem::Kind kind, const char* title, const char* location) {
    return {QUuid::createUuid(), kind, text(title), text(location)};
}

Chapter chapter(double time, const char* title) {
    return {time, text(title), std::nullopt};
}

/// Every kind of row, times out of order, and every character that needs care.
ClassData fullClass() {
    using Kind = KitItem::Kind;
    ClassData data;
    data.video = text("Física & \"Química\" · 2ª <parte> de 'A'.mp4");
    data.items = {item(Kind::file, "guía", "/home/ana/guía.pdf"),
                  item(Kind::link, "example.org/a", "https://example.org/a?b=1&c=\"2\""),
                  item(Kind::file, "mis notas", "/home/ana/mis notas # 1?.txt"),
                  item(Kind::video, "Video de YouTube", "https://youtu.be/x")};
    data.chapters = {chapter(3601, "example.org/a"), chapter(10.2, "guía"),
                     chapter(10.9, "Marcador 2"),    chapter(3599.9, "a < b > c \"d\" 'e'"),
                     chapter(3600, "Marcador 4"),    chapter(0.4, "Antes &amp; después")};
    data.copied = {{data.items[0].id, text("Material/guía (2).pdf")}};
    return data;
}

ClassData bareClass() {
    return {text("Clase 1.2.mp4"), {}, {}, {}};
}

TEST(ClassPage, OfAFullClassIsByteForByteTheKnownOne) {
    EXPECT_EQ(html(fullClass(), text("Física & \"Química\" · 2ª <parte> de 'A'")).toStdString(), golden("full.html"));
}

TEST(ClassPage, WithoutChaptersAndItemsHasTheFirstRowAndAnEmptyLineForTheMaterial) {
    EXPECT_EQ(html(bareClass(), text("Clase 1.2")).toStdString(), golden("bare.html"));
}

TEST(ClassIndex, OfAFullClassIsByteForByteTheKnownOne) {
    EXPECT_EQ(indexText(fullClass(), text("Física & \"Química\" · 2ª <parte> de 'A'")).toStdString(),
              golden("full.txt"));
}

TEST(ClassIndex, WithoutWebItemsAndFilesHasNeitherOfTheirParts) {
    EXPECT_EQ(indexText(bareClass(), text("Clase 1.2")).toStdString(), golden("bare.txt"));
}

TEST(ClassIndex, HasOnlyThePartsThatHaveItems) {
    ClassData data = bareClass();
    data.items = {item(KitItem::Kind::file, "a", "/a")};
    EXPECT_THAT(indexText(data, {}).toStdString(), Not(HasSubstr("LINKS")));
    data.items = {item(KitItem::Kind::link, "a", "https://a.b")};
    EXPECT_THAT(indexText(data, {}).toStdString(), Not(HasSubstr("MATERIAL")));
}

TEST(YouTubeIndex, WithoutChaptersIsTheOneLine) {
    EXPECT_EQ(ClassKit::youtubeIndex({}), "00:00 Inicio");
}

TEST(YouTubeIndex, LeavesOutTheFirstSecondAndAllButTheFirstOfOneSecond) {
    EXPECT_EQ(ClassKit::youtubeIndex(
                  {chapter(10.9, "d"), chapter(0.4, "a"), chapter(10.2, "c"), chapter(1, "b"), chapter(11, "e")}),
              "00:00 Inicio\n00:01 b\n00:10 c\n00:11 e");
}

TEST(YouTubeIndex, KeepsTheOrderOfMakingForChaptersOfOneTime) {
    std::vector<Chapter> chapters;
    for (int i = 0; i < 40; ++i) {
        chapters.push_back({5, QString::number(i), std::nullopt});
    }
    EXPECT_EQ(ClassKit::youtubeIndex(chapters), "00:00 Inicio\n00:05 0");
}

struct Label {
    double time;
    const char* label;
};

class TimeLabel : public testing::TestWithParam<Label> {};

TEST_P(TimeLabel, CountsWholeSecondsRoundedDown) {
    EXPECT_EQ(timeLabel(GetParam().time).toStdString(), GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(All, TimeLabel,
                         testing::Values(Label{0, "00:00"}, Label{0.999, "00:00"}, Label{59.99, "00:59"},
                                         Label{60, "01:00"}, Label{3599.9, "59:59"}, Label{3600, "1:00:00"},
                                         Label{3601, "1:00:01"}, Label{36061, "10:01:01"}, Label{360000, "100:00:00"},
                                         Label{-0.5, "00:00"}, Label{1e300, "277777777777:46:40"}));

TEST(ClassPage, WritesTimesInTheirShortestFormWithAPoint) {
    for (const auto& [time, written] : {std::pair{83.0, "83.0"},
                                        {125.4, "125.4"},
                                        {0.1 + 0.2, "0.30000000000000004"},
                                        {1e-5, "0.00001"},
                                        {1e6, "1000000.0"}}) {
        ClassData data = bareClass();
        data.chapters = {chapter(time, "a")};
        EXPECT_THAT(html(data, {}).toStdString(), HasSubstr(std::string("<button data-t=\"") + written + "\">"));
    }
}

TEST(Escape, TakesTheAmpersandFirstAndLeavesTheApostrophe) {
    EXPECT_EQ(escaped(text("&<>\"'&lt;")), "&amp;&lt;&gt;&quot;'&amp;lt;");
}

TEST(Href, KeepsThePathCharactersOfUrlsAndEncodesAllElse) {
    EXPECT_EQ(href(text("azAZ09-._~!$'()*+,;=:@/")), "azAZ09-._~!$'()*+,;=:@/");
    EXPECT_EQ(href(text("&")), "&amp;");
    EXPECT_EQ(href(text(" \"#%<>?[\\]^`{|}\n\x7f")), "%20%22%23%25%3C%3E%3F%5B%5C%5D%5E%60%7B%7C%7D%0A%7F");
    EXPECT_EQ(href(text("ñ·€😀")), "%C3%B1%C2%B7%E2%82%AC%F0%9F%98%80");
    EXPECT_EQ(href(QString(QChar(0xD800)) + text("<")), QString(QChar(0xD800)) + text("&lt;"))
        << "what is no Unicode cannot be encoded";
}

std::size_t count(const std::string& whole, const std::string& part) {
    std::size_t found = 0;
    for (auto at = whole.find(part); at != std::string::npos; at = whole.find(part, at + part.size())) {
        ++found;
    }
    return found;
}

class HardTitle : public testing::TestWithParam<const char*> {};

TEST_P(HardTitle, AddsItsRowsAndNoMarkupOfItsOwn) {
    const QString title = text(GetParam()).repeated(10'000 / text(GetParam()).size());
    ClassData data{title + text(".mp4"), {}, {{1, title, title}}, {}};
    data.items = {{QUuid::createUuid(), KitItem::Kind::file, title, title},
                  {QUuid::createUuid(), KitItem::Kind::link, title, title},
                  {QUuid::createUuid(), KitItem::Kind::file, title, title}};
    data.copied = {{data.items[2].id, text("Material/") + title}};
    const std::string page = html(data, title).toStdString();
    EXPECT_EQ(count(page, "<"), count(golden("bare.html"), "<") + 6 + 2 + 4 + 3 * 6);
    EXPECT_EQ(count(page, "<script"), 1u);
    EXPECT_EQ(count(page, "\""), count(golden("bare.html"), "\"") + 2 + 3 * 4);
    EXPECT_EQ(ClassData::fromJson(data.toJson()), data);
    EXPECT_TRUE(indexText(data, title).contains(text("00:01 ") + title));
}

INSTANTIATE_TEST_SUITE_P(All, HardTitle,
                         testing::Values("</title><script>alert(1)</script>", "\" onclick=\"x", "'\"<&>", "a\r\nb\n",
                                         "שלום \xE2\x80\xAE مرحبا", "x", "&quot;&#34;", "%22%3C", "\x01\t]]>-->"));

TEST(ClassPages, AreAsOpenToOthersAsTheirFolder) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder, static_cast<std::filesystem::perms>(0755));
    internal::writePages(bareClass(), folder);
    for (const char* name : {"Ver la clase.html", "Índice.txt"}) {
        EXPECT_EQ(static_cast<int>(std::filesystem::status(folder / name).permissions()), 0644) << name;
    }
    std::filesystem::permissions(folder / "Índice.txt", static_cast<std::filesystem::perms>(0600));
    internal::writePages(bareClass(), folder);
    EXPECT_EQ(static_cast<int>(std::filesystem::status(folder / "Índice.txt").permissions()), 0600)
        << "what the user chose stays";
}

TEST(ClassPages, OneThatCannotBeWrittenDoesNotKeepTheOtherBack) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "Índice.txt");
    internal::writePages(bareClass(), folder);
    EXPECT_EQ(contentOf(folder / "Ver la clase.html"), golden("bare.html"));
    std::filesystem::remove(folder / "Índice.txt");
    std::filesystem::remove(folder / "Ver la clase.html");
    std::filesystem::create_directory(folder / "Ver la clase.html");
    internal::writePages(bareClass(), folder);
    EXPECT_EQ(contentOf(folder / "Índice.txt"), golden("bare.txt"));
}

TEST(ClassPages, StayAsTheyWereInAFolderThatCannotBeChanged) {
    const TemporaryFolder folder;
    internal::writePages(bareClass(), folder);
    const test::ReadOnlyFolder readOnly(folder.path());
    internal::writePages(fullClass(), folder);
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        ++entries;
    }
    EXPECT_EQ(entries, 2u);
}

} // namespace
} // namespace velmo
