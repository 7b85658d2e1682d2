#include "classkit/KitItem.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(KitItem, HasTheIconOfItsKindAndExtension) {
    const auto icon = [](KitItem::Kind kind, const char* location) {
        return KitItem{QUuid::createUuid(), kind, {}, QString::fromUtf8(location)}.symbol();
    };
    using Kind = KitItem::Kind;
    EXPECT_EQ(icon(Kind::link, "https://a.b/c.pdf"), "link");
    EXPECT_EQ(icon(Kind::video, "https://a.b/c.pdf"), "play.rectangle.fill");
    for (const char* file : {"/a.key", "/a.ppt", "/a.pptx", "/a.ODP"}) {
        EXPECT_EQ(icon(Kind::file, file), "rectangle.on.rectangle.angled") << file;
    }
    EXPECT_EQ(icon(Kind::file, "/a.b/guía.PDF"), "doc.richtext");
    for (const char* file : {"/a.png", "/a.JPG", "/a.jpeg", "/a.heic", "/a.gif"}) {
        EXPECT_EQ(icon(Kind::file, file), "photo") << file;
    }
    for (const char* file : {"/a.mp4", "/a.mov", "/a.m4v"}) {
        EXPECT_EQ(icon(Kind::file, file), "film") << file;
    }
    for (const char* file : {"/a.xls", "/a.xlsx", "/a.numbers", "/a.csv"}) {
        EXPECT_EQ(icon(Kind::file, file), "tablecells") << file;
    }
    EXPECT_EQ(icon(Kind::file, "/a.txt"), "doc");
    EXPECT_EQ(icon(Kind::file, "/a.pdf/sin extensión"), "doc");
}

TEST(KitItem, IsReachedByAPathOrAnAddress) {
    KitItem item{QUuid::createUuid(), KitItem::Kind::file, {}, QStringLiteral("/tmp/año #1?.pdf")};
    EXPECT_EQ(item.url()->toLocalFile(), item.location);
    item = {QUuid::createUuid(), KitItem::Kind::link, {}, QStringLiteral("https://a.b/c?d=1")};
    EXPECT_EQ(item.url()->host(), "a.b");
    item.location = QStringLiteral("https://[mal");
    EXPECT_EQ(item.url(), std::nullopt);
}

TEST(KitItem, NewItemsHaveIdsOfTheirOwn) {
    EXPECT_NE(KitItem().id, KitItem().id);
}

struct Pasted {
    const char* text;
    const char* title;
    const char* location;
};

class PastedAddress : public testing::TestWithParam<Pasted> {};

TEST_P(PastedAddress, BecomesALinkWithAReadableTitle) {
    const auto item = KitItem::web(QString::fromUtf8(GetParam().text));
    ASSERT_TRUE(item) << GetParam().text;
    EXPECT_EQ(item->kind, KitItem::Kind::link);
    EXPECT_EQ(item->title.toStdString(), GetParam().title);
    EXPECT_EQ(item->location.toStdString(), GetParam().location);
    EXPECT_TRUE(item->url()) << "what was accepted can be opened";
}

INSTANTIATE_TEST_SUITE_P(
    All, PastedAddress,
    testing::Values(
        Pasted{"www.example.org/a", "example.org/a", "https://www.example.org/a"},
        Pasted{"  \n\thttps://example.org/ \n", "example.org", "https://example.org/"},
        Pasted{"http://WWW.Example.ORG", "example.org", "http://WWW.Example.ORG"},
        Pasted{"example.org:8080/a?b=1#c", "example.org/a", "https://example.org:8080/a?b=1#c"},
        Pasted{"www.", "www.", "https://www."}, // a host of these letters only still has a name
        Pasted{"example.org/www.a", "example.org/www.a", "https://example.org/www.a"},
        Pasted{"example.org/una guía 100%", "example.org/una guía 100%", "https://example.org/una guía 100%"},
        Pasted{"example.org/gu%C3%ADa", "example.org/guía", "https://example.org/gu%C3%ADa"},
        Pasted{"youtube.com.example.org/a", "youtube.com.example.org/a", "https://youtube.com.example.org/a"},
        Pasted{"m.youtu.be/a", "m.youtu.be/a", "https://m.youtu.be/a"}));

class PastedVideo : public testing::TestWithParam<const char*> {};

TEST_P(PastedVideo, BecomesAVideo) {
    const auto item = KitItem::web(QString::fromUtf8(GetParam()));
    ASSERT_TRUE(item);
    EXPECT_EQ(item->kind, KitItem::Kind::video);
    EXPECT_EQ(item->title, "Video de YouTube");
}

INSTANTIATE_TEST_SUITE_P(All, PastedVideo,
                         testing::Values("youtu.be/abc", "https://youtube.com/watch?v=abc", "WWW.YouTube.com/watch?v=a",
                                         "m.youtube.com", "notyoutube.com/only-the-letters-count"));

class PastedText : public testing::TestWithParam<const char*> {};

TEST_P(PastedText, ThatIsNoAddressGivesNoItem) {
    EXPECT_EQ(KitItem::web(QString::fromUtf8(GetParam())), std::nullopt) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(All, PastedText,
                         testing::Values("", " \n\t ", "localhost", "localhost:8080/a.b", "https://", "file:///a.pdf",
                                         "hola a todos. Adiós", "https://[mal.b", "https://a.b:puerto/", "://"));

TEST(PastedAddress, GivesANewItemEachTime) {
    EXPECT_NE(KitItem::web(QStringLiteral("a.b"))->id, KitItem::web(QStringLiteral("a.b"))->id);
}

} // namespace
} // namespace velmo
