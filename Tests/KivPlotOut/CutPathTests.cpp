// Outlines, notches, internal lines, holes and waste of a cut file.
//
// The commands are letters: capitals for an outline (M move, A first line, B line), small ones for
// a notch (m, a, b and p for the line with the pen up).

#include "CutSupport.h"

namespace KivSystem {
namespace {

const QByteArray kPolygone =
    "<notch pathto='m%1,%2 ' lineto0='a%1,%2 ' lineto='b%1,%2 ' linetopenup='p%1,%2 ' bWrap='1'/>"
    "<outline pathto='M%1,%2 ' lineto0='A%1,%2 ' lineto='B%1,%2 ' LiftPlunge='^' v0='' v2='!'/>";
const QByteArray kSquare = "M0,0L10,0L10,10L0,10L0,0";

QByteArray path(const QByteArray &kind, const QByteArray &data, const QByteArray &lifts = "")
{
    const QByteArray lift = lifts.isEmpty() ? QByteArray() : "LiftPlunge='" + lifts + "' ";
    return "<path " + lift + "t='" + kind + "'>" + data + "</path>";
}

QByteArray notch(const QByteArray &data)
{
    return path("notch", data);
}

QByteArray square(const QByteArray &lifts = "")
{
    return path("outline", kSquare, lifts);
}

class CutPath : public CutTest
{
protected:
    std::string cut(const QByteArray &object) { return cutPiece(kPolygone, object); }

    std::string cutDuringOutline(const QByteArray &object)
    {
        settings.setCutNotchOrder(NotchDuringOutline);
        return cut(object);
    }
};

TEST_F(CutPath, OfAnOutlineIsAMoveAFirstLineAndLines)
{
    const struct
    {
        QByteArray object;
        std::string expected;
    } rows[] = {
        {path("outline", "M1 2L3 4L5 6L7 8"), "M1,2 A3,4 B5,6 B7,8 "},
        {path("outline", "M1 2L3 4") + path("outline", "M5 6L7 8"), "M1,2 A3,4 M5,6 A7,8 "},
        {path("outline", "M1 2"), ""},
        {path("outline", "M-1 2L3 4"), ""},
        {path("outline", "M1 2L-1 4L5 6"), "M1,2 B5,6 "},
        {path("Outline", "M1 2L3 4") + notch("M1 2L3 4") + path("internal", "M1 2L3 4"), ""},
        // Lifts stand in front of the points that they name, also where a point is none.
        {path("outline", "M-1 2L3 4L5 6L7 8", "0 2"), "^M-1,2 A3,4 ^B5,6 B7,8 "},
        {path("outline", "M1 2L3 4", "x 9"), "^M1,2 A3,4 "},
        {path("outline", "M1 2L3 4", " "), "M1,2 A3,4 "},
        {path("outline", "M1 2L3 4L5 6", "2 1"), "M1,2 A3,4 ^B5,6 "},
        {path("outline", "M1 2", "0"), ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(cut(row.object), row.expected) << row.object.toStdString();
    }
    const QByteArray noLift = "<outline pathto='M%1,%2 ' lineto0='A' lineto='B' bWrap='1'/>";
    EXPECT_EQ(cutPiece(noLift, square("1")), "M0,0 \r\nA\r\nB\r\nB\r\nB\r\n");
    EXPECT_EQ(cutPiece("", square()), "");
}

TEST_F(CutPath, OfAnOutlineBeginsWithTheTextOfThePiecesVelocity)
{
    const struct
    {
        QByteArray velocity;
        std::string expected;
    } rows[] = {{"2", "!A3,4 "}, {"0", "A3,4 "}, {"7", "A3,4 "}, {"x", "A3,4 "}};
    for (const auto &row : rows) {
        for (const short order : {NotchNone, NotchDuringOutline}) {
            settings.setCutNotchOrder(order);
            EXPECT_EQ(CutTest::cut("<c><polygone>" + kPolygone + "</polygone></c>",
                          "<svg><object velocity='" + row.velocity + "'>" +
                              path("outline", "M1 2L3 4") + "</object></svg>"),
                "M1,2 " + row.expected)
                << row.velocity.toStdString();
        }
    }
}

TEST_F(CutPath, OfNotchesAndInternalLinesLiesWhereTheOrderPutsIt)
{
    const QByteArray polygone =
        "<notch pathto='n' lineto0='o' lineto='p'/><outline pathto='A' lineto0='B'/>"
        "<internal pathto='i' lineto0='j'/>";
    const QByteArray object = path("outline", "M1 1L2 2") + notch("M1 1L2 2L3 3") +
                              path("internal", "M1 1L2 2") + notch("M4 4");
    const struct
    {
        short notchOrder;
        short internalOrder;
        std::string expected;
    } rows[] = {
        {NotchNone, CutLineNone, "AB"},
        {4, 3, "AB"},
        {NotchBeforeOutline, CutLineNone, "nopAB"},
        {NotchAfterOutline, CutLineNone, "ABnop"},
        {NotchBeforeOutline, CutLineBeforeOutline, "ijnopAB"},
        {NotchAfterOutline, CutLineAfterOutline, "ABnopij"},
        {NotchDuringOutline, CutLineBeforeOutline, "ijABnp"},
    };
    for (const auto &row : rows) {
        settings.setCutNotchOrder(row.notchOrder);
        settings.setCutInternalOrder(row.internalOrder);
        EXPECT_EQ(cutPiece(polygone, object), row.expected) << row.notchOrder;
    }
}

TEST_F(CutPath, OfAnInternalLineIsCutInStrokesByACutterWithoutLines)
{
    settings.setCutInternalOrder(CutLineAfterOutline);
    const QByteArray line = path("internal", "M1 1L2 2L3 3L4 4");
    const QByteArray formats = "<internal pathto='m%1 ' lineto0='a%1 ' ";
    EXPECT_EQ(cutPiece(formats + "lineto='b%1 '/>", line), "m1 a2 b3 b4 ");
    EXPECT_EQ(cutPiece(formats + "/>", line), "m1 a2 m2 a3 m3 a4 ");
    EXPECT_EQ(cutPiece(formats + "/>", path("internal", "M1 1")), "");
    EXPECT_EQ(cutPiece("<internal pathto='mX%1 ' lineto0='a%1 ' bWrap='1'/>",
                  path("internal", "M-1 1L2 2")),
        "m\r\na2 \r\n");
}

TEST_F(CutPath, OfANotchBreaksTheOutlineOffWhereItBegins)
{
    const struct
    {
        const char *what;
        QByteArray notches;
        std::string expected;
    } rows[] = {
        {"none", "", "M0,0 A10,0 B10,10 B0,10 B0,0 "},
        {"at a vertex", notch("M10,10L5,5"), "M0,0 A10,0 a5,5 M10,10 A0,10 B0,0 "},
        {"at a vertex, three points", notch("M10,10L5,5L6,5"),
            "M0,0 A10,0 a5,5 p6,5 M10,10 A0,10 B0,0 "},
        {"at a vertex, four points", notch("M10,10L5,5L6,5L7,5"),
            "M0,0 A10,0 a5,5 p6,5 b7,5 M10,10 A0,10 B0,0 "},
        {"at a vertex, to no point", notch("M10,10L-1,5"), "M0,0 A10,0 M10,10 A0,10 B0,0 "},
        {"at the closing point", notch("M0,0L5,5"), "M0,0 A10,0 B10,10 B0,10 a5,5 M0,0 "},
        {"beside a vertex, within the tolerance", notch("M10.0000000000009,10L5,5"),
            "M0,0 A10,0 a5,5 M10,10 A0,10 B0,0 "},
        {"beside a vertex", notch("M10.00000000001,10L5,5"),
            "m10,10 a5,5 M0,0 A10,0 B10,10 B0,10 B0,0 "},
        {"on a segment", notch("M10,4L8,4"), "M0,0 A10,0 m10,4 a8,4 M10,0 A10,10 B0,10 B0,0 "},
        {"on a segment, three points", notch("M10,4L8,4L8,5"),
            "M0,0 A10,0 m10,4 p8,4 b8,5 M10,0 A10,10 B0,10 B0,0 "},
        {"on the first segment", notch("M4,0L4,2"), "m4,0 a4,2 M0,0 A10,0 B10,10 B0,10 B0,0 "},
        {"two on a segment", notch("M10,4L8,4") + notch("M10,6L8,6"),
            "M0,0 A10,0 m10,4 a8,4 m10,6 a8,6 M10,0 A10,10 B0,10 B0,0 "},
        {"two on segments", notch("M10,4L8,4") + notch("M4,10L4,8"),
            "M0,0 A10,0 m10,4 a8,4 M10,0 A10,10 m4,10 a4,8 M10,10 A0,10 B0,0 "},
        {"at two vertices", notch("M10,0L8,2") + notch("M0,10L2,8"),
            "M0,0 a8,2 M10,0 A10,10 a2,8 M0,10 A0,0 "},
        {"two at a vertex", notch("M10,0L8,2") + notch("M10,0L9,2"),
            "M0,0 a8,2 a9,2 M10,0 A10,10 B0,10 B0,0 "},
        {"at a vertex that is past", notch("M0,10L2,8") + notch("M10,0L8,2"),
            "M0,0 A10,0 B10,10 a2,8 m10,0 a8,2 M0,10 A0,0 "},
        {"off the outline", notch("M50,50L51,51"), "m50,50 a51,51 M0,0 A10,0 B10,10 B0,10 B0,0 "},
        {"of one point", notch("M10,10"), "M0,0 A10,0 B10,10 B0,10 B0,0 "},
        {"from no point", notch("M-1,5L6,5"), "M0,0 A10,0 B10,10 B0,10 B0,0 "},
        {"behind a path of another kind", // which ends the notches of this outline
            notch("M10,4L8,4") + path("internal", "M1 1L2 2") + notch("M4,10L4,8"),
            "M0,0 A10,0 m10,4 a8,4 M10,0 A10,10 B0,10 B0,0 "},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(cutDuringOutline(row.notches + square()), row.expected) << row.what;
    }
}

TEST_F(CutPath, OfANotchBelongsToTheOutlineThatFollows)
{
    const QByteArray second = path("outline", "M20,0L30,0L30,10");
    EXPECT_EQ(cutDuringOutline(notch("M10,10L5,5") + square() + notch("M30,0L29,1") + second +
                               notch("M30,10L29,9") + notch("M7,7L8,8L9,9")),
        "M0,0 A10,0 a5,5 M10,10 A0,10 B0,0 "
        "M20,0 a29,1 M30,0 A30,10 m30,10 a29,9 m7,7 p8,8 b9,9 ");
    EXPECT_EQ(cutDuringOutline(path("outline", "M1 1")), "M1,1 ");
}

TEST_F(CutPath, OfAnOutlineCountsRepeatedPointsForItsLifts)
{
    const struct
    {
        QByteArray notches;
        QByteArray lifts;
        std::string expected;
    } rows[] = {
        {"", "1 4", "M0,0 ^A10,0 B10,10 B0,10 ^B0,0 "},
        {"", "5 6", "M0,0 A10,0 B10,10 B0,10 B0,0 "},
        // The vertex is written once.
        {notch("M10,10L5,5"), "1 2", "M0,0 ^A10,0 a5,5 ^M10,10 A0,10 B0,0 "},
        // 10,0 is written again, as the third point.
        {notch("M10,4L8,4"), "1 2 4", "M0,0 ^A10,0 m10,4 a8,4 ^M10,0 A10,10 ^B0,10 B0,0 "},
        {notch("M10,4L8,4"), "5", "M0,0 A10,0 m10,4 a8,4 M10,0 A10,10 B0,10 ^B0,0 "},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(cutDuringOutline(row.notches + square(row.lifts)), row.expected)
            << row.lifts.toStdString();
    }
}

TEST_F(CutPath, OfManyNotchesIsCutWhereAFewAre)
{
    QByteArray outline = "M0,0";
    QByteArray notches;
    std::string expected = "M0,0 ";
    for (int index = 1; index <= 300; ++index) {
        const QByteArray x = QByteArray::number(index);
        outline += "L" + x + ",7";
        notches += notch("M" + x + ",7L" + x + ",5");
        const std::string number = std::to_string(index);
        expected.append("a").append(number).append(",5 M").append(number).append(",7 ");
    }
    EXPECT_EQ(cutDuringOutline(notches + path("outline", outline)), expected);
}

// --- Holes and waste ----------------------------------------------------------------------------

TEST_F(CutTest, HolesGoThroughTheFirstToolOrThroughTheUsersOne)
{
    settings.setCutPenUpSynchro(true);
    const QByteArray config = "<c synchro='S'><polygone><drill bWrap='1'><M43 out='d%1,%2%3'/>"
                              "<M44 out='e%1,%2'/></drill></polygone></c>";
    const QByteArray svg =
        "<svg><object><path t='M44' drill='M1,2L9,9'/><path t='M43' drill='3 4'/>"
        "<path t='M45' drill='M5,6'/><path drill='M7,8'/>"
        "<path t='M43' drill=''/><path t='M43'>M9,9</path></object></svg>";
    EXPECT_EQ(cut(config, svg), "d1,2S\r\nd3,4S\r\nd5,6S\r\nd7,8S\r\nS");
    settings.setPunchUserTool(true);
    EXPECT_EQ(cut(config, svg), "e1,2\r\nd3,4S\r\nS");
    EXPECT_EQ(cut("<c synchro='S'><polygone/></c>", svg), "S");
    settings.setCutPenUpSynchro(false);
    EXPECT_EQ(cut(config, svg), "e1,2\r\nd3,4\r\n");
}

TEST_F(CutTest, HolesOutsideThePiecesAreNumberedBeforeThem)
{
    const QByteArray config =
        "<c synchro='S' x='* 10'><polygone><begin><item out='N%1 ' type='No.'/>"
        "</begin><drill><M43 out='d%1,%2;'/><M44 out='e%1,%2%3;'/></drill>"
        "</polygone></c>";
    const auto svg = [](const QByteArray &tool) {
        return "<svg><object/><external outil='" + tool +
               "'><circle cx='1' cy='2'/><circle cx='-1'/><path/><circle/></external>"
               "<external outil='M43'><circle/></external></svg>";
    };
    EXPECT_EQ(cut(config, svg("M44")), "N1 e10,2;N2 e-10,0;N3 e0,0;N4 ");
    EXPECT_EQ(cut(config, svg("M45")), "N1 ");
    EXPECT_EQ(cut(config, svg("")), "N1 ");
    settings.setCutPenUpSynchro(true);
    EXPECT_EQ(cut(config, svg("M44")), "N1 e10,2S;N2 e-10,0S;N3 e0,0S;N4 S");
}

TEST_F(CutTest, WasteIsCutFromOneEndToTheOtherOrToAnOpenEnd)
{
    const QByteArray scrap = "<scrap><begin><item out='W%1 ' type='No.'/></begin>"
                             "<outline pathto='mX%1,%2 ' lineto0='aX%1,%2 '/></scrap>";
    const QByteArray svg = "<svg><object/><object/><scrap><s>M1,2L3,4</s><s/><s>M5,6</s><s>L7,8</s>"
                           "<s>M1,1M2,2M3,3</s><s>M4,4L5,5L6,6</s><s>-</s></scrap>"
                           "<scrap><s>M9,9</s></scrap></svg>";
    EXPECT_EQ(
        cut("<c><polygone/>" + scrap + "</c>", svg), "W3 mX1,2 aX3,4 mX5,6 amaX7,8 mX1,1 amaX4,4 ");
    EXPECT_EQ(cut("<c><polygone/></c>", svg), "");
    EXPECT_EQ(cut("<c>" + scrap + "</c>", svg), "");
    EXPECT_EQ(cut("<c><polygone/><scrap><outline bWrap='1'/></scrap></c>", "<svg><scrap><s>M1,2</s>"
                                                                           "</scrap></svg>"),
        "\r\n\r\n");
}

} // namespace
} // namespace KivSystem
