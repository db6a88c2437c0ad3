// The value of each field, separators, quoting, and what ends a text export.

#include "Support.h"

#include "KivCore/Locale.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryFile>
#include <QTextCodec>

#include <functional>

namespace KivSystem {
namespace {

constexpr int kWrap = 0x10000; // a list's numbers are read as 16 bits when a line is written

MarkerBuilder fieldMarker()
{
    MarkerBuilder builder;
    builder.layer("Lower").layer("Upper").fabric("Denim", {150, 80});
    builder.style("Shirt", {"S", "M"}).garments(1, 1, 1, {2, 1});
    builder.piece(1, 1, "Back", 40, 60).order(1, 1, 1, 1, 5);
    builder.place(1, 1, 1, 1, 0, 0).place(1, 1, 1, 1, 60.5, 0);
    builder.place(1, 1, 1, 1, 300, 0, PlacedInStandBy);
    builder.fabricAt(1).setGaps(0.5, 0.25);
    SummaryInfo summary;
    summary.comments = "one\r\ntwo\nthree\rfour\n\r";
    summary.keywords = "kw";
    summary.dateStamp = QDateTime(QDate(2024, 3, 7), QTime(23, 59), Qt::UTC);
    builder.drawing().setSummaryInfo(summary);
    return builder;
}

std::string firstLine(const std::string &text)
{
    return text.substr(0, text.find('\n'));
}

TEST(TextField, HasTheValueOfTheLayerAndFabricOfItsLine)
{
    const struct
    {
        int field;
        const char *expected;
    } rows[] = {
        {0, "Untitled.mar"},
        {1, ""},
        {2, "one\x0Btwothree\x0B"
            "four\x0B"},
        {3, "kw"},
        {4, ""},
        {5, ""},
        {6, "7/3/2024"},
        {7, "Shirt"},
        {8, "Denim"},
        {9, "Plain"},
        {10, "No"},
        {11, "0.50 0.25"},
        {12, "150.00"},
        {13, "Lower"},
        {14, "100.50"},
        {15, "33.50"}, // three garments
        {16, "31.84"}, // 4800 of 150 x 100.5, in percent
        {17, "2"},     // stand-by does not count
        {18, "3"},     // but is still to be placed
        {19, "S\x1DM"},
        {20, "\x1D"}, // no special texts
        {21, "2\x1D"
             "1"},
    };
    const auto document = fieldMarker().take();
    const std::string all = firstLine(exportedText(*document, TextIndexList::loadDefault()));
    std::string joined;
    for (const auto &row : rows) {
        // The layer's name brings the walk down to a layer; the style's name to a style.
        const std::string line = firstLine(exportedText(*document, {row.field, 7, 8, 13}));
        EXPECT_EQ(line, std::string(row.expected) + "\tShirt\tDenim\tLower") << row.field;
        joined += (row.field == 0 ? "" : "\t") + std::string(row.expected);
    }
    EXPECT_EQ(all, joined);
}

TEST(TextField, FollowsTheFabric)
{
    const struct
    {
        int type;
        bool oneWay;
        double gapX, gapY;
        const char *expected;
    } rows[] = {
        {PlainFabric, true, 0, 0, "Plain\tYes\t0.00\tNone"},
        {FoldOnBottom, false, 1, 1, "Fold on Bottom\tNo\t1.00\tNone"},
        {FoldOnTop, false, -1, 1, "Fold on Top\tNo\t-1.00\tNone"},
        {TubularFabric, false, -1, 0.5, "Tubular\tNo\t-1.00 0.50\tNone"},
        {4, false, 1, 2, "Plain\tNo\t1.00\tNone"},
        {-1, false, 2, 1, "Plain\tNo\t2.00 1.00\tNone"},
    };
    for (const auto &row : rows) {
        MarkerBuilder builder = fieldMarker();
        CDbFabricObject &fabric = builder.fabricAt(1);
        fabric.fabricType = row.type;
        fabric.oneWay = row.oneWay;
        fabric.setGaps(row.gapX, row.gapY);
        EXPECT_EQ(exportedText(*builder.take(), {9, 10, 11, 12}), row.expected + std::string("\n"));
    }
}

TEST(TextField, EstimateAndEfficiencyOfAnEmptyLayerAreZero)
{
    const std::string text = exportedText(*fieldMarker().take(), {13, 14, 15, 16});
    EXPECT_EQ(text.substr(text.find('\n') + 1), "Upper\t0.00\t0.00\t0.00\n");
}

TEST(TextField, NumbersFollowTheLocaleAndTheRulers)
{
    const auto restore = qScopeGuard([] {
        QLocale::setDefault(QLocale::c());
        KivLocale::setApplicationConventions({});
    });
    QLocale::setDefault(QLocale(QLocale::German));
    KivConventions conventions;
    conventions.rulerX = LengthUnit::Millimetre; // lengths, not widths or spacings
    KivLocale::setApplicationConventions(conventions);
    EXPECT_EQ(firstLine(exportedText(*fieldMarker().take(), {11, 12, 14, 15, 16, 17, 6})),
        "0,50 0,25\t150,00\t1005,0\t335,0\t31,84\t2\t7/3/2024");
}

TEST(TextField, DatesAreThoseOfTheFileAndAMissingFileRepeatsTheFieldBefore)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    ASSERT_TRUE(file.setFileTime(
        QDateTime(QDate(2001, 2, 3), QTime(12, 0)), QFileDevice::FileModificationTime));
    const QFileInfo info(file.fileName());
    const QDateTime birth =
        info.birthTime().isNull() ? info.metadataChangeTime() : info.birthTime();
    const QString directory = QDir::tempPath();
    const struct
    {
        QString path;
        TextIndexList list;
        QString expected;
    } rows[] = {
        {file.fileName(), {3, 4, 5}, "kw\t" + birth.date().toString("d/M/yyyy") + "\t3/2/2001"},
        {directory + "/no/such/a.b.mar", {0, 1}, "a.b.mar\t" + directory + "/no/such"},
        {directory + "/no/such.mar", {3, 4, 5}, "kw\tkw\tkw"},
        {directory + "/no/such.mar", {5, 3}, "\tkw"},
        {"", {3, 4, 3, 5, 1}, "kw\t\tkw\t\t"},
    };
    for (const auto &row : rows) {
        MarkerBuilder builder = fieldMarker();
        builder.drawing().filePath = row.path;
        EXPECT_EQ(firstLine(exportedText(*builder.take(), row.list)), row.expected.toStdString());
    }
}

TEST(TextField, ThatSetsNothingIsACopyOfItsLeftNeighbour)
{
    MarkerBuilder builder = fieldMarker();
    SummaryInfo summary;
    summary.keywords = "a;b";
    builder.drawing().setSummaryInfo(summary); // never stamped
    auto document = builder.take();
    EXPECT_EQ(exportedText(*document, {6, 3, 6}), "\ta;b\ta;b\n");
    EXPECT_EQ(exportedText(*document, {22, 3, 22, -1, 1000}), "\ta;b\ta;b\ta;b\ta;b\n");
    EXPECT_EQ(exportedText(*document, {0, kWrap + 3}), "Untitled.mar\ta;b\n");
    TextProcessorOptions options;
    options.setFiledSeperator(";");
    EXPECT_EQ(exportedText(*document, {3, 22}, options), "\"a;b\";\"a;b\"\n");

    summary.dateStamp = QDateTime();
    document->drawing()->setSummaryInfo(summary);
    EXPECT_EQ(exportedText(*document, {3, 6}), "a;b\ta;b\n");
}

TEST(TextQuoting, FollowsTheSeparator)
{
    const struct
    {
        QByteArray separator;
        const char *value;
        const char *expected;
    } rows[] = {
        {";", "ab", "ab"},
        {";", "a;b", "\"a;b\""},
        {";", "a\"b", "\"a\"\"b\""},
        {";", "\";\"", "\"\"\";\"\"\""},
        {";", "a\tb", "a\tb"},
        {" X ", "a x b", "\"a x b\""}, // case does not count
        {" X ", "axb", "axb"},
        {"\t", "a\"\tb", "a\"\tb"}, // beside tabs nothing is quoted
        {"\t\t", "a\"b", "\"a\"\"b\""},
        {QByteArray("\t\0;", 3), "a\";b", "a\";b"}, // compared up to the zero byte
        {QByteArray(";\0,", 3), "a;b", "\"a;b\""},
        {QByteArray(";\0,", 3), "a,b", "a,b"},
        {"", "ab", "\"ab\""}, // every text holds the empty one
        {"", "", "\"\""},
        {";", "\xF0\x9F\x92\xA7", "\xF0\x9F\x92\xA7"}, // beyond the first 65536 characters
        {"\xC2\xA7", "a\xC2\xA7", "\"a\xC2\xA7\""},
    };
    for (const auto &row : rows) {
        MarkerBuilder builder;
        SummaryInfo summary;
        summary.keywords = QString::fromUtf8(row.value);
        builder.drawing().setSummaryInfo(summary);
        TextProcessorOptions options;
        options.setFiledSeperator(row.separator);
        const QByteArray expected = row.expected + row.separator + row.expected + '\n';
        EXPECT_EQ(exportedText(*builder.take(), {3, 3}, options), expected.toStdString());
    }
}

TEST(TextSeparator, ReachesTheFileByteForByte)
{
    const QTextCodec *local = QTextCodec::codecForLocale();
    const auto restore =
        qScopeGuard([local] { QTextCodec::setCodecForLocale(const_cast<QTextCodec *>(local)); });
    const auto document = fieldMarker().take();
    for (const char *codec : {"UTF-8", "ISO-8859-1", "Shift_JIS"}) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(codec));
        for (const QByteArray &bytes :
            {QByteArray("\xA7"), QByteArray("\xC2\xA7"), QByteArray("|\0|", 3),
                QByteArray("<\xFF\xFE>\0", 5), QByteArray("\xED\xB3\xBF"), QByteArray("\\")}) {
            TextProcessorOptions fields;
            fields.setFiledSeperator(bytes);
            TextProcessorOptions entries;
            entries.setrepeatSeperator(bytes);
            EXPECT_EQ(firstLine(exportedText(*document, {8, 7, 13}, fields)),
                ("Denim" + bytes + "Shirt" + bytes + "Lower").toStdString())
                << codec;
            EXPECT_EQ(firstLine(exportedText(*document, {19, 8}, entries)),
                ("S" + bytes + "M\tDenim").toStdString())
                << codec;
        }
    }
}

TEST(TextExport, StopsAtABrokenMarkerWithAnAssertionError)
{
    CDbLayerObject spareLayer;
    CDbFabricObject spareFabric("Spare", 2);
    spareFabric.addPiece(std::make_unique<CDbPieceObject>("Back", short(1)));
    const auto asIs = [](CDbMarkerDrawing &) {};
    const auto nullStyle = [](CDbMarkerDrawing &drawing) { drawing.stylesList.push_back(nullptr); };
    const auto nullFabric = [](CDbMarkerDrawing &drawing) {
        drawing.getFabricsTable().append(nullptr);
    };
    const struct
    {
        std::function<void(CDbMarkerDrawing &)> damage;
        TextIndexList list;
        bool oneLine;
        const char *written; // before the failure; it stays
    } rows[] = {
        {nullStyle, {7}, false, "Shirt\n"},
        {nullFabric, {8}, false, "Denim\n"},
        {nullFabric, {21}, false, "2\x1D\x31\n\n"},
        // A layer that the fabric lacks; a fabric that the style lacks.
        {[&](CDbMarkerDrawing &drawing) { drawing.getLayerObjectTable().append(&spareLayer); },
            {13, 17}, false, "Lower\t2\nUpper\t0\n\t"},
        {[&](CDbMarkerDrawing &drawing) { drawing.getFabricsTable().append(&spareFabric); }, {21},
            true, "2\n1\n"},
        // Fields that the walk does not see, since it takes the numbers as they are.
        {asIs, {3, kWrap + 7}, false, "kw\t"},
        {asIs, {3, kWrap + 8}, false, "kw\t"},
        {asIs, {3, kWrap + 13}, false, "kw\t"},
        {asIs, {3, kWrap + 14}, false, "kw\t"},
        {asIs, {3, kWrap + 19}, false, "kw\t"},
    };
    for (const auto &row : rows) {
        MarkerBuilder builder = fieldMarker();
        row.damage(builder.drawing());
        TextProcessorOptions options;
        options.setOneLine(row.oneLine);
        int failures = 0;
        const auto failed = [&failures](const AssertionError &error) {
            ++failures;
            EXPECT_STREQ(error.what(), "Invalid Operation");
            expectThrowSite(error, "TextProcessor.cpp");
        };
        EXPECT_EQ(exportedText(*builder.take(), row.list, options, failed), row.written);
        EXPECT_EQ(failures, 1) << row.written;
    }

    int failures = 0;
    EXPECT_EQ(exportedText(DocumentMak(nullptr), {0}, {},
                  [&failures](const AssertionError &) { ++failures; }),
        "");
    EXPECT_EQ(failures, 1);
}

} // namespace
} // namespace KivSystem
