#pragma once

#include "panels/welcome/PermissionState.h"

#include <QString>
#include <QWidget>

class QLabel;

namespace velmo {

class Button;

/// One line of the welcome: what is asked for, what for, and how it stands. Main thread.
class PermissionRow final : public QWidget {
    Q_OBJECT
public:
    struct Words {
        QString symbol;
        QString title;
        QString description;
    };
    /// How the row ends.
    struct Standing {
        PermissionState state = PermissionState::unknown;
        /// In place of the description; empty for the description.
        QString word = {};
        /// In place of the button where a press would lead nowhere; empty for the button.
        QString instead = {};
        friend bool operator==(const Standing&, const Standing&) = default;
    };

    explicit PermissionRow(const Words& words, QWidget* parent = nullptr);

    void show(const Standing& standing);
    const Standing& standing() const { return standing_; }

signals:
    /// "Permitir" or "Abrir Ajustes".
    void acted();

private:
    const QString description_;
    Standing standing_;
    QLabel* text_;
    QWidget* done_;
    QLabel* instead_;
    Button* allow_;
    Button* settings_;
};

} // namespace velmo
