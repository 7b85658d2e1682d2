#pragma once

#include <QWidget>

class QPlainTextEdit;

namespace velmo {

/// Several lines of plain text to type into. It grows with its text up to some lines, then scrolls. Tab goes on to the
/// next control. What is pasted comes as plain lines without controls. Main thread.
class TextArea final : public QWidget {
    Q_OBJECT
public:
    /// Room around the shape for the mark of the focus, the same on all sides.
    static constexpr int kRoom = 3;
    /// In code units; more is not taken from a paste.
    static constexpr qsizetype kMostText = 2'000'000;

    explicit TextArea(const QString& placeholder, QWidget* parent = nullptr);

    QString text() const;
    /// No news.
    void setText(const QString& text);

signals:
    /// By the user.
    void edited();
    /// The field is left: by the keyboard, by a click elsewhere, with its window.
    void left();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QPlainTextEdit* editor_;
};

} // namespace velmo
