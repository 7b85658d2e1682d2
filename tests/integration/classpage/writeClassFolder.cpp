#include "classkit/ClassKit.h"
#include "classkit/KitJson.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <iostream>
#include <iterator>

/// Writes the class folder that is described on the standard input: {"video": path, "items": [], "chapters": []}.
int main() {
    using namespace velmo;
    const std::string input{std::istreambuf_iterator<char>(std::cin), {}};
    const QJsonObject given = QJsonDocument::fromJson(QByteArray::fromStdString(input)).object();
    const auto items = itemsFromJson(given["items"]);
    const auto chapters = chaptersFromJson(given["chapters"]);
    if (!items || !chapters) {
        return EXIT_FAILURE;
    }
    const auto folder = ClassKit::writeFolder(given["video"].toString().toStdString(), *items, *chapters, true);
    std::cout << (folder ? folder->native() : "");
    return EXIT_SUCCESS;
}
