#pragma once

#include "surfaces/internal/PrompterLayout.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <map>
#include <optional>

namespace velmo {

/// The script behind a window of a few lines. Lines are painted once, before they come into view, and then only moved,
/// by parts of a pixel. Laying out a long script goes on between the events. A press tells and does nothing else.
/// Main thread.
class PrompterView final : public QWidget {
    Q_OBJECT

public:
    /// Between the edge of the view and the text.
    static constexpr int kInset = 18;

    explicit PrompterView(QWidget* parent = nullptr);
    ~PrompterView() override;

    /// Takes up a text and a size in points, for the width that the view has. `keepPlace` keeps the line to be read;
    /// without, it stands at its beginning.
    enum class Place { begin, keep };
    void load(const QString& script, double fontSize, Place place);
    /// Points from the top of the text.
    void setPosition(double position);
    double position() const { return position_; }
    /// The position at which the text ends; endless while it is not known yet.
    double end() const;

    /// The middle of the line to be read, from the top of the view.
    static double markerY(double fontSize) { return 2 * fontSize; }

signals:
    void pressed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void work();
    bool paintNextLine();
    void compose();
    void addPicture(const QImage& picture, double top, double light);
    std::pair<std::size_t, std::size_t> seenLines() const;
    double inset() const;
    const QImage& picture(std::size_t line);
    double light(std::size_t line) const;

    std::optional<PrompterLayout> layout_;
    double fontSize_ = 28;
    double position_ = 0;
    long long shown_ = -1;                   // the position in quarters of a device pixel
    std::map<std::size_t, QImage> pictures_; // of the lines in and around the view
    QImage canvas_;
    QTimer work_;
};

} // namespace velmo
