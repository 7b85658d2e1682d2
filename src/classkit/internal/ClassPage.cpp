#include "classkit/internal/ClassPage.h"

#include "base/AppName.h"
#include "base/AtomicFile.h"
#include "classkit/ClassKit.h"
#include "classkit/internal/FilePath.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace velmo::internal {

namespace {

constexpr const char* kPageName = "Ver la clase.html";
constexpr const char* kIndexName = "Índice.txt";

const QString kBeforeTitle = QStringLiteral(R"(<!doctype html>
<html lang="es"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1">
<title>)");

const QString kBeforeHeading = QStringLiteral(R"(</title>
<style>
:root{--bg:#0F2A21;--card:#143629;--text:#F3EFE6;--muted:#9DC2B1;--brand:#1FA971;--mint:#7FE8B8}
*{box-sizing:border-box}body{margin:0;background:var(--bg);color:var(--text);font:15px/1.5 -apple-system,system-ui,sans-serif}
main{max-width:1200px;margin:0 auto;padding:28px 16px;display:grid;gap:24px;grid-template-columns:minmax(0,1fr) 320px}
@media (max-width:860px){main{grid-template-columns:1fr}}
h1{grid-column:1/-1;margin:0;font-size:26px}video{width:100%;border-radius:14px;background:#000}
aside{display:grid;gap:18px;align-content:start}section{background:var(--card);border-radius:14px;padding:14px}
h2{margin:0 0 8px;font-size:12px;letter-spacing:.1em;text-transform:uppercase;color:var(--muted)}
ul{list-style:none;margin:0;padding:0}li+li{margin-top:4px}
button,a{display:flex;gap:10px;width:100%;padding:7px 9px;border:0;border-radius:9px;background:none;color:var(--text);font:inherit;text-align:left;text-decoration:none;cursor:pointer}
button:hover,a:hover{background:rgba(127,232,184,.1)}button span{color:var(--mint);font-variant-numeric:tabular-nums;min-width:46px}
em{font-style:normal;font-size:11px;color:var(--bg);background:var(--mint);border-radius:6px;padding:1px 6px;align-self:center}
footer{grid-column:1/-1;color:var(--muted);font-size:12px}
</style></head><body><main>
<h1>)");

const QString kBeforeVideo = QStringLiteral(R"(</h1>
<video id="v" src="../)");

const QString kBeforeIndex = QStringLiteral(R"(" controls preload="metadata"></video>
<aside>
<section><h2>Índice</h2><ul>)");

const QString kAfterIndex = QStringLiteral("</ul></section>\n");
const QString kBeforeMaterial = QStringLiteral("<section><h2>Material y links</h2><ul>");
const QString kAfterMaterial = QStringLiteral("</ul></section>");

const QString kBeforeCredit = QStringLiteral(R"(
</aside>
<footer>)");

const QString kAfterCredit = QStringLiteral(R"(</footer>
</main>
<script>
var v=document.getElementById('v');
document.querySelectorAll('button[data-t]').forEach(function(b){b.onclick=function(){v.currentTime=+b.dataset.t;v.play();};});
</script></body></html>)");

QString credit() {
    return QStringLiteral("Elaborado con Velmo Studio · ") + QString::fromUtf8(AppName::site);
}

/// The shortest form that reads back the same, always with a decimal point and never with an exponent.
QString numberText(double value) {
    std::array<char, 400> digits; // the longest double has 309 before the point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed).ptr;
    const QString text = QString::fromLatin1(digits.data(), end - digits.data());
    return text.contains(u'.') ? text : text + QStringLiteral(".0");
}

bool staysInPaths(char byte) {
    constexpr std::string_view kOthers = "-._~!$&'()*+,;=:@/";
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           kOthers.find(byte) != std::string_view::npos;
}

/// The characters of RFC 3986 paths stay, each other byte of UTF-8 becomes %XX. What is no Unicode stays as it is.
QString percentEncoded(const QString& text) {
    if (!text.isValidUtf16()) {
        return text;
    }
    constexpr std::string_view kHex = "0123456789ABCDEF";
    QByteArray encoded;
    for (const char byte : text.toUtf8()) {
        if (staysInPaths(byte)) {
            encoded += byte;
        } else {
            const auto value = static_cast<std::uint8_t>(byte);
            encoded += '%';
            encoded += kHex[value >> 4];
            encoded += kHex[value & 15];
        }
    }
    return QString::fromUtf8(encoded);
}

QString indexRow(const Chapter& chapter) {
    return QStringLiteral("<li><button data-t=\"") + numberText(chapter.time) + QStringLiteral("\"><span>") +
           timeLabel(chapter.time) + QStringLiteral("</span>") + escaped(chapter.title) +
           QStringLiteral("</button></li>");
}

QString addressOf(const KitItem& item, const ClassData& data) {
    if (item.kind != KitItem::Kind::file) {
        return escaped(item.location);
    }
    if (const auto copy = data.copied.find(item.id); copy != data.copied.end()) {
        return href(copy->second);
    }
    // A file URL is encoded already; its percent signs are encoded once more here.
    return href(QStringLiteral("file://") + percentEncoded(item.location));
}

QString labelOf(KitItem::Kind kind) {
    constexpr std::array kLabels{"Archivo", "Link", "Video"};
    return QString::fromLatin1(kLabels[static_cast<std::size_t>(kind)]);
}

QString materialRow(const KitItem& item, const ClassData& data) {
    return QStringLiteral("<li><a href=\"") + addressOf(item, data) + QStringLiteral("\" target=\"_blank\"><em>") +
           labelOf(item.kind) + QStringLiteral("</em>") + escaped(item.title) + QStringLiteral("</a></li>");
}

/// Empty without lines; else set off from what stands before it.
QString textSection(const QString& heading, const QStringList& lines) {
    return lines.isEmpty() ? QString()
                           : QStringLiteral("\n") + heading + QStringLiteral("\n\n") + lines.join(u'\n') + u'\n';
}

/// A new file is as open to others as its folder is; one that is there keeps its mode.
void writeShared(const std::filesystem::path& file, const QString& content) {
    using std::filesystem::perms;
    std::error_code ignored;
    const bool isNew = !std::filesystem::exists(file, ignored);
    if (!writeFileAtomically(file, content.toStdString()) || !isNew) {
        return;
    }
    constexpr perms kNoProgram = perms::owner_read | perms::owner_write | perms::group_read | perms::group_write |
                                 perms::others_read | perms::others_write;
    const perms folder = std::filesystem::status(file.parent_path(), ignored).permissions();
    if (folder != perms::unknown) {
        std::filesystem::permissions(file, folder & kNoProgram, ignored);
    }
}

} // namespace

QString timeLabel(double seconds) {
    constexpr double kMost = 1e15; // past this a double has no seconds to show
    const auto whole = static_cast<std::int64_t>(std::clamp(std::floor(seconds), 0.0, kMost));
    const auto twoDigits = [](std::int64_t value) { return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')); };
    if (whole < 3600) {
        return twoDigits(whole / 60) + u':' + twoDigits(whole % 60);
    }
    return QString::number(whole / 3600) + u':' + twoDigits(whole / 60 % 60) + u':' + twoDigits(whole % 60);
}

std::vector<Chapter> sortedByTime(const std::vector<Chapter>& chapters) {
    std::vector<Chapter> sorted = chapters;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Chapter& a, const Chapter& b) { return a.time < b.time; });
    return sorted;
}

QString escaped(QString text) {
    return text.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"))
        .replace(u'"', QStringLiteral("&quot;"));
}

QString href(const QString& text) {
    return escaped(percentEncoded(text));
}

QString html(const ClassData& data, const QString& title) {
    QString page = kBeforeTitle + escaped(title) + kBeforeHeading + escaped(title) + kBeforeVideo + href(data.video) +
                   kBeforeIndex;
    page += indexRow({0, QStringLiteral("Inicio"), std::nullopt});
    for (const Chapter& chapter : sortedByTime(data.chapters)) {
        page += indexRow(chapter);
    }
    page += kAfterIndex;
    if (!data.items.empty()) {
        page += kBeforeMaterial;
        for (const KitItem& item : data.items) {
            page += materialRow(item, data);
        }
        page += kAfterMaterial;
    }
    return page + kBeforeCredit + credit() + kAfterCredit;
}

QString indexText(const ClassData& data, const QString& title) {
    QStringList links;
    QStringList files;
    for (const KitItem& item : data.items) {
        const QString line = QStringLiteral("• ") + item.title;
        if (item.kind != KitItem::Kind::file) {
            links << line + QStringLiteral(": ") + item.location;
        } else if (const auto copy = data.copied.find(item.id); copy != data.copied.end()) {
            files << line + QStringLiteral(" (") + copy->second + u')';
        } else {
            files << line;
        }
    }
    return title + QStringLiteral("\n\nÍNDICE (para pegar en la descripción de YouTube)\n\n") +
           ClassKit::youtubeIndex(data.chapters) + u'\n' + textSection(QStringLiteral("LINKS"), links) +
           textSection(QStringLiteral("MATERIAL"), files) + u'\n' + credit() + u'\n';
}

void writePages(const ClassData& data, const std::filesystem::path& folder) {
    const QString title = stemOf(data.video);
    writeShared(folder / kIndexName, indexText(data, title));
    writeShared(folder / kPageName, html(data, title));
}

} // namespace velmo::internal
