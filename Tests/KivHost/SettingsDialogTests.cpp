// The settings dialog, as a user works with it.

#include "Window/SettingsDialog.h"

#include "DialogDriver.h"
#include "HostSettings.h"
#include "HostTestSupport.h"
#include "HostTranslations.h"
#include "KivCore/Application.h"
#include "KivCore/Locale.h"
#include "KivMarker/MarkerSettings.h"
#include "ScriptedUserInterface.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTest>

namespace KivSystem {
namespace {

void choose(QWidget &dialog, const QString &name, const QString &choice)
{
    auto &combo = in<QComboBox>(dialog, name);
    EXPECT_GE(combo.findData(choice), 0) << name << " " << choice;
    combo.setCurrentIndex(combo.findData(choice));
}

class SettingsDialogTest : public testing::Test
{
protected:
    SettingsDialogTest() { obey(); }
    ~SettingsDialogTest() override { obey(); }

    static void obey()
    {
        QSettings().clear();
        KeptConsole kept;
        applyConventions(kept.console);
        restoreMarkerSettings(kept.console);
    }

    bool run(const QString &button, const DialogDriver::Step &change = {})
    {
        driver.then("settingsDialog", [button, change](QWidget &dialog) {
            if (change) {
                change(dialog);
            }
            press(dialog, button);
        });
        return runSettingsDialog(nullptr);
    }

    DialogDriver driver;
};

// On each page something.
void changeMuch(QWidget &dialog)
{
    choose(dialog, "unit", "mm");
    choose(dialog, "decimals", "4");
    in<QLineEdit>(dialog, "field_separator").setText("\\x3b");
    choose(dialog, "language", "fr");
    in<QCheckBox>(dialog, "plot_pieceCode").toggle();
    in<QDoubleSpinBox>(dialog, "plot_spaceLayers").setValue(12.5);
    choose(dialog, "plot_pieceInfoLetterSize", "36");
    in<QCheckBox>(dialog, "nest_piecesInStandby").toggle();
}

TEST_F(SettingsDialogTest, WhatIsAcceptedIsStoredAndObeyedAtOnce)
{
    const MarkerSettings before = MarkerSettings::current();
    ASSERT_TRUE(run("OK", changeMuch));
    const MarkerSettings now = MarkerSettings::current();
    EXPECT_NE(now.plot.pieceCode, before.plot.pieceCode);
    EXPECT_EQ(now.plot.spaceLayers, 12.5);
    EXPECT_EQ(now.generalPlot.pieceInfoLetterSize, 36);
    EXPECT_NE(now.autoMarker.piecesInStandby, before.autoMarker.piecesInStandby);
    EXPECT_EQ(KivLocale().formatLength(1, KivLocale::WithUnit), "10.0000 mm");
    EXPECT_EQ(QSettings().value("text_export/option/_0").toByteArray(), ";");
    EXPECT_EQ(chosenLanguage().language(), QLocale::French);
    EXPECT_EQ(QSettings().allKeys().size(), 8) << QSettings().allKeys().join(' ').toStdString();

    const QStringList keys = QSettings().allKeys(); // a second look changes nothing
    EXPECT_TRUE(run("OK", [](QWidget &dialog) {
        EXPECT_EQ(in<QLineEdit>(dialog, "field_separator").text(), ";");
        EXPECT_EQ(in<QDoubleSpinBox>(dialog, "plot_spaceLayers").text(), "125.00 mm");
        choose(dialog, "decimals", "by unit");
    }));
    EXPECT_EQ(MarkerSettings::current().plot.spaceLayers, 12.5);
    EXPECT_EQ(KivLocale().formatLength(1, KivLocale::WithUnit), "10.0 mm");
    EXPECT_FALSE(QSettings().contains("units/decimals"));
    EXPECT_EQ(QSettings().allKeys().size(), keys.size() - 1);
}

TEST_F(SettingsDialogTest, CancelChangesNothing)
{
    EXPECT_FALSE(run("Cancel", changeMuch));
    EXPECT_EQ(QSettings().allKeys(), QStringList());
    EXPECT_EQ(KivLocale().formatLength(1, KivLocale::WithUnit), "1.00 cm");
    EXPECT_EQ(MarkerSettings::current().plot.spaceLayers, MarkerSettings().plot.spaceLayers);
}

TEST_F(SettingsDialogTest, NoControlTakesAValueThatItsSettingCannotHave)
{
    auto owned = std::make_unique<ScriptedUserInterface>();
    const ScriptedUserInterface &user = *owned;
    const KivApplication application(std::move(owned), QDir());
    run("Cancel", [&user](QWidget &dialog) {
        in<QLineEdit>(dialog, "repeat_separator").setText("\\q");
        in<QListWidget>(dialog, "pages").setCurrentRow(3);
        press(dialog, "OK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(in<QLineEdit>(dialog, "repeat_separator").isVisible());
        EXPECT_EQ(user.warnings.size(), 1U);

        auto &factor = in<QDoubleSpinBox>(dialog, "plot_notchFactor");
        factor.selectAll();
        QTest::keyClicks(&factor, "99");
        EXPECT_LE(factor.value(), 10);
        for (const Setting &setting : hostSettings()) {
            auto *combo = dialog.findChild<QComboBox *>(setting.name);
            for (int row = 0; combo != nullptr && row < combo->count(); ++row) {
                const QString choice = combo->itemData(row).toString();
                EXPECT_TRUE(choice == setting.defaultText || setting.type.parse(choice).isValid())
                    << setting.name << " " << choice;
            }
        }
    });
}

TEST_F(SettingsDialogTest, ABadStoredValueIsReplacedByWhatIsShown)
{
    QSettings().setValue("plot/notchFactor", "enormous");
    ASSERT_TRUE(run("OK"));
    EXPECT_EQ(
        QSettings().value("plot/notchFactor").toDouble(), MarkerSettings().generalPlot.notchFactor);
}

TEST_F(SettingsDialogTest, DefaultsAreThoseOfThePageInFrontAlone)
{
    QSettings().setValue("units/length", "mm");
    QSettings().setValue("nest/curveStep", 3.0);
    ASSERT_TRUE(run("OK", [](QWidget &dialog) {
        in<QListWidget>(dialog, "pages").setCurrentRow(4);
        press(dialog, "Restore Defaults");
    }));
    EXPECT_EQ(MarkerSettings::current().drawing.stepDigitalCurve,
        MarkerSettings().drawing.stepDigitalCurve);
    EXPECT_EQ(KivLocale().formatLength(1, KivLocale::WithUnit), "10.0 mm");
}

} // namespace
} // namespace KivSystem
