// Notches, match marks and punches of an Illustrator file. Expected drawings are in hundredths of a
// centimetre; Data/illustrator_symbols.ai shows each symbol once, as it stands in a file.

#include "Failures.h"
#include "IllustratorNotches.h"
#include "IllustratorPunch.h"
#include "IllustratorSupport.h"

#include "KivGeo/Rectangle.h"
#include "KivMarker/Point.h"

#include <QFile>

#include <functional>
#include <vector>

namespace KivSystem {
namespace KivIllustrator {
namespace {

TEST_F(Illustrator, TheNotchFactorLengthensStrokesAndLeavesTheirBars)
{
    const auto simple = [](QTextStream &out) { ILLUST_Simple_Notch(out, 1, 2, 0, 1); };
    const auto twin = [](QTextStream &out) { ILLUST_Double_Notch(out, 1, 2, 0, 1); };
    const auto pointed = [](QTextStream &out) { ILLUST_V_Notch(out, 1, 2, 0, 1); };
    const auto own = [](QTextStream &out) { ILLUST_User_Notch(out, 1, 2, 0, 1, 0.4); };
    EXPECT_EQ(drawingOf(simple), "u 100,200m 100,300L S 115,300m 85,300L S U");
    EXPECT_EQ(drawingOf(pointed), "u 150,200m 100,300L 50,200L S U");

    options.notchFactor = 2;
    EXPECT_EQ(drawingOf(simple), "u 100,200m 100,400L S 115,400m 85,400L S U");
    EXPECT_EQ(drawingOf(twin), "u 150,200m 150,400L S 165,400m 135,400L S "
                               "50,200m 50,400L S 65,400m 35,400L S U");
    EXPECT_EQ(drawingOf(pointed), "u 200,200m 100,400L 0,200L S U");
    const std::string ownDrawing = "u 100,200m 100,300L S 120,300m 80,300L S U";
    EXPECT_EQ(drawingOf(own), ownDrawing);

    options.noNotchCrossBar = true;
    EXPECT_EQ(drawingOf(simple), "u 100,200m 100,400L S U");
    EXPECT_EQ(drawingOf(twin), "u 150,200m 150,400L S 50,200m 50,400L S U");
    EXPECT_EQ(drawingOf(own), ownDrawing);
}

TEST_F(Illustrator, ANotchWithoutLengthIsADotUnlessItIsTheUsers)
{
    EXPECT_EQ(drawingOf([](QTextStream &out) { ILLUST_Simple_Notch(out, 1, 2, 0, 0); }),
        "u 100,200m 100,200L S 100,200m 100,200L S U");
    EXPECT_EQ(drawingOf([](QTextStream &out) { ILLUST_V_Notch(out, 1, 2, 0, 0); }),
        "u 100,200m 100,200L 100,200L S U");
    EXPECT_EQ(
        drawingOf([](QTextStream &out) { ILLUST_User_Notch(out, 1, 2, 1e-12, -1e-12, 5); }), "");
    EXPECT_EQ(drawingOf([](QTextStream &out) { ILLUST_User_Notch(out, 1, 2, -1, 0, 1e-12); }),
        "u 100,200m 0,200L S U");
}

std::string punchDrawing(const PunchFeature &punch)
{
    return drawingOf([&](QTextStream &out) { ILLUST_PunchHole(out, 10, 20, &punch); });
}

std::string punchDrawing(float PunchFeature::*member, float size)
{
    PunchFeature punch;
    punch.*member = size;
    return punchDrawing(punch);
}

TEST_F(Illustrator, APunchDrawsEverySizeThatIsNotZeroInTheOrderOfItsRecord)
{
    EXPECT_EQ(punchDrawing(PunchFeature()), "u U");
    PunchFeature punch;
    punch.punchTriangleRight = 1;
    punch.punchPlus = 1;
    punch.punchBarUp = 1;
    punch.punchBarDown = 2;
    EXPECT_EQ(punchDrawing(punch), "u 1000,1800m 1000,2000L S 970,1800m 1030,1800L S "
                                   "1000,2100m 1000,2000L S 970,2100m 1030,2100L S "
                                   "950,2000m 1050,2000L S 1000,1950m 1000,2050L S "
                                   "1050,2000m 950,2050L 950,1950L 1050,2000L s U");
    QTextStream out(stdout);
    EXPECT_THROW(ILLUST_PunchHole(out, 0, 0, nullptr), AssertionError);
}

TEST_F(Illustrator, ANegativeSizeIsDrawnAndATurnedShapeHasALargerSmallestSize)
{
    EXPECT_EQ(punchDrawing(&PunchFeature::punchSquare, -1),
        "u 1050,1950m 1050,2050L 950,2050L 950,1950L 1050,1950L s U");
    EXPECT_EQ(punchDrawing(&PunchFeature::punchBarLeft, -1),
        "u 1100,2000m 1000,2000L S 1100,2010m 1100,1990L S U");
    EXPECT_NE(punchDrawing(&PunchFeature::punchOctagon, 0.00001F), "u U");
    EXPECT_EQ(punchDrawing(&PunchFeature::punchPlus, 1e-13F), "u U");
    EXPECT_EQ(punchDrawing(&PunchFeature::punchCorner, 0.000009F), "u U");
    EXPECT_NE(punchDrawing(&PunchFeature::punchCorner, 0.00002F), "u U");
}

// By 90 degrees counter-clockwise and to twice the size. The half discs stay as large as they are,
// and begin where the matrix says: their first line goes from the centre to the right or upward.
TEST_F(Illustrator, TheMatrixTurnsTheLastSixShapes)
{
    PunchFeature punch;
    punch.punchMatrix = {0, 2, -2, 0};
    punch.punchSquare = 1;
    punch.punchTriangleLeft = 1;
    punch.punchCorner = 1;
    EXPECT_EQ(punchDrawing(punch),
        "u 950,2050m 950,1950L 1050,1950L 1050,2050L 950,2050L s "
        "1000,1900m 900,2100L 1100,2100L 1000,1900L s "
        "1000,2000m 800,2000L 800,2040L 960,2040L 960,2200L 1000,2200L 1000,2000L s U");

    const std::string flat = punchDrawing(&PunchFeature::punchHalfDiscs, 2);
    EXPECT_EQ(flat.substr(0, 26), "u 1000,2000m 1100,2000L 10") << flat;
    PunchFeature turned;
    turned.punchMatrix = {0, 2, -2, 0};
    turned.punchHalfDiscs = 2;
    EXPECT_EQ(punchDrawing(turned).substr(0, 24), "u 1000,2000m 1000,2100L ") << flat;
}

// A matrix without area draws a curve together to a point, of which nothing is left.
TEST_F(Illustrator, AMatrixWithoutAreaIsSurvived)
{
    PunchFeature punch;
    punch.punchMatrix = {0, 0, 0, 0};
    punch.punchTwinCurve = 1;
    EXPECT_EQ(punchDrawing(punch), "u s U");
}

using Symbol = std::function<void(QTextStream &, double, double)>;

std::vector<Symbol> allSymbols()
{
    std::vector<Symbol> symbols{
        [](QTextStream &out, double x, double y) { ILLUST_Simple_Notch(out, x, y, 0.6, 0.8); },
        [](QTextStream &out, double x, double y) { ILLUST_Double_Notch(out, x, y, 0.6, 0.8); },
        [](QTextStream &out, double x, double y) { ILLUST_V_Notch(out, x, y, 0.6, 0.8); },
        [](QTextStream &out, double x, double y) { ILLUST_User_Notch(out, x, y, 0.6, 0.8, 0); },
        [](QTextStream &out, double x, double y) { ILLUST_User_Notch(out, x, y, 0.6, 0.8, 0.5); },
        ILLUST_V_De_Match,
    };
    float PunchFeature::*const sizes[] = {&PunchFeature::punchBarLeft, &PunchFeature::punchBarRight,
        &PunchFeature::punchBarDown, &PunchFeature::punchBarUp, &PunchFeature::punchPlus,
        &PunchFeature::punchCross, &PunchFeature::punchBowTie, &PunchFeature::punchSquare,
        &PunchFeature::punchDiamond, &PunchFeature::punchOctagon, &PunchFeature::punchTriangleLeft,
        &PunchFeature::punchTriangleRight, &PunchFeature::punchTwinStroke,
        &PunchFeature::punchTwinCurve, &PunchFeature::punchHalfDiscs, &PunchFeature::punchCorner};
    for (float PunchFeature::*const size : sizes) {
        symbols.push_back([size](QTextStream &out, double x, double y) {
            PunchFeature punch;
            punch.*size = 2;
            punch.punchMatrix = {0.8, 0.6, -0.6, 0.8};
            ILLUST_PunchHole(out, x, y, &punch);
        });
    }
    return symbols;
}

// Six to a row, four centimetres apart.
void writeSheet(QTextStream &out)
{
    constexpr int kColumns = 6;
    constexpr double kPitch = 4;
    ILLUST_Prologue_Header_Subsection(out, "symbols", GeoRectangle(0, 24, 0, 16));
    ILLUST_Script_Setup_Subsection(out);
    ILLUST_Standard_First_Script(out);
    int place = 0;
    for (const Symbol &symbol : allSymbols()) {
        symbol(out, kPitch * (place % kColumns + 0.5), kPitch * (3.5 - place / kColumns));
        ++place;
    }
    out << ILLUST_Trailer << Qt::endl << ILLUST_EOF << Qt::endl;
}

TEST_F(Illustrator, EachSymbolIsDrawnAsOnTheSheet)
{
    QStringList lines = linesOf(writeSheet);
    lines[3] = "%%Creation Date: (01/02/2026) (03:04)";
    lines[4] = "%%DocumentFonts: Sans_Serif";
    QFile sheet(QStringLiteral(KIV_TEST_DATA "/illustrator_symbols.ai"));
    ASSERT_TRUE(sheet.open(QIODevice::ReadOnly));
    EXPECT_EQ(lines.join('\n').toStdString() + '\n', sheet.readAll().toStdString());
}

} // namespace
} // namespace KivIllustrator
} // namespace KivSystem
