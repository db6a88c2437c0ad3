#include "HostSettings.h"
#include "HostTestSupport.h"
#include "KivCore/Locale.h"
#include "KivMarker/MarkerSettings.h"
#include "KivMarker/ShareGlobales.h"

#include <QSettings>

namespace KivSystem {
namespace {

TEST(HostSettings, AssignmentsAreStoredAsThePlugInReadsThem)
{
    const struct
    {
        QString assignment;
        QString key;
        QVariant value;
    } cases[] = {
        {"unit=mm", "units/length", "mm"},
        {"ruler_x=IN", "units/rulerX", "in"},
        {"ruler_y=cm", "units/rulerY", "cm"},
        {"decimals=0", "units/decimals", "0"},
        {"decimals=+6", "units/decimals", "6"},
        {"field_separator=\\t", "text_export/option/_0", QByteArray("\t")},
        {"field_separator= = ", "text_export/option/_0", QByteArray(" = ")},
        {"field_separator=", "text_export/option/_0", QByteArray("")},
        {"repeat_separator=a\\xC3\\xa9\\\\\\n\\r", "text_export/option/_1",
            QByteArray("a\xC3\xA9\\\n\r")},
        {QString("repeat_separator=") + QString::fromUtf8("\xC3\xA9\xF0\x9F\xA7\xB5"),
            "text_export/option/_1", QByteArray("\xC3\xA9\xF0\x9F\xA7\xB5")},
        {"one_line_per_size=true", "text_export/option/_2", true},
        {"one_line_per_size=false", "text_export/option/_2", false},
        {"fields=21,0,0", "marker_export_list", QStringList({"21", "0", "0"})},
        {"CutScaleX=98.5", "cut/CutScaleX", 98.5},
        {"CutLabelM31=true", "cut/CutLabelM31", true},
        {"EastCutTypeDrill=2", "cut/EastCutTypeDrill", "2"},
        {"plot_pieceName=false", "plot/pieceName", false},
        {"plot_notchFactor=.5", "plot/notchFactor", 0.5},
        {"plot_pieceInfoLetterSize=36", "plot/pieceInfoLetterSize", "36"},
        {"symbols_letterSize=24", "symbols_letterSize", "24"},
        {"plot_color8=#00FF7f", "plot/color8", "#00ff7f"},
        {"nest_curveStep=0.25", "nest/curveStep", 0.25},
    };
    for (const auto &entry : cases) {
        const SettingValue value = parseSetting(entry.assignment);
        EXPECT_EQ(value.setting->key, entry.key);
        EXPECT_EQ(value.value, entry.value) << entry.assignment;
        EXPECT_EQ(value.value.type(), entry.value.type()) << entry.assignment;
        // What is shown of a setting can be given back on the command line.
        EXPECT_EQ(value.setting->type.parse(value.setting->type.format(value.value)), value.value)
            << entry.assignment;
    }
}

TEST(HostSettings, WrongAssignmentsAreTold)
{
    const QString bytes = "expected a text, in which \\t, \\n, \\r, \\\\ and \\xHH stand for bytes";
    const std::pair<QString, QString> cases[] = {
        {"", "2 setting \"\": expected NAME=VALUE"},
        {"=mm", "2 setting \"=mm\": expected NAME=VALUE"},
        {"unit", "2 setting \"unit\": expected NAME=VALUE"},
        {"Unit=mm", "2 there is no setting \"Unit\"; \"kivhost settings\" lists them"},
        {"unit=km", "2 setting unit: found \"km\", expected one of cm, mm, in"},
        {"CutScaleX=111",
            "2 setting CutScaleX: found \"111\", expected a number from 1 to 110 (%)"},
        {"CutScaleX=nan",
            "2 setting CutScaleX: found \"nan\", expected a number from 1 to 110 (%)"},
        {"CutOrderCrans=4",
            "2 setting CutOrderCrans: found \"4\", expected a whole number from 0 to 3"},
        {"plot_spaceLayers=-1",
            "2 setting plot_spaceLayers: found \"-1\", expected a number from 0 to 1000 (cm)"},
        {"plot_notchFactor=0",
            "2 setting plot_notchFactor: found \"0\", expected a number from 0.1 to 10"},
        {"plot_pieceInfoLetterSize=12", "2 setting plot_pieceInfoLetterSize: found \"12\", "
                                        "expected one of 10, 18, 24, 27, 30, 36 (points)"},
        {"symbols_letterSize=18.0", "2 setting symbols_letterSize: found \"18.0\", "
                                    "expected one of 10, 18, 24, 27, 30, 36 (points)"},
        {"plot_color1=red", "2 setting plot_color1: found \"red\", expected a colour as #rrggbb"},
        {"plot_color1=#12345g",
            "2 setting plot_color1: found \"#12345g\", expected a colour as #rrggbb"},
        {"plot_color1=#1234567",
            "2 setting plot_color1: found \"#1234567\", expected a colour as #rrggbb"},
        {"plot_color9=#123456",
            "2 there is no setting \"plot_color9\"; \"kivhost settings\" lists them"},
        {"decimals=7", "2 setting decimals: found \"7\", expected a whole number from 0 to 6"},
        {"decimals=-1", "2 setting decimals: found \"-1\", expected a whole number from 0 to 6"},
        {"decimals=2.0", "2 setting decimals: found \"2.0\", expected a whole number from 0 to 6"},
        {"field_separator=a\\x00", "2 setting field_separator: found \"a\\x00\", " + bytes},
        {"field_separator=\\xff", "2 setting field_separator: found \"\\xff\", " + bytes},
        {"field_separator=\\q", "2 setting field_separator: found \"\\q\", " + bytes},
        {"field_separator=\\x1", "2 setting field_separator: found \"\\x1\", " + bytes},
        {"field_separator=\\x-1", "2 setting field_separator: found \"\\x-1\", " + bytes},
        {"field_separator=\\", "2 setting field_separator: found \"\\\", " + bytes},
        {"one_line_per_size=yes",
            "2 setting one_line_per_size: found \"yes\", expected true or false"},
        {"fields=0,22",
            "2 setting fields: found \"0,22\", expected field numbers from 0 to 21 with commas "
            "between"},
        {"fields=", "2 setting fields: found \"\", expected field numbers from 0 to 21 with commas "
                    "between"},
    };
    for (const auto &[assignment, fault] : cases) {
        EXPECT_EQ(faultOf([text = assignment] { parseSetting(text); }), fault);
    }
}

class SettingsOverlayTest : public testing::Test
{
protected:
    void SetUp() override { QSettings().clear(); }
    void TearDown() override { QSettings().clear(); }

    KeptConsole kept;
};

TEST_F(SettingsOverlayTest, IsACopyOfTheUsersSettingsThatNeverTouchesThem)
{
    QSettings().setValue("units/length", "in");
    QSettings().setValue("text_export/option/_0", QByteArray("\x1D;"));
    {
        const SettingsOverlay overlay(QString(), {parseSetting("decimals=4")}, kept.console);
        EXPECT_EQ(QSettings().value("units/length"), "in");
        EXPECT_EQ(QSettings().value("text_export/option/_0").toByteArray(), QByteArray("\x1D;"));
        EXPECT_EQ(QSettings().value("units/decimals").toInt(), 4);
        QSettings().setValue("units/length", "mm"); // as a panel would that closes
    }
    EXPECT_EQ(QSettings().value("units/length"), "in");
    EXPECT_FALSE(QSettings().contains("units/decimals"));

    QSettings().setValue("units/decimals", "4");
    const SettingsOverlay overlay(QString(), {parseSetting("decimals=by unit")}, kept.console);
    EXPECT_FALSE(QSettings().contains("units/decimals")) << "a default that has no value";
}

TEST_F(SettingsOverlayTest, AFileStandsInForTheUsersSettingsAndStaysAsItIs)
{
    const Folder folder;
    const QByteArray content = "[plot]\ncolor1=#0000FF\n[units]\nlength=mm\n";
    const QString file = folder.write("run.ini", content);
    QSettings().setValue("units/decimals", 5);
    {
        const SettingsOverlay overlay(file, {parseSetting("ruler_x=in")}, kept.console);
        EXPECT_EQ(QSettings().value("units/length"), "mm");
        EXPECT_EQ(QSettings().value("units/rulerX"), "in");
        restoreMarkerSettings(kept.console);
        EXPECT_EQ(MarkerSettings::current().drawing.colors[0], QColor(0, 0, 255));
        MarkerSettings().apply();
        EXPECT_FALSE(QSettings().contains("units/decimals"));
        QSettings().setValue("units/length", "cm");
    }
    EXPECT_EQ(QSettings().value("units/decimals").toInt(), 5);
    EXPECT_EQ(folder.read("run.ini"), content);
    EXPECT_EQ(folder.contents(), QStringList("run.ini"));
}

TEST_F(SettingsOverlayTest, AFileThatIsNoSettingsFileIsTold)
{
    const Folder folder;
    const std::pair<QByteArray, QString> cases[] = {
        {"[units\nlength", "is not a settings file"},
        {"[General]\nfields=0\n", "holds no setting of this program"},
        {QByteArray("\x00\xff[[[=\n%%%%", 11), "holds no setting of this program"},
        {"[units]\nlength=\n", "setting unit: found \"\", expected one of cm, mm, in"},
        {"[units]\ndecimals=many\n",
            "setting decimals: found \"many\", expected a whole number from 0 to 6"},
        {"[plot]\ncolor8=#0000fg\n",
            "setting plot_color8: found \"#0000fg\", expected a colour as #rrggbb"},
    };
    int count = 0;
    for (const auto &[content, fault] : cases) {
        // A name of its own: Qt may not notice that a file of the same name has changed.
        const QString file = folder.write(QString::number(++count) + ".ini", content);
        EXPECT_EQ(
            faultOf([&] { SettingsOverlay(file, {}, kept.console); }), "3 " + file + ": " + fault);
    }
    EXPECT_EQ(faultOf([&] { SettingsOverlay(folder.path("no.ini"), {}, kept.console); }),
        "3 " + folder.path("no.ini") + ": there is no such file");
}

TEST_F(SettingsOverlayTest, WhatIsWrongInTheUsersOwnSettingsIsToldAndLeftOut)
{
    QSettings().setValue("text_export/option/_2", "maybe");
    QSettings().setValue("units/decimals", 77);
    QSettings().setValue("marker_export_list", QStringList({"99", "0"})); // the dialog's affair
    const SettingsOverlay overlay(QString(), {}, kept.console);
    EXPECT_TRUE(kept.err.contains("decimals: found \"77\"")) << kept.err;
    EXPECT_TRUE(kept.err.contains("one_line_per_size: found \"maybe\"")) << kept.err;
    EXPECT_FALSE(QSettings().contains("text_export/option/_2"));
    EXPECT_FALSE(QSettings().contains("units/decimals"));
    EXPECT_EQ(QSettings().value("marker_export_list").toStringList().size(), 2);
}

TEST_F(SettingsOverlayTest, WhatIsWrongCanBeTakenOutForGood)
{
    QSettings().setValue("symbols_letterSize", 9999); // a format reads it by itself
    QSettings().setValue("units/length", "in");
    dropStoredFaults(kept.console);
    EXPECT_TRUE(kept.err.contains("found \"9999\"")) << kept.err;
    EXPECT_EQ(QSettings().allKeys(), QStringList("units/length"));
}

TEST_F(SettingsOverlayTest, ConventionsFollowTheStoreAndBadOnesAreTold)
{
    QSettings().setValue("units/length", "mm");
    QSettings().setValue("units/decimals", "many");
    applyConventions(kept.console);
    EXPECT_EQ(KivLocale(QLocale::c()).formatLength(12.34), "123.4");
    EXPECT_TRUE(kept.err.startsWith("kivhost: ")) << kept.err;
    EXPECT_TRUE(kept.err.contains("many")) << kept.err;
    QSettings().clear();
    applyConventions(kept.console);
    EXPECT_EQ(KivLocale(QLocale::c()).formatLength(12.34), "12.34");
}

TEST_F(SettingsOverlayTest, EverySettingOfTheMarkerLibraryComesBackOutOfTheStore)
{
    const Folder folder;
    MarkerSettings expected;
    QStringList lines;
    std::vector<SettingValue> values;
    for (const MarkerSettingDescription &description : markerSettingDescriptions()) {
        const bool isAtEnd = description.valueIn(expected) == description.highest;
        ASSERT_TRUE(
            description.setValueIn(expected, isAtEnd ? description.lowest : description.highest));
        QString text = QString::number(description.valueIn(expected));
        if (description.kind == MarkerSettingDescription::Kind::Flag) {
            text = isAtEnd ? "false" : "true";
        } else if (description.kind == MarkerSettingDescription::Kind::Color) {
            text = "#ffffff";
        }
        values.push_back(parseSetting(QString(description.name) + '=' + text));
    }
    {
        const SettingsOverlay overlay(QString(), values, kept.console);
        restoreMarkerSettings(kept.console);
    }
    EXPECT_EQ(kept.err, "");
    const MarkerSettings restored = MarkerSettings::current();
    for (const MarkerSettingDescription &description : markerSettingDescriptions()) {
        EXPECT_EQ(description.valueIn(restored), description.valueIn(expected)) << description.name;
    }

    // Nothing is stored any more: the defaults hold, and it is they that are listed.
    restoreMarkerSettings(kept.console);
    EXPECT_EQ(CDbMarkerShareGlobales::instance()->getColorTable()[0].name(), "#c81e1e");
    EXPECT_FALSE(CDbMarkerOptions::mDefaultOptions.pieceCode());
    const std::pair<QString, QString> listed[] = {{"plot_color1", "#c81e1e"},
        {"plot_pieceCode", "false"}, {"plot_pieceInfoLetterSize", "18"}, {"plot_notchFactor", "1"},
        {"nest_piecesInStandby", "true"}, {"nest_curveStep", "0.5"}};
    for (const auto &[name, text] : listed) {
        const SettingValue value = parseSetting(name + '=' + text);
        EXPECT_EQ(currentText(*value.setting, QSettings()), text) << name.toStdString();
    }
}

TEST_F(SettingsOverlayTest, MarkerSettingsThatAreOutOfRangeAreToldAndLeftAtTheirDefaults)
{
    QSettings store;
    store.setValue("cut/CutScaleX", 98.5);
    store.setValue("cut/CutCommandM19", false);
    store.setValue("cut/EastCutTypeDrill", 7); // there is no such drill
    store.setValue("plot/spaceLayers", "inf");
    store.setValue("plot/pieceInfoLetterSize", 12);
    store.setValue("plot/pieceName", "perhaps");
    store.setValue("plot/color2", "#12345");
    store.setValue("plot/color3", "#123456");
    store.setValue("nest/piecesInChart", 0);
    restoreMarkerSettings(kept.console);
    MarkerSettings expected;
    expected.cut.cutScaleX = 98.5;
    expected.cut.cutCommandM19 = false;
    expected.drawing.colors[2] = QColor(0x12, 0x34, 0x56);
    expected.autoMarker.piecesInChart = false;
    const MarkerSettings restored = MarkerSettings::current();
    for (const MarkerSettingDescription &description : markerSettingDescriptions()) {
        EXPECT_EQ(description.valueIn(restored), description.valueIn(expected)) << description.name;
    }
    EXPECT_EQ(kept.err,
        "kivhost: setting EastCutTypeDrill: found \"7\", expected a whole number from 0 to 5\n"
        "kivhost: setting plot_pieceName: found \"perhaps\", expected true or false\n"
        "kivhost: setting plot_spaceLayers: found \"inf\", expected a number from 0 to 1000 (cm)\n"
        "kivhost: setting plot_pieceInfoLetterSize: found \"12\", expected one of 10, 18, 24, 27, "
        "30, 36 (points)\n"
        "kivhost: setting plot_color2: found \"#12345\", expected a colour as #rrggbb\n");
    MarkerSettings().apply();
}

} // namespace
} // namespace KivSystem
