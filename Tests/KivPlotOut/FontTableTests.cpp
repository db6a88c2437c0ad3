#include "FontTable.h"

#include "PenFont.h"
#include "ScriptedUserInterface.h"

#include "KivCore/Application.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace KivSystem {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OpenTable : public FontTable
{
public:
    OpenTable() : FontTable(kFontTableFile) {}
    using FontTable::file;
};

class FontTableTest : public testing::Test
{
protected:
    FontTableTest() : application(std::make_unique<ScriptedUserInterface>(), QDir(plugins.path()))
    {
        qInstallMessageHandler([](auto, const auto &, const QString &) {}); // curves are traced
    }
    ~FontTableTest() override { qInstallMessageHandler(nullptr); }

    /// The payload of a glyph of a font file.
    QByteArray glyph(const QByteArray &font, ushort code)
    {
        writeFont(plugins.path(), font);
        return OpenTable().readGlyphData(code);
    }

    const QTemporaryDir plugins;
    const KivApplication application;
    WarningRecord warnings;
};

std::string shown(const FontTable::Polylines &polylines)
{
    QStringList lines;
    for (const QListEx<QPointF> &polyline : polylines) {
        QStringList points;
        for (const QPointF &point : polyline) {
            points.append(QString("%1,%2").arg(point.x()).arg(point.y()));
        }
        lines.append(points.join(' '));
    }
    return lines.join(" | ").toStdString();
}

TEST_F(FontTableTest, EveryGlyphOfASortedIndexIsFoundAndNoOther)
{
    for (int count = 0; count < 20; ++count) {
        std::map<int, QByteArray> glyphs;
        for (int i = 0; i < count; ++i) {
            glyphs[i * 3500 + 2] = bytesOf({i % 3}) + QByteArray(3 * (i % 3) + 1, char(i));
        }
        writeFont(plugins.path(), fontBytes(glyphs));
        OpenTable table;
        for (const auto &[code, bytes] : glyphs) {
            EXPECT_EQ(table.readGlyphData(ushort(code)), bytes.mid(1)) << code << " of " << count;
            EXPECT_EQ(table.readGlyphData(ushort(code - 1)), "") << code << " of " << count;
            EXPECT_EQ(table.readGlyphData(ushort(code + 1)), "") << code << " of " << count;
        }
        EXPECT_EQ(table.readGlyphData(0xFFFF), "");
    }
    EXPECT_THAT(warnings.take(), IsEmpty());
}

TEST_F(FontTableTest, BrokenFilesAreToldAndGiveNothing)
{
    const QByteArray a = bytesOf({1, 0, 0, 75, 50});
    const QByteArray sound = fontBytes({{'A', a}});
    const std::string cannotSeek = "cannot seek font table file: KIVFNT.TBL";
    const std::string cannotRead = "cannot read font table file: KIVFNT.TBL";
    const auto withCount = [&](qint32 count) { return littleEndian(count, 4) + sound.mid(4); };
    const auto withOffset = [&](qint32 offset) {
        return sound.left(6) + littleEndian(offset, 4) + a;
    };
    constexpr qint32 lowest = std::numeric_limits<qint32>::min();
    constexpr qint32 highest = std::numeric_limits<qint32>::max();
    const struct
    {
        const char *name;
        QByteArray font;
        std::vector<std::string> told;
    } cases[] = {
        {"empty file", "", {"can not read font table file: KIVFNT.TBL"}},
        {"no glyphs", withCount(0), {}},
        {"negative count", withCount(-1), {}},
        {"lowest count", withCount(lowest), {}},
        {"count beyond the file", withCount(1000), {cannotSeek}},
        {"highest count", withCount(highest), {cannotSeek}},
        {"glyph behind the file", withOffset(5), {cannotRead}},
        {"glyph far behind the file", withOffset(highest), {cannotRead}},
        {"glyph in front of the file", withOffset(-11), {cannotSeek}},
        {"glyph far in front of the file", withOffset(lowest), {cannotSeek}},
        {"negative number of steps", fontBytes({{'A', bytesOf({-128, 0, 0, 75, 50})}}), {}},
    };
    for (const auto &row : cases) {
        EXPECT_EQ(glyph(row.font, 'A'), "") << row.name;
        EXPECT_EQ(warnings.take(), row.told) << row.name;
    }
    // An index out of order may hide glyphs, but every search ends.
    QByteArray mixed = littleEndian(6, 4);
    for (const int code : {900, 5, 70, 5, 1000, 3}) {
        mixed += littleEndian(code, 2) + littleEndian(0, 4);
    }
    writeFont(plugins.path(), mixed + a);
    OpenTable table;
    for (int code = 0; code < 1100; ++code) {
        const QByteArray found = table.readGlyphData(ushort(code));
        EXPECT_TRUE(found.isEmpty() || found == a.mid(1)) << code;
    }
}

TEST_F(FontTableTest, AFileThatEndsAnywhereGivesWhatItStillHolds)
{
    std::map<int, QByteArray> glyphs;
    for (const int code : {0x41, 0x42, 0x43, 0x416}) {
        glyphs[code] = bytesOf({3, 0, 0, 60, 40, 2, 70, 60, 1, code % 100, 40});
    }
    const QByteArray whole = fontBytes(glyphs);
    for (int size = 0; size < whole.size(); ++size) {
        writeFont(plugins.path(), whole.left(size));
        OpenTable table;
        for (const auto &[code, bytes] : glyphs) {
            const QByteArray found = table.readGlyphData(ushort(code));
            EXPECT_TRUE(bytes.mid(1).startsWith(found)) << code << " of " << size << " bytes";
            double advance = 0;
            EXPECT_LE(table.charToPolylines(QChar(code), 1, &advance).size(), 1);
            EXPECT_EQ(advance, code < 256 ? 0.5 : 1.0);
        }
        EXPECT_FALSE(warnings.take().empty() && size < whole.size() - 10) << size;
    }
}

TEST_F(FontTableTest, AMissingFileIsToldOnceAndOpensWhenItIsThere)
{
    OpenTable nowhere; // there is no directory either: that is not told
    EXPECT_EQ(nowhere.file, nullptr);
    EXPECT_THAT(warnings.take(), IsEmpty());

    ASSERT_TRUE(QDir(plugins.path()).mkpath("io"));
    OpenTable table;
    EXPECT_THAT(warnings.take(), ElementsAre("cannot open font table file: KIVFNT.TBL"));
    EXPECT_EQ(table.readGlyphData('A'), "");
    EXPECT_THAT(warnings.take(), IsEmpty());

    writeFont(plugins.path(), fontBytes({{'A', bytesOf({0, 7})}}));
    table.open();
    const QFile *const file = table.file.get();
    table.open();
    EXPECT_EQ(table.file.get(), file);
    EXPECT_EQ(table.readGlyphData('A'), "\x07");

    table.file->close();
    EXPECT_EQ(table.readGlyphData('A'), "");
    EXPECT_THAT(warnings.take(), ElementsAre("cannot reset font table file pointer: KIVFNT.TBL"));
}

TEST_F(FontTableTest, StepsBecomePolylines)
{
    const std::string brokenCurve = "invalid glyph data length, failed to parse bezier point";
    // From (0, 0) with the control point (50, 100) to (100, 0), in tenths.
    const std::string curve = "10,18 20,32 30,42 40,48 50,50 60,48 70,42 80,32 90,18 100,";
    const struct
    {
        std::vector<int> payload; // its first byte is of no use
        std::string polylines;
        bool isTold;
    } cases[] = {
        {{}, "", false},
        {{0}, "", false},
        {{0, 0, 5}, "", false},
        {{9, 0, 5, 6}, "5,6", false},
        {{0, 0, 5, 6, 0, 7, 8, 1, 9, 9}, "5,6 | 7,8 9,9", false},
        {{0, 1, 5, 6, 1, -128, 127}, "5,6 -128,127", false},
        {{0, 0, 5, 6, 3, 7, 7, 255, 8, 8, 1, 9, 9}, "5,6 9,9", false},
        {{0, 0, 5, 6, 1, 7}, "5,6", false},
        {{0, 2, 5, 6, 1, 7, 8}, "", true},
        {{0, 0, 5, 6, 2, 7, 8}, "5,6", true},
        {{0, 0, 5, 6, 2, 7, 8, 1, 9}, "5,6", true},
    };
    OpenTable table;
    for (const auto &row : cases) {
        EXPECT_EQ(shown(table.parseGlyphData(bytesOf(row.payload))), row.polylines);
        EXPECT_EQ(warnings.take(),
            row.isTold ? std::vector<std::string>{brokenCurve} : std::vector<std::string>());
    }
    const auto withEnd = [&](int command) {
        return shown(
            table.parseGlyphData(bytesOf({0, 0, 0, 0, 2, 50, 100, command, 100, 0, 1, 100, 9})));
    };
    // Ten samples, the last at the end but for the rounding; then the end by its own command.
    EXPECT_THAT(withEnd(1), testing::StartsWith("0,0 " + curve));
    EXPECT_THAT(withEnd(1), testing::EndsWith(" 100,0 100,9"));
    EXPECT_EQ(withEnd(1).find('|'), std::string::npos);
    EXPECT_THAT(withEnd(0), testing::EndsWith(" | 100,0 100,9"));
    EXPECT_EQ(table.parseGlyphData(bytesOf({0, 0, 0, 0, 2, 50, 100, 9, 100, 0})).at(0).size(), 11);
}

TEST_F(FontTableTest, LettersAreScaledAboutTheMiddleOfTheirCell)
{
    const QByteArray strokes = bytesOf({2, 0, 0, 75, 50, 1, 100, 0});
    writeFont(
        plugins.path(), fontBytes({{' ', bytesOf({0, 0})}, {0xFF, strokes}, {0x100, strokes}}));
    OpenTable table;
    const struct
    {
        ushort code;
        double advance;
        const char *polylines;
    } cases[] = {
        {0xFF, 2, "0,0 1,-2"},
        {0x100, 4, "1,0 2,-2"},
        {' ', 2, ""},
        {'?', 2, ""},
        {0x101, 4, ""},
    };
    for (const auto &row : cases) {
        double advance = -1;
        EXPECT_EQ(shown(table.charToPolylines(QChar(row.code), 4, &advance)), row.polylines);
        EXPECT_EQ(advance, row.advance) << row.code;
    }
    EXPECT_THAT(warnings.take(), IsEmpty());

    EXPECT_DOUBLE_EQ(FontTable::charHeight(10), 0.42336);
    EXPECT_DOUBLE_EQ(FontTable::charWidth(QChar(0xFF), 10), 0.21168);
    EXPECT_DOUBLE_EQ(FontTable::charWidth(QChar(0x100), 10), 0.42336);
    EXPECT_DOUBLE_EQ(FontTable::textLineWidth(QString::fromUtf8("a Ж"), 10), 0.84672);
    EXPECT_EQ(FontTable::textLineWidth("", 10), 0);
}

// The font that comes with the plug-in.
TEST(PenFont, EveryLetterStaysInItsCell)
{
    const KivApplication application(
        std::make_unique<ScriptedUserInterface>(), QDir(KIV_SOURCE_DIR));
    OpenTable table;
    ASSERT_NE(table.file, nullptr);
    const QString inside = QString::fromUtf8("ΑΩαωςΆώАЯаяЁёІіЇїҐ€");
    for (int code = 0x21; code < 0x500; ++code) {
        const QChar letter(code);
        double advance = 0;
        const auto polylines = table.charToPolylines(letter, 100, &advance);
        const bool isCovered = (code < 0x180 && letter.isPrint()) || inside.contains(letter);
        EXPECT_TRUE(!isCovered || letter.isSpace() || !polylines.isEmpty()) << code;
        QRectF box;
        for (const QListEx<QPointF> &polyline : polylines) {
            EXPECT_GT(polyline.size(), 1) << code;
            box |= QPolygonF(polyline.toVector()).boundingRect().adjusted(-1, -1, 1, 1);
        }
        EXPECT_TRUE(std::abs(box.center().x()) <= 1) << code;
        EXPECT_TRUE(box.width() <= advance && std::abs(box.top()) <= 52 && box.bottom() <= 52)
            << code << ' ' << box.top() << ' ' << box.bottom();
    }
}

} // namespace
} // namespace KivSystem
