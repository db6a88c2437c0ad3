// The panels of the cut formats, worked with clicks, and the settings behind them.

#include "Dialogs/ANSIOptionsWidget.h"
#include "Dialogs/EastmanOptionsWidget.h"
#include "KivCore/Application.h"
#include "KivCore/Locale.h"
#include "KivCore/Validator.h"
#include "KivMarker/ShareGlobales.h"
#include "ScriptedUserInterface.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QTabWidget>

#include <gtest/gtest.h>

namespace KivSystem {
namespace NC {
namespace {

class CutPanel : public testing::Test
{
protected:
    CutPanel()
    {
        auto owned = std::make_unique<ScriptedUserInterface>();
        user = owned.get();
        application = std::make_unique<KivApplication>(std::move(owned), QDir());
    }
    ~CutPanel() override
    {
        settings.setCutSettings(CutSettings());
        KivLocale::setApplicationConventions(KivConventions());
    }

    template <class Control>
    static Control *find(const QWidget &panel, const char *name)
    {
        auto *control = panel.findChild<Control *>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    static void click(const QWidget &panel, const char *name)
    {
        find<QAbstractButton>(panel, name)->click();
    }
    static void type(const QWidget &panel, const char *name, const char *text)
    {
        find<QLineEdit>(panel, name)->setText(QLatin1String(text));
    }
    static bool isEnabled(const QWidget &panel, const char *name)
    {
        return find<QWidget>(panel, name)->isEnabled();
    }

    CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    ScriptedUserInterface *user;
    std::unique_ptr<KivApplication> application;
};

// Which control shows which setting.
struct FlagCase
{
    const char *control;
    bool CutSettings::*member;
};
struct ChoiceCase
{
    const char *control;
    short CutSettings::*member;
    int count;
};
struct LengthCase
{
    const char *control;
    double CutSettings::*member;
    double lowest;
    double highest;
};
struct PanelCase
{
    std::vector<FlagCase> flags;
    std::vector<ChoiceCase> choices;
    std::vector<LengthCase> lengths;
    double CutSettings::*scaleX;
    double CutSettings::*scaleY;
};

using S = CutSettings;

const PanelCase kAnsi{
    {{"checkReduce", &S::reducePoints}, {"checkIntermediate", &S::cutInterPoints},
        {"checkNotches", &S::cutCommandM19}, {"checkConsole", &S::cutCommandM20},
        {"checkLabels", &S::cutLabelM31}, {"checkPieceInfo", &S::penCutInfos},
        {"checkSynchronize", &S::cutPenUpSynchro}, {"checkSpecial", &S::cutCuttingEdge},
        {"checkCutM44_2", &S::punchUserTool}, {"checkCutFabric", &S::cutFabricEdge},
        {"checkCutExternal", &S::cutExternalPunchHoles}, {"checkGenerate", &S::cutCommandM69},
        {"checkSinglePiece", &S::cutBlocking}, {"checkMutiplePieces", &S::miniCutFileBlock}},
    {{"comboInternalLines_2", &S::cutInternalOrder, 3}, {"comboCuttingOrder", &S::cutOrderCrans, 4},
        {"comboCutBlocks", &S::cutFusing, 3}},
    {{"editNumberOfPoint", &S::reducePointsTolerance, 0, 1},
        {"editGeneratePoint", &S::cutInterPointsFreq, 12.7, 253.9},
        {"editNotchLen", &S::cutNotchSize, 0, 2},
        {"editCutSpacing", &S::cutFabricEdgeSpacing, 0.01, 5000},
        {"editCutLen", &S::cutFabricEdgeLength, 0.01, 500},
        {"editCutterLengthX", &S::cutLength, 0, 5000},
        {"editThreshold", &S::cutThresholdAdvance, 0, 5000}},
    &S::cutScaleX, &S::cutScaleY};

const PanelCase kEastman{
    {{"checkCutBlocks", &S::eastCutBlocking}, {"checkGenerate", &S::eastMiniCutFileBlock}},
    {{"comboNotchCutting", &S::eastCutOrderCrans, 4}, {"comboDrillType", &S::eastCutTypeDrill, 6},
        {"comboCutBlocks", &S::eastCutFusing, 3},
        {"comboCutInternal", &S::eastCutInternalOrder, 3}},
    {{"editNotchLen", &S::eastCutNotchSize, 0, 2},
        {"editDrillangle", &S::eastCutAnglePunchHole, 0, 360}},
    &S::eastCutScaleX, &S::eastCutScaleY};

// Each control in turn shows a value of its own setting and writes back another.
template <class Panel>
void expectControlsHoldTheirSettings(const PanelCase &panelCase, CDbMarkerShareGlobales &shared)
{
    const auto visit = [&shared](CutSettings shown, const auto &expect, const auto &change,
                           CutSettings changed) {
        shared.setCutSettings(shown);
        Panel panel(nullptr);
        expect(panel);
        change(panel);
        EXPECT_TRUE(panel.applyChanges());
        // Whatever else the panel shows is written back as it was.
        const CutSettings now = shared.cutSettings();
        for (const FlagCase &flag : kAnsi.flags) {
            EXPECT_EQ(now.*flag.member, changed.*flag.member) << flag.control;
        }
        for (const PanelCase *each : {&kAnsi, &kEastman}) {
            for (const ChoiceCase &choice : each->choices) {
                EXPECT_EQ(now.*choice.member, changed.*choice.member) << choice.control;
            }
            for (const LengthCase &length : each->lengths) {
                EXPECT_DOUBLE_EQ(now.*length.member, changed.*length.member) << length.control;
            }
            EXPECT_EQ(now.*each->scaleX, changed.*each->scaleX);
            EXPECT_EQ(now.*each->scaleY, changed.*each->scaleY);
        }
    };
    for (const FlagCase &flag : panelCase.flags) {
        CutSettings on;
        on.*flag.member = true;
        CutSettings off = on;
        off.*flag.member = false;
        const auto box = [&flag](Panel &panel) {
            return panel.template findChild<QAbstractButton *>(QLatin1String(flag.control));
        };
        visit(
            on, [&](Panel &p) { EXPECT_TRUE(box(p)->isChecked()) << flag.control; },
            [&](Panel &p) { box(p)->setChecked(false); }, off);
        visit(
            off, [&](Panel &p) { EXPECT_FALSE(box(p)->isChecked()) << flag.control; },
            [&](Panel &p) { box(p)->setChecked(true); }, on);
    }
    for (const ChoiceCase &choice : panelCase.choices) {
        for (int value = 0; value < choice.count; ++value) {
            CutSettings shown;
            shown.*choice.member = static_cast<short>(value);
            CutSettings next = shown;
            next.*choice.member = static_cast<short>((value + 1) % choice.count);
            const auto combo = [&choice](Panel &panel) {
                return panel.template findChild<QComboBox *>(QLatin1String(choice.control));
            };
            visit(
                shown,
                [&](Panel &p) {
                    EXPECT_EQ(combo(p)->currentIndex(), value) << choice.control;
                    EXPECT_EQ(combo(p)->count(), choice.count) << choice.control;
                },
                [&](Panel &p) { combo(p)->setCurrentIndex((value + 1) % choice.count); }, next);
        }
    }
    for (const LengthCase &length : panelCase.lengths) {
        CutSettings shown;
        shown.*length.member = length.highest;
        CutSettings lowest = shown;
        lowest.*length.member = length.lowest;
        if (length.member == &S::cutLength) {
            shown.cutThresholdAdvance = lowest.cutThresholdAdvance = 0;
        } else if (length.member == &S::cutThresholdAdvance) {
            shown.cutLength = lowest.cutLength = length.highest;
        }
        const auto edit = [&length](Panel &panel) {
            return panel.template findChild<QLineEdit *>(QLatin1String(length.control));
        };
        visit(
            shown,
            [&](Panel &p) {
                const auto *bounds = dynamic_cast<const KivValidatorBase *>(edit(p)->validator());
                ASSERT_NE(bounds, nullptr) << length.control;
                EXPECT_EQ(bounds->valueRange(), std::make_pair(length.lowest, length.highest));
                EXPECT_FALSE(bounds->validAndInRange(QString()).first);
            },
            [&](Panel &p) { edit(p)->setText(QString::number(length.lowest)); }, lowest);
    }
    CutSettings scaled;
    scaled.*panelCase.scaleX = 98.25;
    scaled.*panelCase.scaleY = 1;
    CutSettings clamped = scaled;
    clamped.*panelCase.scaleY = 110;
    visit(
        scaled,
        [](Panel &p) {
            const auto *spin = p.template findChild<QDoubleSpinBox *>(QStringLiteral("spinScaleX"));
            EXPECT_EQ(spin->text(), QStringLiteral("98.25%"));
        },
        [](Panel &p) {
            p.template findChild<QDoubleSpinBox *>(QStringLiteral("spinScaleY"))->setValue(500);
        },
        clamped);
}

TEST_F(CutPanel, OfAnsiHoldsEachSettingInItsControl)
{
    expectControlsHoldTheirSettings<ANSIOptionsWidget>(kAnsi, settings);
    settings.setCutExternalPunchHoleTool(1);
    ANSIOptionsWidget panel(nullptr);
    EXPECT_TRUE(find<QAbstractButton>(panel, "radioM44")->isChecked());
    find<QAbstractButton>(panel, "radioM43")->setChecked(true);
    EXPECT_TRUE(panel.applyChanges());
    EXPECT_EQ(settings.getCutExternalPunchHoleTool(), 0);
}

TEST_F(CutPanel, OfEastmanHoldsEachSettingInItsControl)
{
    expectControlsHoldTheirSettings<EastmanOptionsWidget>(kEastman, settings);
}

TEST_F(CutPanel, OfAnsiEnablesWhatAClickTurnsOn)
{
    ANSIOptionsWidget panel(nullptr);
    const struct
    {
        const char *box;
        std::vector<const char *> fields;
    } cases[] = {{"checkReduce", {"editNumberOfPoint"}},
        {"checkIntermediate", {"editGeneratePoint"}},
        {"checkCutFabric", {"editCutSpacing", "editCutLen"}},
        {"checkCutExternal", {"radioM43", "radioM44"}}};
    EXPECT_TRUE(isEnabled(panel, "label_3")); // until the first click
    for (const auto &[box, fields] : cases) {
        for (const bool on : {false, true, false}) {
            for (const char *field : fields) {
                EXPECT_EQ(isEnabled(panel, field), on) << field;
            }
            click(panel, box);
        }
        click(panel, box);
    }
    EXPECT_FALSE(isEnabled(panel, "label_3"));
    EXPECT_FALSE(isEnabled(panel, "label_4"));

    auto *special = find<QAbstractButton>(panel, "checkSpecial");
    special->setChecked(true);
    find<QComboBox>(panel, "comboCuttingOrder")->setCurrentIndex(NotchDuringOutline);
    EXPECT_FALSE(special->isEnabled());
    EXPECT_TRUE(panel.applyChanges());
    EXPECT_TRUE(settings.getCutCuttingEdge()); // kept although it is disabled
    find<QComboBox>(panel, "comboCuttingOrder")->setCurrentIndex(NotchBeforeOutline);
    EXPECT_TRUE(special->isEnabled());
}

TEST_F(CutPanel, OfAnsiStaysOpenOnTheTabOfAWrongField)
{
    ANSIOptionsWidget panel(nullptr);
    auto *tabs = find<QTabWidget>(panel, "tabWidget");
    tabs->setCurrentIndex(1);
    type(panel, "editNotchLen", "3");
    EXPECT_FALSE(panel.close());
    EXPECT_EQ(tabs->currentIndex(), 0);
    ASSERT_EQ(user->warnings.size(), 1U);
    EXPECT_TRUE(user->warnings[0].message.contains(QStringLiteral("2.00 cm")));
    EXPECT_EQ(settings.getCutNotchSize(), CutSettings().cutNotchSize);

    type(panel, "editNotchLen", "1.5");
    tabs->setCurrentIndex(3);
    EXPECT_TRUE(panel.close());
    EXPECT_EQ(tabs->currentIndex(), 3);
    EXPECT_DOUBLE_EQ(settings.getCutNotchSize(), 1.5);
}

TEST_F(CutPanel, OfAnsiRefusesAThresholdBeyondTheCutter)
{
    ANSIOptionsWidget panel(nullptr);
    auto *tabs = find<QTabWidget>(panel, "tabWidget");
    type(panel, "editCutterLengthX", "100");
    type(panel, "editThreshold", "100.5");
    click(panel, "checkGenerate");
    click(panel, "checkSinglePiece");
    EXPECT_FALSE(panel.close());
    EXPECT_EQ(tabs->currentIndex(), 2);
    ASSERT_EQ(user->warnings.size(), 1U);
    EXPECT_TRUE(user->warnings[0].message.contains(QStringLiteral("100.50 cm")));
    // What stands before the lengths is written, the rest is not.
    EXPECT_TRUE(settings.getCutCommandM69());
    EXPECT_DOUBLE_EQ(settings.getCutLength(), CutSettings().cutLength);
    EXPECT_FALSE(settings.getCutBlocking());

    type(panel, "editThreshold", "100");
    EXPECT_TRUE(panel.close());
    EXPECT_DOUBLE_EQ(settings.getCutThresholdAdvance(), 100);
    EXPECT_TRUE(settings.getCutBlocking());
}

TEST_F(CutPanel, OfEastmanClosesWithoutACheckAndAnswersByItsControls)
{
    EastmanOptionsWidget panel(nullptr);
    type(panel, "editNotchLen", "9");
    find<QComboBox>(panel, "comboDrillType")->setCurrentIndex(DrillLaser);
    type(panel, "editDrillangle", "47.5");
    EXPECT_EQ(panel.getDrillType(), DrillLaser);
    EXPECT_DOUBLE_EQ(panel.getDrillAngle(), 47.5);
    EXPECT_EQ(settings.getEastCutTypeDrill(), DrillDrill);
    EXPECT_TRUE(panel.close());
    EXPECT_TRUE(user->warnings.empty());
    EXPECT_EQ(settings.getEastCutTypeDrill(), DrillLaser);
    EXPECT_DOUBLE_EQ(settings.getEastCutNotchSize(), 9);
}

TEST_F(CutPanel, ShowsLengthsInTheUsersUnit)
{
    KivConventions conventions;
    conventions.length = LengthUnit::Inch;
    KivLocale::setApplicationConventions(conventions);
    settings.setCutLength(254);
    ANSIOptionsWidget panel(nullptr);
    EXPECT_TRUE(
        find<QLineEdit>(panel, "editCutterLengthX")->text().startsWith(QStringLiteral("100.00")));
    type(panel, "editCutterLengthX", "200");
    EXPECT_TRUE(panel.applyChanges());
    EXPECT_DOUBLE_EQ(settings.getCutLength(), 508);
}

TEST_F(CutPanel, JudgesAValueThatItShowsRoundedByItself)
{
    KivConventions conventions;
    conventions.length = LengthUnit::Inch;
    KivLocale::setApplicationConventions(conventions);
    CutSettings exact;
    exact.cutLength = 175; // "68.898 in" are 175.0009 cm
    exact.cutInterPoints = true;
    exact.cutInterPointsFreq = 253.9; // the highest; "99.961 in" are 253.901 cm
    exact.reducePointsTolerance = 0.05;
    settings.setCutSettings(exact);
    ANSIOptionsWidget panel(nullptr);
    type(panel, "editThreshold", "68.898");
    type(panel, "editNumberOfPoint", ""); // disabled
    EXPECT_TRUE(panel.validateInputs());
    EXPECT_TRUE(panel.close());
    EXPECT_TRUE(user->warnings.empty());
    EXPECT_EQ(settings.getCutThresholdAdvance(), 175);
    EXPECT_EQ(settings.getReducePointsTolerance(), 0.05);

    type(panel, "editGeneratePoint", "99.962");
    EXPECT_FALSE(panel.validateInputs());
    ASSERT_EQ(user->warnings.size(), 1U);
    EXPECT_TRUE(user->warnings[0].message.startsWith("Generate Intermediate Points: "));
}

TEST_F(CutPanel, GivesBackTheVeryValuesThatNobodyTouched)
{
    KivConventions conventions;
    conventions.length = LengthUnit::Inch;
    conventions.decimals = 0;
    KivLocale::setApplicationConventions(conventions);
    CutSettings exact;
    exact.cutNotchSize = 0.4;
    exact.cutScaleX = 98.76;
    exact.eastCutAnglePunchHole = 12.3456;
    exact.eastCutScaleY = 99.5;
    settings.setCutSettings(exact);
    ANSIOptionsWidget ansi(nullptr);
    EastmanOptionsWidget eastman(nullptr);
    EXPECT_EQ(find<QLineEdit>(ansi, "editNotchLen")->text(), QStringLiteral("0 in"));
    type(ansi, "editCutterLengthX", "100");
    EXPECT_TRUE(ansi.applyChanges());
    EXPECT_TRUE(eastman.applyChanges());
    exact.cutLength = 254;
    const CutSettings now = settings.cutSettings();
    EXPECT_EQ(now.cutNotchSize, 0.4);
    EXPECT_EQ(now.cutScaleX, 98.76);
    EXPECT_EQ(now.cutLength, 254);
    EXPECT_EQ(now.eastCutAnglePunchHole, 12.3456);
    EXPECT_EQ(now.eastCutScaleY, 99.5);
    find<QDoubleSpinBox>(ansi, "spinScaleX")->setValue(97);
    EXPECT_TRUE(ansi.applyChanges());
    EXPECT_EQ(settings.getCutScaleX(), 97);
}

} // namespace
} // namespace NC
} // namespace KivSystem
