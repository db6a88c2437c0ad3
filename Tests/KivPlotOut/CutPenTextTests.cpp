// Pen texts in cut files.

#include "CutSupport.h"
#include "PenFont.h"

#include <gmock/gmock.h>

namespace KivSystem {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A letter height of 10 cm.
const QByteArray kTenCm = " fontSize='236.20559334845046'";

class CutPenTextTest : public CutTest
{
protected:
    CutPenTextTest()
    {
        writeFont(plugins.path(),
            fontBytes({
                {'I', bytesOf({2, 0, 0, 75, 0, 1, 75, 100})},
                {'T', bytesOf({4, 0, 0, 75, 0, 1, 75, 100, 0, 65, 100, 1, 85, 100})},
                {'.', bytesOf({1, 0, 0, 75, 50})},
                {0x2014, bytesOf({2, 0, 0, 10, 50, 1, 90, 50})},
            }));
    }

    std::string draw(const QByteArray &texts, const QByteArray &infoAttributes = "",
        const QByteArray &rootAttributes = "")
    {
        return cut("<c" + rootAttributes +
                       "><polygone><begin><item type='pieceinfo' out='.'><item type='info' "
                       "out='(%1,%2)' penup='^' pendown='_' " +
                       infoAttributes + "/></item></begin></polygone></c>",
            "<svg><object>" + texts + "</object></svg>");
    }

    WarningRecord warnings;
};

TEST_F(CutPenTextTest, StrokesAreDrawnFromTheStartOfTheLine)
{
    const QByteArray line = "<text x='100' y='50'" + kTenCm;
    const struct
    {
        QByteArray text;
        std::string drawn;
    } cases[] = {
        {line + ">I</text>", "^(100,45)_(100,55)_."},
        {line + ">T</text>", "^(100,45)_(100,55)_^(99,55)_(101,55)_."},
        {line + ">.</text>", "^(100,50)__."},
        {line + "> \n I\t</text>", "^(100,45)_(100,55)_."},
        {line + ">I I</text>", "^(100,45)_(100,55)_^(110,45)_(110,55)_."},
        {line + ">I?I</text>", "^(100,45)_(100,55)_^(110,45)_(110,55)_."},
        {line + ">—I</text>", "^(96,50)_(104,50)_^(110,45)_(110,55)_."},
        {line + ">   </text>", "."},
        {"<text>I</text>", "^(0,0)_(0,0)_."},
        {line + " angle='90'>II</text>", "^(105,50)_(95,50)_^(105,55)_(95,55)_."},
        {line + " angle='-90'>.I</text>", "^(100,50)__^(95,45)_(105,45)_."},
        {line + " angle='180'>I</text>", "^(100,55)_(100,45)_."},
        {line + " horzAlign='start'>I</text>", "^(100,45)_(100,55)_."},
        {line + " horzAlign='middle'>..</text>", "^(95,50)__^(100,50)__."},
        {line + " horzAlign='end'>..</text>", "^(90,50)__^(95,50)__."},
        {line + " horzAlign='end' angle='90'>..</text>", "^(90,50)__^(90,55)__."},
        {line + ">.</text><path/><text x='7' y='8'>.</text>", "^(100,50)__^(7,8)__."},
    };
    for (const auto &row : cases) {
        EXPECT_EQ(draw(row.text), row.drawn) << row.text.toStdString();
    }
    EXPECT_THAT(warnings.take(), IsEmpty());
}

TEST_F(CutPenTextTest, PointsAreCommandsOfTheFormat)
{
    const QByteArray text = "<text x='3' y='-1'" + kTenCm + ">I.</text>";
    EXPECT_EQ(draw(text, "bWrap='1'"), "^(3,-6)\r\n_(3,4)\r\n_^\r\n__.");
    EXPECT_EQ(
        cutPiece("<begin><item type='info' out='%1,%2' bWrap='1' penup='UP&#13;&#10;'/></begin>",
            "<text x='1'>.</text>"),
        "UP\r\n0,0\r\n");
    EXPECT_EQ(draw(text, "", " x='* 10' y='* 10' precision='1'"), "^(30.0,-60.0)_(30.0,40.0)_^__.");
}

TEST_F(CutPenTextTest, AnItemOverAnotherElementTakesItAsTheFirstLine)
{
    const QByteArray info = "<item type='info' out='(%1,%2)' penup='^' pendown='_'/>";
    EXPECT_EQ(cutPiece("<begin>" + info + "</begin>", "<text x='1' y='2'>.</text>"), "^(0,0)__");
    EXPECT_EQ(cut("<c><header>" + info + "</header></c>",
                  "<svg x='5'" + kTenCm + "><object>.I</object></svg>"),
        "^(5,0)__^(10,-5)_(10,5)_");
}

TEST_F(CutPenTextTest, WithoutTheFontNothingIsDrawnAndTheFileIsWritten)
{
    const QByteArray text = "<text" + kTenCm + ">I.</text><text>I</text>";
    const QString font = plugins.filePath("io/KIVFNT.TBL");
    EXPECT_EQ(draw(text), "^(0,-5)_(0,5)_^(5,0)__^(0,0)_(0,0)_.");
    ASSERT_TRUE(QFile::remove(font));
    EXPECT_EQ(draw(text), ".");
    EXPECT_THAT(warnings.take(), ElementsAre("cannot open font table file: KIVFNT.TBL"));
    EXPECT_EQ(draw("<path/>"), ""); // the font is wanted for texts only
    EXPECT_THAT(warnings.take(), IsEmpty());
}

} // namespace
} // namespace KivSystem
