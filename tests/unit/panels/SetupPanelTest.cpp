#include "panels/SetupPanel.h"

#include "panels/ResolutionRow.h"
#include "panels/SetupCard.h"
#include "support/FakeMicrophoneLevel.h"
#include "ui/Button.h"
#include "ui/Disclosure.h"
#include "ui/LevelMeter.h"
#include "ui/ModeTile.h"
#include "ui/Picker.h"
#include "ui/SwitchRow.h"
#include "unit/session/World.h"

namespace velmo {
namespace {

class TwoMicrophones final : public AudioInputService {
public:
    std::vector<AudioDevice> microphones() const override { return list; }
    std::optional<AudioDevice> defaultMicrophone() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string&, SerialQueue&, Handler) override {
        return Error{};
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override { return Error{}; }

    std::vector<AudioDevice> list{{"a", "Interno"}, {"b", "USB"}};
};

class SetupPanelTest : public test::World {
protected:
    SetupPanelTest() { screens.screens = {{1, {0, 0, 1440, 900}, 2}, {2, {1440, 0, 1920, 1080}, 1}}; }

    std::unique_ptr<SetupPanel> make(std::vector<RecordMode> modes = {RecordMode::screen}) {
        return std::make_unique<SetupPanel>(
            SetupPanel::Parts{*controller, prefs, real, screens, microphone, std::move(modes)});
    }
    template <typename T>
    static T* named(QWidget& panel, const char* name) {
        for (T* each : panel.findChildren<T*>()) {
            if (each->text() == QString::fromUtf8(name) || each->accessibleName() == QString::fromUtf8(name)) {
                return each;
            }
        }
        return nullptr;
    }

    TwoMicrophones inputs;
    Devices real{nullptr, &inputs};
    test::FakeMicrophoneLevel microphone;
};

TEST_F(SetupPanelTest, ClosingItByAnyMeansEndsThePreparation) {
    const auto panel = make();
    controller->openSetup();
    panel->show();
    panel->close();
    EXPECT_EQ(controller->state(), test::State::idle);
    controller->openSetup();
    panel->show();
    named<Button>(*panel, "Cerrar")->click();
    EXPECT_EQ(controller->state(), test::State::idle);
}

TEST_F(SetupPanelTest, HidingItLeavesThePreparationAsItIs) {
    const auto panel = make();
    controller->openSetup();
    panel->show();
    panel->hide();
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(controller->state(), test::State::setup);
}

TEST_F(SetupPanelTest, ReopeningItWhileItIsVisibleDoesNotMoveIt) {
    const auto panel = make();
    panel->show();
    panel->move(31, 47);
    panel->show();
    EXPECT_EQ(panel->pos(), QPoint(31, 47));
}

TEST_F(SetupPanelTest, ItsButtonStartsTheRecording) {
    const auto panel = make();
    controller->openSetup();
    panel->show();
    named<Button>(*panel, "Comenzar grabación")->click();
    test::settle();
    EXPECT_EQ(controller->state(), test::State::preparing);
}

TEST_F(SetupPanelTest, AChosenMicrophoneIsWrittenAtOnceAndNoneHidesTheMeter) {
    const auto panel = make();
    panel->show();
    auto* picker = named<Picker>(*panel, "Micrófono");
    ASSERT_EQ(picker->choices().size(), 3u);
    EXPECT_EQ(picker->choices().back().title, QStringLiteral("Sin micrófono"));
    EXPECT_EQ(picker->current(), QStringLiteral("a"));
    EXPECT_TRUE(panel->findChild<LevelMeter*>()->isVisible());
    emit picker->picked(QStringLiteral("b"));
    EXPECT_EQ(prefs.micID.value(), QStringLiteral("b"));
    EXPECT_EQ(picker->current(), QStringLiteral("b"));
    emit picker->picked(QStringLiteral("none"));
    EXPECT_FALSE(panel->findChild<LevelMeter*>()->isVisible());
}

TEST_F(SetupPanelTest, AMicrophoneThatIsPluggedInAppearsWhenTheMenuOpens) {
    const auto panel = make();
    panel->show();
    auto* picker = named<Picker>(*panel, "Micrófono");
    inputs.list.push_back({"c", "Nuevo"});
    emit picker->opening();
    EXPECT_EQ(picker->choices().size(), 4u);
}

TEST_F(SetupPanelTest, SwitchesWriteTheirSettingAndShowWhatOthersWrite) {
    const auto panel = make();
    prefs.systemAudio = true;
    for (SwitchRow* row : panel->findChildren<SwitchRow*>()) {
        emit row->switched(true);
    }
    EXPECT_TRUE(prefs.fps60.value());
    EXPECT_TRUE(prefs.countdown.value());
    prefs.fps60 = false;
    EXPECT_FALSE(panel->findChildren<SwitchRow*>().front()->isOn());
}

TEST_F(SetupPanelTest, OffersModesOnlyWhereThereIsAChoice) {
    EXPECT_TRUE(make()->findChildren<ModeTile*>().isEmpty());
    const auto panel = make({RecordMode::screenCam, RecordMode::screen, RecordMode::cam});
    ASSERT_EQ(panel->findChildren<ModeTile*>().size(), 3);
    named<ModeTile>(*panel, "Cámara")->click();
    EXPECT_EQ(prefs.mode.value(), RecordMode::cam);
}

TEST_F(SetupPanelTest, InTheModeWithoutAScreenTheDisplayPickerIsDisabled) {
    const auto panel = make();
    EXPECT_TRUE(named<Picker>(*panel, "Pantalla")->isEnabled());
    prefs.mode = RecordMode::cam;
    EXPECT_FALSE(named<Picker>(*panel, "Pantalla")->isEnabled());
}

TEST_F(SetupPanelTest, ADisplayIsChosenByItsIdentifierAndTheFirstEntryIsTheMainOne) {
    const auto panel = make();
    auto* picker = named<Picker>(*panel, "Pantalla");
    ASSERT_EQ(picker->choices().size(), 2u);
    EXPECT_EQ(picker->choices()[0], (Picker::Choice{QStringLiteral("0"), QStringLiteral("Pantalla principal")}));
    EXPECT_EQ(picker->choices()[1].id, QStringLiteral("2"));
    emit picker->picked(QStringLiteral("2"));
    EXPECT_EQ(prefs.displayID.value(), 2);
    EXPECT_EQ(panel->targetScreen()->displayID, 2u);
    prefs.displayID = 99;
    EXPECT_EQ(panel->targetScreen()->displayID, 1u);
}

TEST_F(SetupPanelTest, CardsAndMoreOptionsAreAsTheyWereLeft) {
    {
        const auto panel = make();
        panel->show();
        EXPECT_FALSE(named<Disclosure>(*panel, "Más opciones")->isChecked());
        named<Disclosure>(*panel, "Más opciones")->click();
        named<Disclosure>(*panel, "Pantalla y cámaras")->click();
        named<Disclosure>(*panel, "Calidad y sonido")->click();
    }
    const auto panel = make();
    EXPECT_TRUE(named<Disclosure>(*panel, "Menos opciones")->isChecked());
    EXPECT_TRUE(named<Disclosure>(*panel, "Pantalla y cámaras")->isChecked());
    EXPECT_FALSE(named<Disclosure>(*panel, "Calidad y sonido")->isChecked());
}

TEST_F(SetupPanelTest, SectionsOfOthersStandBehindItsOwnCardsInCardsThatRememberThemselves) {
    int made = 0;
    const auto withSection = [&] {
        return std::make_unique<SetupPanel>(SetupPanel::Parts{
            *controller,
            prefs,
            real,
            screens,
            microphone,
            {RecordMode::screen},
            {{{QStringLiteral("Otra"), QStringLiteral("folder"), QStringLiteral("panel.otra"), false}, [&made] {
                  ++made;
                  return new QWidget;
              }}}});
    };
    {
        const auto panel = withSection();
        EXPECT_EQ(made, 1);
        EXPECT_EQ(panel->findChildren<SetupCard*>().size(), 3);
        EXPECT_FALSE(named<Disclosure>(*panel, "Otra")->isChecked());
        named<Disclosure>(*panel, "Otra")->click();
    }
    EXPECT_TRUE(named<Disclosure>(*withSection(), "Otra")->isChecked());
}

TEST(ResolutionRow, TellsTheSizeAndWhatTheQualityIsGoodFor) {
    const Screen laptop{1, {0, 0, 1440, 900}, 2};
    const Screen large{1, {0, 0, 1920, 1080}, 2};
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::fullHD, laptop),
              QStringLiteral("1920 × 1200 px · fluida y con archivos livianos"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::retina, laptop),
              QStringLiteral("2880 × 1800 px · como se ve tu pantalla; nítida incluso con zoom"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::uhd4k, laptop),
              QStringLiteral("3840 × 2400 px · ampliado a 4K: más calidad en YouTube, archivos grandes"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::uhd4k, large),
              QStringLiteral("3840 × 2160 px · máxima calidad (archivos grandes)"));
    EXPECT_EQ(ResolutionRow::caption(VideoQuality::uhd4k, std::nullopt),
              QStringLiteral("máxima calidad (archivos grandes)"));
}

} // namespace
} // namespace velmo
