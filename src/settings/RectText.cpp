#include "settings/RectText.h"

#include <QByteArray>

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace velmo {

namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool take(char wanted) {
        skipBlanks();
        if (rest_.empty() || rest_.front() != wanted) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    bool take(double& number) {
        skipBlanks();
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        if (error != std::errc{} || !std::isfinite(number)) {
            return false;
        }
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }

    bool atEnd() {
        skipBlanks();
        return rest_.empty();
    }

private:
    void skipBlanks() {
        const auto first = rest_.find_first_not_of(" \t\r\n");
        rest_.remove_prefix(first == std::string_view::npos ? rest_.size() : first);
    }

    std::string_view rest_;
};

bool takePair(Reader& reader, double& first, double& second) {
    return reader.take('{') && reader.take(first) && reader.take(',') && reader.take(second) && reader.take('}');
}

QString numberText(double value) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

} // namespace

QString rectText(const Rect& rect) {
    return QStringLiteral("{{%1, %2}, {%3, %4}}")
        .arg(numberText(rect.x), numberText(rect.y), numberText(rect.width), numberText(rect.height));
}

std::optional<Rect> rectFromText(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    Reader reader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    Rect rect;
    const bool complete = reader.take('{') && takePair(reader, rect.x, rect.y) && reader.take(',') &&
                          takePair(reader, rect.width, rect.height) && reader.take('}') && reader.atEnd();
    return complete ? std::optional(rect) : std::nullopt;
}

} // namespace velmo
