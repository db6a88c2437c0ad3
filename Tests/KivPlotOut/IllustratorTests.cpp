// The words of an Illustrator file: numbers, colours, head and texts; and the panel of the format.

#include "Dialogs/IllustratorExportOptionsWidget.h"
#include "Failures.h"
#include "IllustratorSupport.h"
#include "IllustratorText.h"

#include "KivCore/Validator.h"
#include "KivGeo/Rectangle.h"
#include "KivMarker/Text.h"

#include <QApplication>
#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QLineEdit>

#include <cmath>
#include <random>

namespace KivSystem {
namespace KivIllustrator {
namespace {

TEST_F(Illustrator, ANumberHasFourDigitsOrFourDecimals)
{
    const std::pair<double, const char *> cases[] = {{0, "0"}, {1, "1"}, {5.123456, "5.123"},
        {-5.1234567, "-5.12346"}, {-0.5, "-0.5"}, {-0.123456, "-0.1235"}, {-1.23456789, "-1.23457"},
        {9.99996, "10"}, {12.3456789, "12.3457"}, {28.350000000000442, "28.35"},
        {123456.789, "123456.789"}, {0.00012345, "0.0001234"}, {0.00001, "1e-05"},
        {2147483647.25, "2147483647.25"}, {4e9, "4000000000"}};
    for (const auto &[value, expected] : cases) {
        EXPECT_EQ(toString(value).toStdString(), expected) << value;
    }
}

TEST_F(Illustrator, TheScaleIsKeptInSinglePrecisionAndScalesAllLengths)
{
    EXPECT_EQ(ILLUST_KIV_CM_A_72(1), 28.350000000000442);
    setScale(0.1);
    EXPECT_EQ(ILLUST_KIV_CM_A_72(1), 28.350000000000442 * 0.10000000149011612);
    setScale(2);
    EXPECT_EQ(linesOf([](QTextStream &out) {
        ILLUST_Move_To(out, 1, -2);
        ILLUST_Line_To(out, 0.001, 100);
    }),
        (QStringList{"56.7 -113.4 m", "0.0567 5670 L"}));
}

TEST_F(Illustrator, AColourHasTheDigitOfItsOperatorBehindItsBlack)
{
    const std::pair<QColor, QString> cases[] = {
        {QColor(0, 0, 0), "0 0 0 10"},
        {QColor(255, 255, 255), "0 0 0 0.0038910"},
        {QColor(255, 0, 0), "0 0.9961 0.9961 0.0038910"},
        {QColor(128, 128, 128), "0 0 0 0.50"},
        {QColor(0, 128, 255), "0.9961 0.4961 0 0.0038910"},
    };
    for (const auto &[colour, inks] : cases) {
        EXPECT_EQ(linesOf([&](QTextStream &out) { ILLUST_Set_RGBColor(out, colour); }),
            (QStringList{inks + " k", inks + " K"}));
    }
}

TEST_F(Illustrator, AFileBeginsWithNineteenLines)
{
    QApplication::setFont(QFont("Sans Serif"));
    const QDateTime before = QDateTime::currentDateTime();
    const QStringList lines = linesOf([](QTextStream &out) {
        ILLUST_Prologue_Header_Subsection(out, "a(1).ai", GeoRectangle(-0.01, 10, 0, 5));
        ILLUST_Script_Setup_Subsection(out);
        ILLUST_Standard_First_Script(out);
    });
    const QDateTime after = QDateTime::currentDateTime();
    ASSERT_EQ(lines.size(), 19);
    const auto dateLine = [](const QDateTime &time) {
        return time.toString("'%%Creation Date: ('MM'/'dd'/'yyyy') ('hh':'mm')'");
    };
    EXPECT_TRUE(lines[3] == dateLine(before) || lines[3] == dateLine(after))
        << qPrintable(lines[3]);
    const QStringList expected{"%!PS-Adobe-2.0", "%%Creator: KIV System ", "%%Title: (a(1).ai)",
        lines[3], "%%DocumentFonts: Sans_Serif", "%%DocumentProcSets: Adobe_Illustrator881",
        "%%BoundingBox: -1 0 283 141", "%%EndComments", "%%EndProlog", "%%BeginSetup", "%%EndSetup",
        "0 0 0 10 k", "0 0 0 10 K", "1 i", "0 J", "0 j", "1 w", "4 M", "[]0 d"};
    EXPECT_EQ(lines.join('\n').toStdString(), expected.join('\n').toStdString());
}

// Ten letters are 0.72 cm long for each point of their size.
TEST_F(Illustrator, ALetterSizeGoesDownTheLadderUntilTheTextFits)
{
    EXPECT_DOUBLE_EQ(Mk_TEXT_Get_Longueur_String_CM("abcd", 18), 5.184);
    struct Case
    {
        short size;
        double maxLength;
        short expected;
    };
    const Case cases[] = {{36, 26, 36}, {36, 25, 30}, {36, 20, 27}, {36, 18, 24}, {36, 13, 18},
        {36, 12, 10}, {18, 7, 10}, {18, 26, 18}, {10, 1, 10}, {5, 1, 5}, {12, 100, 12},
        {12, 1, 12}};
    for (const Case &each : cases) {
        EXPECT_EQ(Mk_TEXT_Avoir_Letter_Size_Max_String("0123456789", each.size, each.maxLength),
            each.expected)
            << each.size << " in " << each.maxLength;
    }
}

TEST_F(Illustrator, ATextIsCutAtTheBlankNearestToItsMiddle)
{
    struct Case
    {
        QString text;
        QString first; // null: not cut
        QString rest;
    };
    const Case cases[] = {
        {"AAAA BBBB CCCC DDDD", "AAAA BBBB", "CCCC DDDD"},
        {"ABCDE  HIJ", "ABCDE", " HIJ"}, // as near on the right
        {"ABC DEFGHIJKLMNO", "ABC", "DEFGHIJKLMNO"},
        {"ABCDEFGHIJ KL", "ABCDEFGHIJ", "KL"},
        {"AB CDEFGHIJKLMNOP", {}, {}},
        {"ABCDEFGHI ", {}, {}},
        {"ABCDEFGHIJKLMNOP", {}, {}},
        {"A B", {}, {}},
        {"", {}, {}},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.text.toStdString());
        QString text = each.text;
        QString first = "left over";
        const bool isCut = !each.first.isNull();
        EXPECT_EQ(Decouper_texte(text, first), isCut);
        EXPECT_EQ(first, isCut ? each.first : each.text);
        EXPECT_EQ(text, isCut ? each.rest : each.text);
    }
}

TEST_F(Illustrator, TheFirstOfTheLongestLinesIsTheLongest)
{
    CDbTextObject text;
    QString longest = "left over";
    Mk_TEXT_Avoir_Plus_Longue_String(text, longest);
    EXPECT_EQ(longest, QString());
    text.setLines({"a", "bcd", "efg", "hi"});
    Mk_TEXT_Avoir_Plus_Longue_String(text, longest);
    EXPECT_EQ(longest, "bcd");
}

TEST_F(Illustrator, ATextIsDestroyedAsWhatItIsAndOnce)
{
    static int destroyed = 0;
    struct SpecialText : CDbTextObject
    {
        ~SpecialText() override { ++destroyed; }
    };
    CDbTextObject *text = new SpecialText;
    Mk_TEXT_Detruire(&text);
    EXPECT_EQ(text, nullptr);
    Mk_TEXT_Detruire(&text);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(Illustrator, PathsHoldTheSameNumbers)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> exponent(-6, 9);
    std::vector<double> values{0, -0.0, 0.5, 1e12, -1e-9};
    for (int i = 0; i < 3000; ++i) {
        values.push_back(mantissa(random) * std::pow(10, exponent(random)));
        values.push_back((i - 1500) / 512.0); // half-way between two texts, among others
    }
    const double factor = 2.5396825396825 / 72.0;
    for (const double value : values) {
        const double x = value * factor;
        ASSERT_EQ(linesOf([x](QTextStream &out) { ILLUST_Move_To(out, x, -x); }),
            QStringList(
                toString(ILLUST_KIV_CM_A_72(x)) + ' ' + toString(ILLUST_KIV_CM_A_72(-x)) + " m"));
    }
}

TEST_F(Illustrator, AFontLineHoldsTheNumberOfTheLetterSize)
{
    QApplication::setFont(QFont("Sans Serif"));
    const std::pair<short, QString> cases[] = {{10, "1 1"}, {18, "2 2"}, {24, "3 3"}, {27, "4 4"},
        {30, "5 6"}, {36, "6 7"}, {12, "12 14"}};
    for (const auto &[size, words] : cases) {
        for (const Qt::AlignmentFlag alignment :
            {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignVCenter, Qt::AlignRight}) {
            EXPECT_EQ(linesOf([size = size, alignment](QTextStream &out) {
                ILLUST_Set_Fonte_Et_Alignement(out, size, alignment);
            }),
                QStringList("/_Sans_Serif " + words + " 0 1 z"));
        }
    }
}

TEST_F(Illustrator, ATextIsPlacedByItsAlignmentAndByItsNumberOfLines)
{
    struct Case
    {
        QFlags<Qt::AlignmentFlag> alignment;
        short lines;
        GeoRectangle box; // left, right, bottom, top
        QString place;
    };
    const GeoRectangle box(2, 6, 3, 9);
    const Case cases[] = {
        {Qt::AlignLeft, 1, box, "85.05 85.05"},
        {Qt::AlignLeft | Qt::AlignRight, 1, box, "85.05 85.05"},
        {Qt::AlignHCenter, 2, box, "141.75 85.05"},
        {Qt::AlignVCenter | Qt::AlignRight, 3, box, "141.75 170.1"},
        {Qt::AlignRight, 0, box, "198.45 425.25"},
        {Qt::AlignRight, 2, GeoRectangle(2, 6, 9, 3), "198.45 85.05"},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(linesOf([&](QTextStream &out) {
            ILLUST_Place_Point_Depart_Texte(out, each.box, 1, each.lines, each.alignment);
        }),
            QStringList("[1 0 0 1 " + each.place + "]e"));
    }
}

TEST_F(Illustrator, AnAlignmentOfNoSideEndsTheProgram)
{
    QString text;
    QTextStream out(&text);
    EXPECT_DEATH(ILLUST_Set_Fonte_Et_Alignement(out, 18, Qt::AlignTop), "\"false\"");
    EXPECT_DEATH(ILLUST_Place_Point_Depart_Texte(out, {}, 0, 1, Qt::AlignBottom), "\"false\"");
}

QStringList textLines(CDbTextObject text, double x0)
{
    return linesOf([&](QTextStream &out) { ILLUST_Texte(out, &text, x0); });
}

TEST_F(Illustrator, ATextHasTheLetterSizeOfTheSettingsAndIsNotEscaped)
{
    QApplication::setFont(QFont("Sans Serif"));
    CDbTextObject text;
    text.setLines({"12 Paired"});
    text.textLetterSize = 36;
    text.textPosition = CDbMarkerPointObject(1, 3);
    QStringList expected{
        "u", "/_Sans_Serif 2 2 0 1 z", "[1 0 0 1 28.35 85.05]e", "9 (12 Paired)t", "T", "U"};
    EXPECT_EQ(textLines(text, 0), expected);

    QSettings().setValue("symbols_letterSize", 24);
    text.setLines({"a(b\\", "", QString::fromUtf8("\xC3\xA9")});
    text.textAlignment = Qt::AlignRight;
    expected = QStringList{"u", "/_Sans_Serif 3 3 0 1 z", "[1 0 0 1 85.05 85.05]e", "4 (a(b\\)t",
        "0 ()t", QString::fromUtf8("1 (\xC3\xA9)t"), "T", "U"};
    EXPECT_EQ(textLines(text, 2), expected);

    text.setLines({});
    EXPECT_EQ(textLines(text, 2).mid(2), (QStringList{"[1 0 0 1 85.05 85.05]e", "T", "U"}));
    QTextStream out(&expected[0]);
    EXPECT_THROW(ILLUST_Texte(out, nullptr, 0), AssertionError);
}

TEST_F(Illustrator, ATextOnAPathStandsAtThePathsMiddle)
{
    CDbTextObject text;
    text.setLines({"a"});
    text.textPosition = CDbMarkerPointObject(1, 1);
    text.textPathOrigin = CDbMarkerPointObject(2, 3);
    text.textBoxWidth = 4;
    text.textBoxHeight = 2;
    for (const double x : {0.0, 10.0, 20.0, 90.0}) {
        text.textPath.append(CDbMarkerPointObject(x, 0));
    }
    EXPECT_EQ(textLines(text, 1)[2], "[1 0 0 1 567 -85.05]e");
    text.textAlignment = Qt::AlignLeft;
    EXPECT_EQ(textLines(text, 1)[2], "[1 0 0 1 510.3 -85.05]e");
    text.textPath = CDbVectorsObjectTable{text.textPath[0], text.textPath[1]};
    EXPECT_EQ(textLines(text, 1)[2], "[1 0 0 1 56.7 28.35]e");
}

class IllustratorPanel : public Illustrator
{
protected:
    static QLineEdit *field(const QWidget &panel)
    {
        return panel.findChild<QLineEdit *>("lineEditFactor");
    }
};

TEST_F(IllustratorPanel, ShowsTheStoredScaleAndStoresTheOneInItsField)
{
    IllustratorExportOptionsWidget panel(nullptr);
    EXPECT_EQ(field(panel)->text(), "100.00%");
    EXPECT_EQ(panel.factor(), 1);
    field(panel)->setText("80 %");
    EXPECT_EQ(panel.prefOptions(), 1);
    EXPECT_TRUE(panel.setProperty("prefOptions", 50));
    EXPECT_EQ(panel.prefOptions(), 0.8);
    EXPECT_EQ(panel.property("prefOptions"), QVariant(0));
    field(panel)->setText("eighty");
    EXPECT_EQ(panel.factor(), 0);

    QSettings().setValue("Illustrator_export_factor", 0.05);
    EXPECT_EQ(field(IllustratorExportOptionsWidget(nullptr))->text(), "5.00%");
}

TEST_F(IllustratorPanel, TakesTenToAHundredPercent)
{
    const IllustratorExportOptionsWidget panel(nullptr);
    const auto *validator = qobject_cast<const KivValidatorBase *>(field(panel)->validator());
    ASSERT_NE(validator, nullptr);
    const std::pair<const char *, bool> cases[] = {
        {"9.99", false}, {"10%", true}, {"100", true}, {"100.01", false}, {"", false}};
    for (const auto &[text, accepted] : cases) {
        EXPECT_EQ(validator->validAndInRange(text).second, accepted) << text;
    }
}

} // namespace
} // namespace KivIllustrator
} // namespace KivSystem
