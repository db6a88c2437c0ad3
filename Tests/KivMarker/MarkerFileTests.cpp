// Loading and saving of marker files: what a good file gives, and what each broken one is told.

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerFile.h"
#include "KivMarker/Polygon.h"

#include "MarkerRules.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ctime>

namespace KivSystem {
namespace {

QByteArray fullMarker()
{
    QFile file(QStringLiteral(KIV_TEST_DATA "/full.mar"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

QString faultOf(const QByteArray &bytes)
{
    try {
        MarkerFile::parse(bytes, QStringLiteral("m.mar"));
    } catch (const MarkerFileError &error) {
        return error.message();
    }
    return QStringLiteral("no fault");
}

TEST(MarkerFile, SavingWhatWasLoadedGivesTheSameBytes)
{
    // The file holds every key once and is laid out as the saver does it.
    const auto document = MarkerFile::parse(fullMarker(), QStringLiteral("full.mar"));
    EXPECT_EQ(MarkerFile::toBytes(*document).toStdString(), fullMarker().toStdString());
    EXPECT_EQ(brokenRule(*document->drawing()), QString());
}

TEST(MarkerFile, SamplesAreSavedAsTheyStand)
{
    const QDir samples(QStringLiteral(KIV_SOURCE_DIR "/Samples"));
    const QStringList names = samples.entryList({QStringLiteral("*.mar")});
    EXPECT_GE(names.size(), 2);
    for (const QString &name : names) {
        QFile file(samples.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto document = MarkerFile::load(file.fileName());
        EXPECT_EQ(brokenRule(*document->drawing()), QString());
        EXPECT_TRUE(MarkerFile::toBytes(*document) == file.readAll()) << name.toStdString();
    }
}

TEST(MarkerFile, EveryPartOfTheFileReachesTheDrawing)
{
    const auto document = MarkerFile::parse(fullMarker(), QStringLiteral("/some/full.tee.mar"));
    const CDbMarkerDrawing &drawing = *document->drawing();
    EXPECT_EQ(document->name(), QStringLiteral("full.tee"));
    EXPECT_EQ(drawing.summaryInfo().comments, QStringLiteral("first\r\nsecond\tline"));
    // A stamp in the hour that a change to summer time leaves out is kept as it stands.
    EXPECT_EQ(drawing.summaryInfo().dateStamp.toString(QStringLiteral("d/M/yyyy hh:mm")),
        QStringLiteral("29/3/2026 02:30"));
    short layer = 0;
    EXPECT_TRUE(drawing.isSetToSingleLayer(nullptr, &layer));
    EXPECT_EQ(layer, 2);

    const CDbFabricObject &fabric = *drawing.getFabric(0);
    EXPECT_EQ(fabric.fabricStatus, -9007199254740992LL);
    EXPECT_EQ(fabric.fabricType, FoldOnBottom);
    EXPECT_EQ(fabric.getGapInX(), -0.3);
    EXPECT_EQ(fabric.plaidInfo.sampleHorLines.size(), 2);
    EXPECT_EQ(fabric.findLayer(1)->texts.front()->textLines,
        QStringList({QStringLiteral("Lay"), QStringLiteral("1")}));

    const CDbPieceObject &front = *fabric.findPieceAccordingIndex(1, nullptr);
    EXPECT_EQ(front.getStyleNo(), 2);
    EXPECT_EQ(front.getPieceSize(2).sizeNumber, 38);
    EXPECT_EQ(front.getPieceSize(2).sizeRect.right(), 8);
    const CDbMarkerPointObject &userNotch = front.getPieceSize(2).shape.contour[3];
    EXPECT_EQ(userNotch.pointType, UserNotch);
    EXPECT_EQ(userNotch.notchWidth, 0.3F);
    EXPECT_EQ(front.getPieceSize(2).shape.internalPoints[0].punch()->punchCorner, -0.2F);
    EXPECT_EQ(front.getPieceSize(2).shape.internalPoints[1].ownPunch(), nullptr);
    EXPECT_EQ(front.getPieceSize(2).shape.internalPoints[1].punch()->punchPlus, 0.5F);

    const CDbPolygon &polygon = *fabric.layerFirstGrPolys(1)->firstPolygon;
    EXPECT_EQ(polygon.sizeNumber, 38);
    EXPECT_EQ(polygon.ballotNumber, 'A');
    EXPECT_EQ(fabric.layerFirstGrPolys(2)->firstPolygon->area(), 36);

    EXPECT_EQ(front.getTwoPieceCutDown(), TurnedPartner);
    EXPECT_TRUE(front.chartTransformation().mirrored);
    EXPECT_EQ(front.chartTransformation().scaleY, 0.97);
    const CDbGrPolysObject &block = *fabric.getPlaceGroupList(t_1_Based(1))->at(1);
    EXPECT_EQ(block.getLastContourBlockingFusion()->boundingRect().bottom(), -4.4);
    EXPECT_EQ(block.getLastContourBlockingFusion()->boundingRect().top(), 4);
    const CDbPolygon *partner = block.firstPolygon->cutDownPolygon;
    EXPECT_TRUE(partner != nullptr && CDbPolygon::isBlockingPoly(partner));
    EXPECT_EQ(partner->polygonRect.left(), 20);
    short index = 0;
    auto relation = CDbBlockingObject::NoRelationship;
    auto type = CDbBlockingObject::NotBlocked;
    block.getGrPolysIndexSlaveMasterOrAnotherAndItsType(&fabric, &index, &relation, &type, nullptr);
    EXPECT_TRUE(index == 1 && relation == CDbBlockingObject::SlaveOf);
    EXPECT_EQ(type, CDbBlockingObject::Fused);
    fabric.layerFirstGrPolys(1)->getGrPolysIndexSlaveMasterOrAnotherAndItsType(
        &fabric, &index, &relation, &type, nullptr);
    EXPECT_TRUE(index == 2 && relation == CDbBlockingObject::MasterOf);
    EXPECT_EQ(type, CDbBlockingObject::Tied);
    EXPECT_EQ(fabric.links().at(2).at(0).second.point, 2);
}

TEST(MarkerFile, TheDateStampReadsTheSameInEveryTimeZone)
{
    const QByteArray zone = qgetenv("TZ");
    for (const char *place : {"UTC", "Europe/Berlin", "America/New_York"}) {
        qputenv("TZ", place); // the clocks of Berlin leave out the hour of the stamp
        tzset();
        const auto document = MarkerFile::parse(fullMarker(), QStringLiteral("full.mar"));
        EXPECT_TRUE(MarkerFile::toBytes(*document) == fullMarker()) << place;
    }
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    tzset();
}

TEST(MarkerFile, CountsUpToTheirLimitAreSavedAndReadAgain)
{
    auto drawing = std::make_unique<CDbMarkerDrawing>();
    constexpr int kMost = 32767;
    for (int layer = 0; layer < kMost; ++layer) {
        drawing->addLayer(QString());
    }
    CDbFabricObject *fabric = drawing->addFabric(QStringLiteral("F"));
    for (int layer = 1; layer <= kMost; ++layer) {
        fabric->findLayer(static_cast<short>(layer))->width = layer;
    }
    std::vector<StyleSize> sizes;
    for (int number = 1; number <= kMost; ++number) {
        sizes.push_back({static_cast<short>(number), QString(), QString()});
    }
    CDbStyleObject *style = drawing->addStyle(QStringLiteral("S"), QString(), sizes);
    style->findStyleSizeObjectTable(1, nullptr)->setQuantity(kMost, kMost, 7);
    const DocumentMak document(std::move(drawing));

    const QByteArray bytes = MarkerFile::toBytes(document);
    const auto read = MarkerFile::parse(bytes, QStringLiteral("most.mar"));
    EXPECT_TRUE(MarkerFile::toBytes(*read) == bytes);
    EXPECT_EQ(read->drawing()->getFabric(0)->getFabricLayerWidth(kMost), kMost);
    EXPECT_EQ(read->drawing()->findSizesList(0, 1, nullptr)->garmentsInLayer(kMost), 7);
    EXPECT_FALSE(read->drawing()->getLayerObjectTable().isPlacementInTheFabric(
        read->drawing()->getFabric(0), nullptr));
}

TEST(MarkerFile, LoadingNamesTheFileAndSavingKeepsTheOldOneWhenItFails)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.b.mar"));
    const auto document = MarkerFile::parse(fullMarker(), QStringLiteral("x.mar"));
    MarkerFile::save(*document, path);
    const auto loaded = MarkerFile::load(path);
    EXPECT_EQ(loaded->drawing()->filePath, path);
    EXPECT_EQ(loaded->name(), QStringLiteral("a.b"));

    EXPECT_THROW(MarkerFile::save(*document, folder.filePath(QStringLiteral("no/such.mar"))),
        MarkerFileError);
    EXPECT_THROW(MarkerFile::save(DocumentMak(nullptr), path), MarkerFileError);
    EXPECT_EQ(QFileInfo(path).size(), fullMarker().size());
    try {
        MarkerFile::load(folder.path());
        FAIL() << "a directory was loaded";
    } catch (const MarkerFileError &error) {
        EXPECT_EQ(error.message(),
            folder.path() +
                QStringLiteral(": $: this is not a regular file, expected a marker file"));
    }
    try {
        MarkerFile::load(QStringLiteral("missing.mar"));
        FAIL() << "a missing file was loaded";
    } catch (const MarkerFileError &error) {
        EXPECT_EQ(error.message(),
            QStringLiteral("missing.mar: $: cannot be opened (No such file or directory), expected "
                           "a marker file"));
    }
}

struct Fault
{
    const char *good; // the first such text of the good file ...
    const char *bad;  // ... is replaced by this
    const char *message;
};

void PrintTo(const Fault &fault, std::ostream *out)
{
    *out << fault.bad;
}

class BrokenFile : public testing::TestWithParam<Fault>
{};

TEST_P(BrokenFile, IsRefusedWithItsPlaceAndWhatIsExpected)
{
    QByteArray bytes = fullMarker();
    const int place = bytes.indexOf(GetParam().good);
    ASSERT_GE(place, 0) << GetParam().good;
    bytes.replace(place, static_cast<int>(qstrlen(GetParam().good)), GetParam().bad);
    EXPECT_EQ(faultOf(bytes).toStdString(), std::string("m.mar: ") + GetParam().message);
}

const Fault kFaults[] = {
    // The document.
    {"kiv-marker", "other", "$.format: found the text \"other\", expected \"kiv-marker\""},
    {"\"version\": 1", "\"version\": 2", "$.version: found the number 2, expected the version 1"},
    {"\"version\": 1,", "", "$: the key \"version\" is missing, expected it to be there"},
    {"\"optimised\": true", "\"optimised\": 1",
        "$.optimised: found the number 1, expected true or false"},
    {"\"optimised\"", "\"optimized\"",
        "$: found the unknown key \"optimized\", expected one of format, version, summary, "
        "currentFabric, singleLayer, optimised, layers, fabrics, styles"},
    {"\"currentFabric\": 2", "\"currentFabric\": 3",
        "$.currentFabric: found the number 3, expected a whole number from 1 to 2"},
    {"\"singleLayer\": 2", "\"singleLayer\": 1.5",
        "$.singleLayer: found the number 1.5, expected a whole number from 0 to 3"},
    {"2026-03-29T02:30:00", "2026-02-30T02:30:00",
        "$.summary.dateStamp: found the text \"2026-02-30T02:30:00\", expected a date and time "
        "such "
        "as \"2026-03-14T09:30:00\""},
    {"tee, ", "tee\\u0007",
        "$.summary.keywords: found the control character U+0007 in a text, "
        "expected no control characters"},
    {"second", "\\ud800",
        "$.summary.comments: found half of a surrogate pair in a text, expected "
        "whole characters"},
    {"{\"name\": \"Upper\", \"rank\": 1}", "[]", "$.layers[1]: found an array, expected an object"},
    // Keys that stand twice: in the document, and deep down behind an escape.
    {"\"version\": 1", "\"version\": 1, \"version\": 1",
        "$: the key \"version\" stands twice, expected each key once"},
    {"\"notchWidth\": 0.3", "\"notchWidth\": 0.3, \"notch\\u0057idth\": 0.4",
        "$.fabrics[0].pieces[0].sizes[1].contour[3]: the key \"notchWidth\" stands twice, expected "
        "each key once"},
    // Fabrics and layers.
    {"\"status\": -9007199254740992", "\"status\": 0.5",
        "$.fabrics[0].status: found the number 0.5, expected a whole number"},
    {"foldBottom", "foldbottom",
        "$.fabrics[0].type: found the text \"foldbottom\", expected one of \"plain\", "
        "\"foldBottom\", \"foldTop\", \"tubular\""},
    {"\"gapY\": 0.2", "\"gapY\": -0.2",
        "$.fabrics[0].gapY: found the number -0.2, expected a number from 0 to 100000"},
    {"\"yRepetition\": 8", "\"yRepetition\": 0",
        "$.fabrics[0].plaid: yRepetition is 0, expected at least 0.01 for an active plaid with "
        "such "
        "lines"},
    {"\"yRepetition\": 8", "\"yRepetition\": 0.015",
        "$.fabrics[0].plaid: yRepetition is 0.015 for 2 lines, expected at most 100 lines in a "
        "centimetre"},
    {"\"position\": 4", "\"position\": 1e400",
        "$ (line 33, column 29): illegal number, expected JSON text"},
    {"\"position\": 4", "\"position\": 1e300",
        "$.fabrics[0].plaid.horizontalLines[1].position: found the number 1e+300, expected a "
        "number "
        "from -100000 to 100000"},
    {"\"width\": 90.5", "\"width\": 0",
        "$.fabrics[0].layers[0].width: found the number 0, expected a width above 0"},
    {"        {\"width\": 40},\n", "", "$.fabrics[1].layers: found an array of 2, expected 3"},
    {"[\"Lay\", \"1\"]", "[]",
        "$.fabrics[0].layers[0].texts[0].lines: found an array of 0, expected 1 to 32767"},
    {"\"align\": \"center\"", "\"align\": \"middle\"",
        "$.fabrics[0].layers[0].texts[0].align: found the text \"middle\", expected one of "
        "\"left\", \"center\", \"right\""},
    // Groups and polygons.
    {"\"place\": \"standby\"", "\"place\": 2",
        "$.fabrics[0].layers[0].groups[1].place: found the number 2, expected one of \"marker\", "
        "\"standby\""},
    {"\"piece\": 1", "\"piece\": 3",
        "$.fabrics[0].layers[0].groups[0].polygons[0].piece: found the number 3, expected a whole "
        "number from 1 to 2"},
    {"\"size\": 2", "\"size\": 0",
        "$.fabrics[0].layers[0].groups[0].polygons[0].size: found the number 0, expected a whole "
        "number from 1 to 2"},
    {"\"rotation\": 90", "\"rotation\": \"90\"",
        "$.fabrics[0].layers[0].groups[0].polygons[0].rotation: found the text \"90\", expected a "
        "number from -360 to 360"},
    {"\"ballot\": \"A\"", "\"ballot\": \"AB\"",
        "$.fabrics[0].layers[0].groups[0].polygons[0].ballot: found the text \"AB\", expected one "
        "character up to U+00FF"},
    {"\"side\": \"right\", ", "",
        "$.fabrics[0].layers[0].groups[0].polygons[1]: more of piece 1, size 2, left lie in layer "
        "1 "
        "than are ordered, expected at most 1"},
    {"\"shape\": {", "\"form\": {",
        "$.fabrics[0].layers[1].groups[0].polygons[0]: found the unknown key \"form\", expected "
        "one "
        "of piece, size, side, x, y, rotation, mirrored, scaleX, scaleY, ballot, "
        "pairedBallot, folded, color, spacing, shape, cutDown, texts, links, images"},
    {"\"master\": 1", "\"master\": 2",
        "$.fabrics[0].layers[0].groups[1].master: found the number 2, expected the number of "
        "another group that has no master itself"},
    {"\"scaleX\": 1.05", "\"scaleX\": 0",
        "$.fabrics[0].layers[0].groups[1].polygons[0].scaleX: found the number 0, expected a "
        "number from 0.1 to 10"},
    {"{\"piece\": 1, \"size\": 1}\n", "{\"piece\": 1, \"size\": 1, \"y\": 0.001}\n",
        "$.fabrics[0].layers[0].groups[1]: the polygons of a blocked group do not join, expected "
        "two or more that touch"},
    {"\"point\": 4", "\"point\": 5",
        "$.fabrics[0].links[0].first.point: found the number 5, expected a whole number from 1 to "
        "4"},
    {"\"piece\": 1, \"point\": 2", "\"piece\": 2, \"point\": 2",
        "$.fabrics[0].links[0]: the linked pieces are of different styles, expected two pieces of "
        "one style"},
    {"\"FRONT\"", "\"FRONT $1\"",
        "$.fabrics[0].pieces[0].name: found the text \"FRONT $1\", expected a name without the "
        "character $"},
    {"\"cutDown\": \"turned\"", "\"cutDown\": 1",
        "$.fabrics[0].pieces[0].cutDown: found the number 1, expected one of \"none\", "
        "\"mirrored\", \"turned\""},
    // Pieces and their points.
    {"\"style\": 2", "\"style\": 3",
        "$.fabrics[0].pieces[0].style: found the number 3, expected a whole number from 1 to 2"},
    {"\"number\": 40", "\"number\": 41",
        "$.fabrics[0].pieces[0].sizes[0]: the style has no size with the number 41, expected the "
        "number of one of its sizes"},
    {"\"number\": 40", "\"number\": 38",
        "$.fabrics[0].pieces[0].sizes[1]: the size number 38 stands twice, expected each size once "
        "in a piece"},
    {"[10, 0]", "[10]",
        "$.fabrics[0].pieces[0].sizes[0].contour[1]: found an array of 1, expected 2"},
    {"[10, 0]", "\"10, 0\"",
        "$.fabrics[0].pieces[0].sizes[0].contour[1]: found the text \"10, 0\", expected a point: "
        "[x, y] or an object"},
    {"[10, 0]", "[10, null]",
        "$.fabrics[0].pieces[0].sizes[0].contour[1][1]: found null, expected a number from -100000 "
        "to 100000"},
    {"[0, 4]", "[0, 0]",
        "$.fabrics[0].pieces[0].sizes[0].contour: the last point repeats the first, expected a "
        "contour that closes by itself"},
    {"[3, 0],\n                [0, 2]", "[3, 3],\n                [2, 2]",
        "$.fabrics[0].pieces[1].sizes[0].contour: the contour encloses nothing, expected an area"},
    {"\"notch\": [0, 0.5], ", "",
        "$.fabrics[0].pieces[0].sizes[1].contour[1]: the key \"notch\" is missing, expected it to "
        "be there"},
    {"\"type\": \"curve\"", "\"notch\": [1, 1]",
        "$.fabrics[0].pieces[0].sizes[0].contour[2].notch: found a notch vector on a point that is "
        "no notch, expected it on notches only"},
    {"\"type\": \"punch\"", "\"type\": \"curve\"",
        "$.fabrics[0].pieces[0].sizes[1].internalPoints[0].punch: found a punch shape on a point "
        "that is no punch, expected it on punches only"},
    {"\"kind\": \"cut\"", "\"kind\": \"\"",
        "$.fabrics[0].pieces[0].sizes[1].internalLines[1].kind: found the text \"\", expected one "
        "of \"cut\", \"draw\", \"grain\""},
    {"\"layer\": 2, \"size\": 1, \"right\": 4", "\"layer\": 1, \"size\": 1, \"right\": 4",
        "$.fabrics[0].pieces[0].chart[2]: layer 1 and size 1 stand twice, expected one entry for a "
        "layer and size"},
    {"\"layer\": 2, \"size\": 1, \"left\": 1", "\"layer\": 2, \"size\": 1, \"right\": 1",
        "$.fabrics[0].pieces[1].chart[0].right: found the number 1, expected a whole number from 0 "
        "to 0"},
    // Styles.
    {"\"number\": 38, \"name\": \"S\"", "\"number\": 40, \"name\": \"S\"",
        "$.styles[1].sizes[1]: the size number 40 stands twice, expected each number once in a "
        "style"},
    {"[1, 2]", "[1, 2, 3]", "$.styles[1].garments[0].quantities: found an array of 3, expected 2"},
    {"[1, 2]", "[1, 32768]",
        "$.styles[1].garments[0].quantities[1]: found the number 32768, expected a whole number "
        "from 0 to 32767"},
    // Ranks and unused layers.
    {"\"rank\": 3", "\"rank\": 4",
        "$.layers[0].rank: found the number 4, expected a whole number from 1 to 3"},
    {"\"rank\": 3", "\"rank\": 2",
        "$.layers[2].rank: the rank 2 stands twice, expected each rank once"},
    {", \"rank\": 3", "",
        "$.layers[1].rank: the first layer has no rank, expected a rank for all layers or for "
        "none"},
    {", \"rank\": 1", "", "$.layers[1]: the key \"rank\" is missing, expected it to be there"},
    {"\"rank\": 1", "\"rank\": 1, \"unused\": true",
        "$.fabrics[0].layers[1]: something lies in an unused layer, expected no groups there"},
    // Seams and spacings.
    {"[1, 1],\n                [9, 1]", "[2, 3],\n                [9, 3]",
        "$.fabrics[0].pieces[0].sizes[0].seam: the contour encloses nothing, expected an area"},
    {"\"spacing\": 0.5", "\"spacing\": -0.5",
        "$.fabrics[0].layers[1].groups[0].polygons[0].spacing: found the number -0.5, expected a "
        "number from 0 to 100"},
    // Links.
    {"{\"contour\": 3}, \"line\": \"dashed\"", "{\"contour\": 4}, \"line\": \"dashed\"",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[1].to.contour: found the number 4, "
        "expected a whole number from 1 to 3"},
    {"{\"contour\": 3}, \"line\"", "{\"contour\": 3, \"internal\": 1}, \"line\"",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[1].to: found 2 of the keys, expected "
        "either contour or internal"},
    {"{\"x\": 3, \"y\": 1, \"match\": true}", "",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[0].to.internal: the polygon has no "
        "internal points, expected a link to its contour"},
    {"{\"contour\": 3}, \"line\"", "{\"internal\": 1}, \"line\"",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[1]: both ends are the same point, "
        "expected two points"},
    {"\"kind\": \"sewing\", ", "",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[3]: the tree links close a ring, "
        "expected trees"},
    {"[2, 0.5, 0.25]", "[2, 0.5]",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[0].pattern: found an array of 2, "
        "expected 3"},
    {"[2, 0.5, 0.25]", "[2, 0, 0.25]",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[0].pattern[1]: found the number 0, "
        "expected a length above 0"},
    {"\"line\": \"dashed\", ", "",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[1].pattern: found a pattern on a solid "
        "line, expected it on dashed and chain-dotted lines only"},
    {"\"kind\": \"sewing\"", "\"kind\": \"sewing\", \"shift\": 1",
        "$.fabrics[0].layers[1].groups[0].polygons[0].links[3]: found the unknown key \"shift\", "
        "expected one of kind, from, to"},
    // Images.
    {"\"height\": 2", "\"height\": 0",
        "$.fabrics[0].layers[1].groups[0].polygons[0].images[0].height: found the number 0, "
        "expected a height above 0"},
    {"\"rotation\": 15", "\"rotation\": 361",
        "$.fabrics[0].layers[1].groups[0].polygons[0].images[0].rotation: found the number 361, "
        "expected a number from -360 to 360"},
    // Texts.
    {"\"section\": \"header\"", "\"section\": 2",
        "$.fabrics[0].layers[0].texts[1].section: found the number 2, expected one of \"marker\", "
        "\"header\", \"margin\""},
    {"[7.5, 1.25]", "[7.5, -1]",
        "$.fabrics[0].layers[0].texts[1].box[1]: found the number -1, expected a number from 0 to "
        "100000"},
    {"[4, 2],\n                ", "",
        "$.fabrics[0].layers[0].texts[1].path: found an array of 2, expected 3 to 32767"},
    {"[4, 2]", "{\"x\": 4, \"y\": 2}",
        "$.fabrics[0].layers[0].texts[1].path[1]: found an object, expected an array"},
    {"\"y\": -2,", "\"y\": -2, \"pathOrigin\": [0, 0],",
        "$.fabrics[0].layers[0].texts[0].pathOrigin: found the origin of a path that is not there, "
        "expected it with a path only"},
    // A period that a walk along the stripes would never end with.
    {"\"xRepetition\": 10", "\"xRepetition\": -10",
        "$.fabrics[0].plaid.xRepetition: found the number -10, expected a number from 0 to "
        "100000"},
    // Text that is not JSON.
    {"\"layers\": [", "\"layers\": [,", "$ (line 8, column 15): illegal value, expected JSON text"},
    {"90.5", "NaN", "$ (line 41, column 20): illegal number, expected JSON text"},
    {"\xc3\xa9t", "\xc3t", "$ (line 4, column 35): invalid UTF8 string, expected JSON text"},
};

INSTANTIATE_TEST_SUITE_P(EachFaultOnce, BrokenFile, testing::ValuesIn(kFaults));

TEST(MarkerFile, TextsThatAreNoObjectAtAllAreRefused)
{
    EXPECT_EQ(faultOf("[]"), QStringLiteral("m.mar: $: found an array, expected an object"));
    EXPECT_EQ(faultOf("{}"),
        QStringLiteral("m.mar: $: the key \"format\" is missing, expected it to be there"));
    for (const QByteArray &text :
        {QByteArray(), QByteArray(" "), QByteArray("null"), QByteArray("\0", 1)}) {
        EXPECT_TRUE(faultOf(text).startsWith(QLatin1String("m.mar: $ (line 1, column ")))
            << faultOf(text).toStdString();
    }
    EXPECT_EQ(faultOf(QByteArray(100000, '[')),
        QStringLiteral("m.mar: $ (line 1, column 1026): too deeply nested document, expected JSON "
                       "text"));
}

} // namespace
} // namespace KivSystem
