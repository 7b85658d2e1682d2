#include "panels/setup/SetupCards.h"

#include "panels/setup/BubbleSection.h"
#include "panels/setup/PresenterSection.h"
#include "panels/setup/ScriptSection.h"
#include "panels/setup/SourcesSection.h"
#include "panels/setup/VideoSection.h"
#include "panels/setup/ZoomSection.h"

#include <utility>

namespace velmo {

namespace {

template <typename Section>
SetupSection own(SetupContext& context, SetupCard::Head head, bool (*belongsTo)(RecordMode) = nullptr) {
    return {std::move(head), [&context] { return new Section(context); }, belongsTo};
}

} // namespace

std::vector<SetupSection> setupCards(SetupContext& context, std::vector<SetupSection> material) {
    std::vector<SetupSection> cards{
        own<SourcesSection>(context, {"Pantalla y cámaras", "display", "panel.fuentes"}),
        own<BubbleSection>(context, {"Burbuja de cámara", "person.crop.circle", "panel.burbuja"}),
        own<VideoSection>(context, {"Calidad y sonido", "film", "panel.video", true}),
        own<ZoomSection>(context, {"Zoom y señalar", "plus.magnifyingglass", "panel.zoom"}, &usesScreen),
        own<PresenterSection>(context, {"Cámara completa", "person.crop.rectangle", "panel.presentador"}, &usesScreen),
    };
    for (SetupSection& section : material) {
        cards.push_back(std::move(section));
    }
    cards.push_back(own<ScriptSection>(context, {"Guion (teleprompter)", "text.viewfinder", "panel.guion"}));
    return cards;
}

} // namespace velmo
