// Items of a cut configuration, and the commands that are made from a point.

#include "CutSupport.h"

namespace KivSystem {
namespace {

using Change = void (*)(CDbMarkerShareGlobales &);

const Change kAsItIs = [](CDbMarkerShareGlobales &) {};
const Change kSynchro = [](CDbMarkerShareGlobales &settings) { settings.setCutPenUpSynchro(true); };
const Change kNoConsole = [](CDbMarkerShareGlobales &settings) {
    settings.setCutCommandM20(false);
};

using CutItem = CutTest;

// Items that stand in the header, so that their data is the root of the document.
TEST_F(CutItem, OfTheHeaderGivesItsTextByItsType)
{
    const QByteArray options = "<option v='on'/><option v='off'/>";
    const struct
    {
        QByteArray item;
        Change change;
        std::string expected;
    } rows[] = {
        {"out='G %1' type='literal' bWrap='1'", kAsItIs, "G %1\r\n"},
        {"out='G' bWrap='2'", kAsItIs, "G"},
        {"bWrap='1'", kAsItIs, ""},
        {"out='%1' type='Bool'", kAsItIs, "%1"},
        {"out='' type='bool' v='synchro'>" + options + "<!--", kAsItIs, "off"},
        {"out='' type='bool' v='synchro' bWrap='1'>" + options + "<!--", kSynchro, "on\r\n"},
        {"out='P%1' type='bool' v='synchro'>" + options + "<!--", kSynchro, "Pon"},
        {"out='P%1' type='bool' v='other'>" + options + "<!--", kSynchro, "Poff"},
        {"out='P%1' type='bool' v='synchro'><option v='one'/><!--", kSynchro, "Pone"},
        {"out='P%1' type='bool' v='synchro'><option v='one'/><!--", kAsItIs, "Pone"},
        {"out='P%1' type='bool' v='synchro'", kSynchro, "P%1"},
        {"out='N%1' type='text' v='name'", kAsItIs, "N%1"}, // the device is no file
        {"out='N%1' type='text' v='other'", kAsItIs, "N%1"},
        {"out='N%1/%1' type='No.'", kAsItIs, "N1/1"},
        {"out='L%1' type='double' v='occupy'", kAsItIs, "L1002.47"}, // scaled by x
        {"out='L%1' type='double' v='other'", kAsItIs, "L%1"},
        {"out='A%1,%2' type='LabelM31' bWrap='1'", kAsItIs, ""},
        {"out='V' type='vecmatch' bWrap='1'", kAsItIs, ""},
        {"out='F' type='M69' bWrap='1'", kAsItIs, ""},
        {"out='I' type='pieceinfo' bWrap='1'", kAsItIs, ""},
        {"out='I%1%2' type='info' bWrap='1'", kAsItIs, ""},
        {"out='M20' type='bool' v='consoleCmdM20' bWrap='1'", kNoConsole, ""},
        {"out='M20' type='bool' v='consoleCmdM20' bWrap='1'", kAsItIs, "M20*\r\n"},
    };
    for (const auto &row : rows) {
        settings.setCutPenUpSynchro(false);
        settings.setCutCommandM20(true);
        row.change(settings);
        const QByteArray end = row.item.endsWith("<!--") ? "--></item>" : "/>";
        EXPECT_EQ(cut("<c precision='2' x='* 10'><header><item " + row.item + end + "</header></c>",
                      "<svg tissuL='100.247' tissuW='150'/>"),
            row.expected)
            << row.item.toStdString();
    }
}

TEST_F(CutItem, OfTheConsoleTakesLengthsWhileTheLineStaysShorterThanItsLimit)
{
    const QByteArray both = "<condition out='L=%1'/><condition out='W=%1'/>"; // 8 characters each
    const struct
    {
        const char *maxLen;
        QByteArray conditions;
        std::string expected;
    } rows[] = {
        {"20", both, "M20L=100.25W=150.00*"},
        {"19", both, "M20L=100.25*"},
        {"12", both, "M20L=100.25*"},
        {"11", both, "M20*"},
        {"", both, "M20*"},
        {"99", "<condition out='L=%1'/>", "M20L=100.25*"},
        {"99", "", "M20*"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(cut("<c><header><item out='M20' type='bool' v='consoleCmdM20' maxLen='" +
                          QByteArray(row.maxLen) + "'>" + row.conditions + "</item></header></c>",
                      "<svg tissuL='100.25' tissuW='150'/>"),
            row.expected)
            << row.maxLen;
    }
}

// Items at the end of a piece, so that their data is the piece.
TEST_F(CutItem, OfAPieceReadsTheElementsOfThePiece)
{
    const QByteArray paths =
        "<path t='outline' PenTo='1'>M1 2L3 4</path><path PenTo='2'>M5 6</path>"
        "<path>M 1</path><path>M-1 0</path>";
    const QByteArray pento = "type='bool' v='pento' out='%1 %2:%3;'>";
    const QByteArray options = "<option v='down'/><option v='up'/></item>";
    const struct
    {
        QByteArray item;
        QByteArray data;
        std::string expected;
    } rows[] = {
        {pento + options, paths, "1.0 2.0:down;5.0 6.0:up;"},
        {"bWrap='1' " + pento + "</item>", "<path>M5 6</path>", "5.0 6.0:;\r\n"},
        {"type='bool' v='pento' out='P%1 %2'>" + options, "<path>M-1 0</path>", ""},
        {"type='LabelM31' out='X%1Y%2*%3*' bWrap='1'/>", "", "X3.0Y-1.0*a %1*\r\n"},
        {"type='No.' out='N%1'/>", "", "N1"},
        {"type='vecmatch' out='[%1 %2%3]' bWrap='1'/>",
            "<match_point matchPointX='1' matchPointY='-1'/><match_point/>",
            "[1.0 -1.0SY][0.0 0.0SY]"},
        {"type='pieceinfo' out='I' bWrap='1'><item out='a'/><item out='b%1' type='No.'/></item>",
            "<text>one</text><text>two</text>", "ab1I\r\n"},
        {"type='pieceinfo' out='I'><item out='a'/></item>", "<path/>", ""},
        {"type='M69' out='F' bWrap='1'><item out='A%1' type='No.'/></item>", "", "A1F\r\n"},
    };
    settings.setCutPenUpSynchro(true);
    for (const auto &row : rows) {
        EXPECT_EQ(cut("<c precision='1' synchro='SY'><polygone><end><item " + row.item +
                          "</end></polygone></c>",
                      "<svg><object label='a %1' centreX='3' centreY='-1'>" + row.data +
                          "</object><M69/></svg>"),
            "SY" + row.expected)
            << row.item.toStdString();
    }
}

TEST_F(CutItem, OfAFrameAdvanceReadsTheElementRightBehindThePiece)
{
    const QByteArray config = "<c><polygone><end><item out='F' type='M69'><item out='l%1 ' "
                              "type='double' v='occupy'/></item><item out='%1 ' type='No.'/>"
                              "</end></polygone></c>";
    EXPECT_EQ(cut(config, "<svg><object/><M69 tissuL='7'/><object/><object/><other/><M69/></svg>"),
        "l7 F1 2 3 ");
}

TEST_F(CutItem, WithAnEmptyLabelStillGivesItsCommand)
{
    EXPECT_EQ(cut("<c><polygone><begin><item out='%1,%2,%3;' type='LabelM31'/></begin></polygone>"
                  "</c>",
                  "<svg><object/><object label=''/></svg>"),
        "0,0,;");
}

TEST_F(CutItem, WithTheFilesNameTakesItUpToTheFirstDot)
{
    setConfig("<c><header><item out='M20%1/' type='bool' v='consoleCmdM20'/>"
              "<item out='[%1]' type='text' v='name'/><item type='text' v='name'/></header></c>");
    TestCutter cutter;
    cutter.setDocument("<svg/>");
    QFile file(plugins.filePath("Shirts S.M.cut"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(cutter.buildDocument(document, &file));
    EXPECT_EQ(file.size(), 31) << "all is written when the run ends";
    file.seek(0);
    EXPECT_EQ(file.readAll(), QByteArray("M20Shirts S/*[Shirts S]Shirts S"));
}

class CutPoint : public CutTest
{
protected:
    CutPoint()
    {
        device.open(QIODevice::WriteOnly);
        cutter.stream.setDevice(&device);
    }

    std::string taken()
    {
        cutter.stream.flush();
        std::string text = device.data().toStdString();
        device.buffer().clear();
        device.seek(0);
        return text;
    }

    QBuffer device;
    TestCutter cutter;
};

TEST_F(CutPoint, OfMinusOneLeavesTheWordInFrontOfTheFirstMarkersLetter)
{
    cutter.xExpression = "+ 5"; // which is not applied to the mark
    const struct
    {
        GeoPoint2D point;
        const char *format;
        std::string expected;
    } rows[] = {
        {{-1, -1}, "G1 X%1 Y%2", "G1 "}, {{-1, 7}, "G1 X%1 Y%2", "G1 "}, {{7, -1}, "U%1", ""},
        {{-1, -1}, "%1,%2", ""}, {{-1, -1}, "HOME", ""}, {{-1, -1}, "", ""},
        {{-6, -2}, "X%1Y%2", "X-1Y-2"}, {{-1.0001, 0.4}, "X%1Y%2", "X4Y0"},
        {{2, 3}, "HOME", "HOME"},
        {{2, 3}, "%2", "7"}, // the lowest marker takes x, whatever its number
    };
    for (const auto &row : rows) {
        cutter.exportPoint(row.point, row.format, false);
        cutter.exportPoint(row.point, row.format, true);
        EXPECT_EQ(taken(), row.expected + row.expected + "\r\n") << row.format;
    }
}

TEST_F(CutPoint, GoesThroughTheExpressionsOfTheMoment)
{
    cutter.precision = 2;
    cutter.xExpression = "* 2";
    cutter.yExpression = "+ 1 long";
    EXPECT_EQ(cutter.formatPoint("%1 %2 %3", "1.5", "2.7", "%1"), "3.00 3.00 %1");
    EXPECT_EQ(cutter.formatPoint("%1 %2 %3", "-1", "x", ""), "-2.00 1.00 ");
    cutter.xExpression = "* 3";
    cutter.yExpression.clear();
    cutter.precision = 0;
    EXPECT_EQ(cutter.formatPoint("%1 %2", "0.5", "-0.4", ""), "2 -0");
    cutter.writePoint({1, 2}, "X%1Y%2", true, 4);
    EXPECT_EQ(taken(), "X   3Y   2\r\n");
}

TEST_F(CutPoint, WithALiftHasItInFrontAndIsCountedEvenAtMinusOne)
{
    int pointIndex = 0;
    int liftIndex = 0;
    for (const double x : {5.0, -1.0, 6.0, 7.0}) {
        cutter.exportPoint({x, -1}, "X%1 ", false, "^", {1, 3}, pointIndex, liftIndex);
    }
    EXPECT_EQ(taken(), "X5 ^X-1 X6 ^X7 ");
    EXPECT_EQ(pointIndex, 4);
    EXPECT_EQ(liftIndex, 2);
}

} // namespace
} // namespace KivSystem
