#pragma once

#include <QWidget>

namespace velmo {

class Prefs;
class TextField;
class ColorWell;

/// A ring colour of the user's own, by its hexadecimal name or picked. An empty field gives it up. Main thread.
class CustomColorRow final : public QWidget {
    Q_OBJECT
public:
    /// `prefs` is borrowed.
    explicit CustomColorRow(Prefs& prefs, QWidget* parent = nullptr);

private:
    void typed();
    void show();

    Prefs& prefs_;
    ColorWell* well_;
    TextField* hex_;
};

} // namespace velmo
