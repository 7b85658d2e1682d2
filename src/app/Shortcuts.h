#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <functional>

namespace velmo {

/// The table of keys that the user reads. Written for the user, not made from the registered keys.
class Shortcuts {
public:
    struct Row {
        const char* key;
        const char* description;
    };
    static const std::array<Row, 15> list;

    static QString message();
    /// What stands above the table.
    static QString introduction();
    /// The introduction, two line breaks, one line for each row: key, tab, description.
    static QString informativeText();
    static QString button();

    using Presenter =
        std::function<void(const QString& message, const QString& informative, const QStringList& buttons)>;
    /// Brings the application to the front and shows the table. Main thread.
    static void show(const std::function<void()>& toFront, const Presenter& presenter);
};

} // namespace velmo
