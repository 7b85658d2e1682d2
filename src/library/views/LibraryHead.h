#pragma once

#include "library/Recording.h"

#include <QWidget>

#include <vector>

class QLabel;

namespace velmo {

/// What stands above the recordings: the title, their number, length and size, and two buttons.
class LibraryHead final : public QWidget {
    Q_OBJECT

public:
    explicit LibraryHead(QWidget* parent = nullptr);

    void setRecordings(const std::vector<Recording>& recordings);
    /// "9 grabaciones · 6:12:10 en total · 8,4 GB"
    static QString stats(const std::vector<Recording>& recordings);

signals:
    void folderRequested();
    void newRecordingRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* title_;
    QLabel* stats_;
};

} // namespace velmo
