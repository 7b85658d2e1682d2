// A small slide viewer for the demonstration: a class about the water cycle that fills the screen. Right and Left turn the
// slides.

#include <QApplication>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QStringList>
#include <QWidget>

#include <array>
#include <cmath>

namespace {

struct Slide {
    const char* title;
    std::array<const char*, 3> lines;
    const char* accent;
};

constexpr std::array<Slide, 4> kSlides = {{
    {"El ciclo del agua", {"Una gota, cuatro viajes", "Ciencias · 6.º grado", "¿De dónde viene la lluvia?"}, "#1f7fb8"},
    {"1 · Evaporación",
     {"El sol calienta mares y ríos", "El agua líquida se vuelve vapor", "El vapor sube, invisible"},
     "#d9822b"},
    {"2 · Condensación",
     {"Arriba hace frío", "El vapor se vuelve gotas pequeñas", "Millones de gotas son una nube"},
     "#5a6fb0"},
    {"3 · Precipitación",
     {"Las gotas se juntan y pesan", "Caen como lluvia, nieve o granizo", "Y el viaje empieza otra vez"},
     "#1f9d6f"},
}};

class Slides : public QWidget {
public:
    Slides() {
        setWindowTitle(QStringLiteral("El ciclo del agua"));
        setWindowFlag(Qt::FramelessWindowHint);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
        index_ = (index_ + step + static_cast<int>(kSlides.size())) % static_cast<int>(kSlides.size());
        update();
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const Slide& slide = kSlides[static_cast<std::size_t>(index_)];
        const QColor accent(QString::fromUtf8(slide.accent));
        painter.fillRect(rect(), QColor(0xfb, 0xf9, 0xf4));
        painter.fillRect(0, 0, width(), 18, accent);
        paintPicture(painter, accent);
        painter.setPen(QColor(0x1c, 0x27, 0x33));
        painter.setFont(QFont(QStringLiteral("Inter"), 54, QFont::Bold));
        painter.drawText(QPointF(120, 220), QString::fromUtf8(slide.title));
        painter.setFont(QFont(QStringLiteral("Inter"), 30));
        for (std::size_t i = 0; i < slide.lines.size(); ++i) {
            const double y = 380 + static_cast<double>(i) * 100;
            painter.setBrush(accent);
            painter.setPen(Qt::NoPen);
            painter.drawEllipse(QPointF(134, y - 14), 9, 9);
            painter.setPen(QColor(0x33, 0x41, 0x50));
            painter.drawText(QPointF(170, y), QString::fromUtf8(slide.lines[i]));
        }
    }

private:
    void paintPicture(QPainter& painter, const QColor& accent) const {
        const QRectF box(width() * 0.56, 300, width() * 0.36, height() * 0.56);
        QLinearGradient sky(box.topLeft(), box.bottomLeft());
        sky.setColorAt(0, accent.lighter(185));
        sky.setColorAt(1, QColor(0xff, 0xff, 0xff));
        painter.setPen(Qt::NoPen);
        painter.setBrush(sky);
        painter.drawRoundedRect(box, 28, 28);
        painter.setBrush(QColor(0xf4, 0xb9, 0x42));
        painter.drawEllipse(QPointF(box.right() - 110, box.top() + 110), 56, 56);
        QPainterPath sea(QPointF(box.left(), box.bottom() - 120));
        for (int i = 0; i <= 60; ++i) {
            sea.lineTo(box.left() + box.width() * i / 60.0, box.bottom() - 120 + 14 * std::sin(i * 0.55 + index_));
        }
        sea.lineTo(box.bottomRight() - QPointF(0, 28));
        sea.lineTo(box.bottomLeft() - QPointF(0, 28));
        sea.closeSubpath();
        painter.setBrush(QColor(0x2c, 0x7f, 0xb8));
        painter.drawPath(sea);
        painter.setBrush(QColor(255, 255, 255, 230));
        for (int i = 0; i < 4; ++i) {
            painter.drawEllipse(QPointF(box.left() + 120 + i * 52, box.top() + 150 - (i % 2) * 22), 52, 40);
        }
    }

    int index_ = 0;
};

} // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    Slides slides;
    slides.setGeometry(slides.screen()->geometry());
    slides.show();
    return QApplication::exec();
}
