#include "panels/setup/BubbleRows.h"

#include "panels/setup/CustomColorRow.h"
#include "panels/setup/Rows.h"
#include "ui/Chip.h"
#include "ui/FlowLayout.h"
#include "ui/Label.h"
#include "ui/Slider.h"
#include "ui/Swatch.h"
#include "ui/Theme.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include <cmath>

namespace velmo::BubbleRows {

namespace {

constexpr int kFine = 100; // steps of the slider to one of the setting
constexpr double kMostCorner = 0.5;
constexpr int kSwatchesInARow = 8;

/// By the order of the shapes.
constexpr const char* kShapeSymbols[] = {"circle.fill", "rectangle.fill", "rectangle.portrait.fill"};

Slider* makeCorners(Prefs& prefs) {
    auto* corners = new Slider(QStringLiteral("Esquinas"));
    corners->setRange(0, static_cast<int>(kMostCorner * kFine));
    corners->setPageStep(5);
    QObject::connect(corners, &QSlider::valueChanged, corners, [&prefs](int value) {
        // What the slider cannot show exactly is not overwritten by showing it.
        if (static_cast<int>(std::lround(prefs.cornerFraction * kFine)) != value) {
            prefs.cornerFraction = static_cast<double>(value) / kFine;
        }
    });
    Rows::follow(*corners, prefs, {&prefs.cornerFraction, &prefs.bubbleShape}, [corners, &prefs] {
        const QSignalBlocker quiet(corners);
        corners->setValue(static_cast<int>(std::lround(prefs.cornerFraction * kFine)));
        corners->setEnabled(prefs.bubbleShape.value() != BubbleShape::circle);
        corners->update();
    });
    return corners;
}

std::vector<QColor> colorsOf(ChameleonPalette palette) {
    std::vector<QColor> colors;
    for (const std::uint32_t hex : hexes(palette)) {
        colors.push_back(Theme::nsColor(hex));
    }
    return colors;
}

} // namespace

void addShape(QVBoxLayout& column, Prefs& prefs) {
    std::vector<Segments::Choice> shapes = Rows::choices<BubbleShape>();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        shapes[i].symbol = QString::fromLatin1(kShapeSymbols[i]);
    }
    auto* group = new Segments(QStringLiteral("Forma de la burbuja"), shapes);
    Rows::bind(*group, prefs, prefs.bubbleShape);
    Rows::add(column, group);
    Rows::addLabelled(column, QStringLiteral("Esquinas"), makeCorners(prefs),
                      QStringLiteral("De esquinas rectas a muy redondeadas"));
}

void addBorder(QVBoxLayout& column, Prefs& prefs) {
    auto* styles = new ChoiceGroup(QStringLiteral("Estilo del borde de la burbuja"));
    auto* row = new FlowLayout(6, styles);
    for (const RingStyle style : allCases<RingStyle>()) {
        auto* chip = new Chip(title(style));
        styles->add(rawValue(style), chip);
        row->addWidget(chip);
    }
    Rows::bind(*styles, prefs, prefs.ringStyle);
    Rows::addLabelled(column, styles->accessibleName(), styles);
    auto* weights = new Segments(QStringLiteral("Grosor del borde"), Rows::choices<RingWeight>());
    Rows::bind(*weights, prefs, prefs.ringWeight);
    Rows::addLabelled(column, weights->accessibleName(), weights);
}

void addColors(QVBoxLayout& column, Prefs& prefs) {
    auto* box = new QWidget;
    auto* rows = new QVBoxLayout(box);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    QLabel* heading = makeLabel({}, TextStyle::chip, Theme::muted);
    Rows::follow(*heading, prefs, {&prefs.chameleonPalette}, [heading, &prefs] {
        heading->setText(QStringLiteral("Colores del camaleón: ") + title(prefs.chameleonPalette.value()));
    });
    Rows::add(*rows, heading);
    auto* palettes = new ChoiceGroup(QStringLiteral("Colores del camaleón"));
    auto* grid = new QGridLayout(palettes);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    for (const ChameleonPalette palette : allCases<ChameleonPalette>()) {
        auto* swatch = new Swatch(title(palette), colorsOf(palette));
        palettes->add(rawValue(palette), swatch);
        const int index = static_cast<int>(palette);
        grid->addWidget(swatch, index / kSwatchesInARow, index % kSwatchesInARow);
    }
    Rows::bind(*palettes, prefs, prefs.chameleonPalette);
    rows->addWidget(palettes);
    column.addWidget(box);
    column.addWidget(new CustomColorRow(prefs));
}

} // namespace velmo::BubbleRows
