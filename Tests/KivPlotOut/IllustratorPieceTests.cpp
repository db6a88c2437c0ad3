// One placed piece of an Illustrator file. Drawings are in hundredths of a centimetre.

#include "Failures.h"
#include "IllustratorPiece.h"
#include "IllustratorPieceInfo.h"
#include "IllustratorSupport.h"
#include "MarkerBuilder.h"

#include "KivMarker/Image.h"
#include "KivMarker/ShareGlobales.h"
#include "KivMarker/Text.h"

#include <QColor>

namespace KivSystem {
namespace KivIllustrator {
namespace {

class IllustratorPiece : public Illustrator
{
protected:
    /// The fabric's piece 20 by 4 cm, placed at the origin in the size 42.
    IllustratorPiece()
    {
        builder.layer("Layer").fabric("Denim", {5}).style("Shirt", {"42/long"});
        builder.piece(1, 1, "Back", 20, 4).place(1, 1, 1, 1, 0, 0);
        plot.pieceTrait = plot.pieceName = plot.styleName = plot.ballot = plot.taille = false;
        polygon = fabric().layerFirstGrPolys(1)->firstPolygon;
        piece = fabric().findPieceAccordingIndex(1, nullptr);
    }

    CDbFabricObject &fabric() { return builder.fabricAt(1); }

    std::string drawing(double x0 = 0)
    {
        CDbMarkerOptions::mDefaultOptions.setValues(plot);
        return drawingOf([&](QTextStream &out) {
            ILLMK_Polygone(out, &builder.drawing(), &fabric(), polygon, x0, 0, 0);
        });
    }
    /// The lines of the information, joined by "|".
    std::string information(short relation = 0, short index = 0)
    {
        CDbMarkerOptions::mDefaultOptions.setValues(plot);
        QStringList texts;
        for (const QString &line : linesOf([&](QTextStream &out) {
                 ILLMK_Piece_Info_Mk(
                     out, &builder.drawing(), &fabric(), polygon, 0, relation, index);
             })) {
            if (line.endsWith(")t")) {
                texts << line.section('(', 1).chopped(2);
            }
        }
        return texts.join('|').toStdString();
    }

    MarkerPlotOptions plot;
    MarkerBuilder builder;
    CDbPolygon *polygon;
    CDbPieceObject *piece;
};

TEST_F(IllustratorPiece, ColoursComeEachTimeAndTheTableWrapsAround)
{
    const auto &table = CDbMarkerShareGlobales::instance()->getColorTable();
    for (const int index : {0, 1, 8, 9}) {
        polygon->colorIndex = static_cast<short>(index);
        const QColor colour =
            index == 0 ? QColor(0, 0, 0) : table[static_cast<std::size_t>(index - 1) % 8];
        const auto words = [](const QColor &of) {
            return drawingOf([&](QTextStream &out) { ILLUST_Set_RGBColor(out, of); }) + ' ';
        };
        const std::string black = words(QColor(0, 0, 0));
        const std::string drawn = drawing();
        EXPECT_EQ(drawn.find(words(colour) + "0,0m 2000,0L 2000,400L 0,400L s u U u " + black), 0U);
        const std::string end = words(colour) + black + "u U U";
        EXPECT_EQ(drawn.substr(drawn.size() - end.size()), end) << index;
    }
}

// Each contour is told apart by its left end, 1 for the first of the list.
TEST_F(IllustratorPiece, TheCutContourAndTheSeamAreDrawnAndNotTheSpacing)
{
    const std::pair<std::vector<int>, const char *> cases[] = {{{}, ""}, {{3}, "1"}, {{1, 3}, "12"},
        {{2, 1, 3}, "23"}, {{3, 2}, "1"}, {{1, 3, 2}, "12"}, {{3, 1}, "21"}, {{3, 2, 1}, "31"},
        {{2, 3}, "2"}, {{2}, ""}, {{1}, "1"}};
    for (const auto &[kinds, expected] : cases) {
        std::vector<CDbVectorsObjectTable> tables;
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            tables.push_back({{static_cast<double>(i + 1), 0}, {9, 9}});
        }
        polygon->contourKinds = kinds;
        polygon->contourList.clear();
        for (CDbVectorsObjectTable &table : tables) {
            polygon->contourList.push_back(&table);
        }
        std::string drawn;
        for (const QString &word : QString::fromStdString(drawing()).split(' ')) {
            if (word.endsWith("00,0m")) {
                drawn += word.toStdString().front();
            }
        }
        EXPECT_EQ(drawn, expected) << testing::PrintToString(kinds);
    }
    CDbVectorsObjectTable point{{1, 2}};
    polygon->contourKinds = {CutContour};
    polygon->contourList = {&point};
    EXPECT_EQ(drawing().find("100,200m"), std::string::npos);
}

CDbMarkerPointObject notch(double x, MarkerPointType type)
{
    CDbMarkerPointObject point(x, 0, type);
    point.notchDy = 1;
    return point;
}

std::string contourDrawing(const CDbVectorsObjectTable &table, double x0)
{
    return drawingOf([&](QTextStream &out) { ILLMK_L_Vect(out, &table, x0); });
}

TEST_F(IllustratorPiece, AContoursSymbolsMoveWithItsLayerButTheUsersNotches)
{
    options.noNotchCrossBar = true;
    CDbMarkerPointObject punch(5, 0, Punch);
    PunchFeature feature;
    feature.punchPlus = 1;
    punch.setPunch(feature);
    CDbMarkerPointObject match(6, 0);
    match.matchPoint = true;
    CDbVectorsObjectTable table{notch(0, SimpleNotch), notch(1, SimpleNotch), notch(2, DoubleNotch),
        notch(3, VNotch), notch(4, UserNotch), punch, match, notch(7, MarkerPointType(7))};
    EXPECT_EQ(contourDrawing(table, 10),
        "1000,0m 1100,0L 1200,0L 1300,0L 1400,0L 1500,0L 1600,0L 1700,0L s u "
        "u 1100,0m 1100,100L S U "
        "u 1250,0m 1250,100L S 1150,0m 1150,100L S U "
        "u 1350,0m 1300,100L 1250,0L S U "
        "u 400,0m 400,100L S U "
        "u 1450,0m 1550,0L S 1500,-50m 1500,50L S U "
        "u 1575,-25m 1625,-25L 1625,25L 1575,25L 1575,-25L s 1600,-25m 1600,25L S "
        "1575,0m 1625,0L S U U");
    EXPECT_EQ(contourDrawing({}, 0), "");
    EXPECT_EQ(contourDrawing({{1, 2}}, 0), "100,200m s u U");
    QTextStream out(stdout);
    EXPECT_THROW(ILLMK_L_Vect(out, nullptr, 0), AssertionError);
}

TEST_F(IllustratorPiece, InternalPointsShowPunchesAndMatchMarksOnly)
{
    CDbMarkerPointObject matched = notch(1, SimpleNotch);
    matched.matchPoint = true;
    CDbMarkerPointObject punch(3, 2, UserPunch);
    PunchFeature feature;
    feature.punchPlus = 1;
    punch.setPunch(feature);
    polygon->internalPoints = {matched, punch};
    const std::string drawn = drawing(10);
    EXPECT_NE(drawn.find("K u 1075,-25m 1125,-25L 1125,25L 1075,25L 1075,-25L s 1100,-25m "
                         "1100,25L S 1075,0m 1125,0L S U "
                         "u 1250,200m 1350,200L S 1300,150m 1300,250L S U 0 0 0 10 k"),
        std::string::npos)
        << drawn;
    polygon->internalPoints = {CDbMarkerPointObject(3, 2, Punch)}; // a small plus
    EXPECT_NE(
        drawing(10).find("u 1275,200m 1325,200L S 1300,175m 1300,225L S U"), std::string::npos)
        << drawing(10);
}

TEST_F(IllustratorPiece, ImagesStayWhereTheyAreAndTextsMoveWithTheLayer)
{
    auto image = std::make_unique<CDbImage>();
    image->x = 1;
    image->y = 2;
    image->width = 3;
    image->height = 1;
    polygon->addImage(std::move(image));
    auto text = std::make_unique<CDbTextObject>();
    text->setLines({"of the piece"});
    text->textPosition = CDbMarkerPointObject(1, 3);
    polygon->polygonTexts.push_back(std::move(text));
    const std::string drawn = drawing(10);
    EXPECT_NE(drawn.find("s u U u u []0 d 100,200m 400,200L 400,300L 100,300L 100,200L S U 0 0 0"),
        std::string::npos)
        << drawn;
    EXPECT_NE(drawn.find("[1 0 0 1 311.85 85.05]e 12 (of the piece)t T U U U"), std::string::npos);
}

TEST_F(IllustratorPiece, SewingLinesAreDrawnWhenTheyAreAskedForAndTreeLinesAlways)
{
    auto links = std::make_unique<CDbLinksObjectTable>();
    polygon->internalPoints = {{5, 2}, {8, 2}};
    links->addLink(TreeLink, {true, 0}, {true, 1}).screenOnly = false;
    links->addLink(SewingLink, {false, 0}, {false, 2});
    links->addLink(TreeLink, {false, 1}, {true, 0});
    polygon->setLinks(std::move(links));
    // From the root outward, each in a group, shifted with the layer.
    const std::string tree = "u 3000,0m 1500,200L S U u 1500,200m 1800,200L S U ";
    EXPECT_NE(
        drawing(10).find("T U 0 0 0 10 k 0 0 0 10 K " + tree + "0 0 0 10 k"), std::string::npos)
        << drawing(10);
    plot.sewingLine = true;
    EXPECT_NE(drawing(10).find(tree + "u 1000,0m 3000,400L S U 0 0 0 10 k"), std::string::npos);
}

TEST_F(IllustratorPiece, ATreeLineIsDrawnByTheTraitOfItsLink)
{
    auto links = std::make_unique<CDbLinksObjectTable>();
    CDbLinkObject &link = links->addLink(TreeLink, {false, 0}, {false, 1});
    link.traitFlag = DashedTrait;
    link.traitTriple = {8, 4, 0};
    polygon->setLinks(std::move(links));
    EXPECT_NE(drawing().find("u 0,0m 800,0L S U u 1200,0m 2000,0L S U"), std::string::npos)
        << drawing();
}

TEST_F(IllustratorPiece, TheInformationSaysWhatTheOptionsAskFor)
{
    polygon->sizeNumber = 42;
    polygon->ballotNumber = 'A';
    polygon->pairedBallot = true;
    piece->setQuantity(2);
    piece->pieceData = {"pat", "nam", "des", "cod", "ref", "cloth", "id"};
    EXPECT_EQ(information(), "");

    plot.taille = plot.ballot = plot.quantite = plot.pieceTrait = true;
    polygon->foldedPiece = true;
    EXPECT_EQ(information(), " Fold|42A/A 2 Paired");
    piece->setSingle(true);
    polygon->pairedBallot = false;
    EXPECT_EQ(information(), " Fold|42A 2 Single");
    polygon->ballotNumber = 0;
    polygon->pairedBallot = true;
    EXPECT_EQ(information(), " Fold|42 2 Single");

    plot.taille = plot.quantite = plot.pieceTrait = false;
    plot.special = true;
    EXPECT_EQ(information(), " long");
    plot.pieceName = plot.pattern = plot.description = plot.pieceCode = true;
    plot.pieceCodeReference = plot.pieceIdentification = plot.tissus = true;
    EXPECT_EQ(information(), " long nam pat des|cod ref id cloth");
}

TEST_F(IllustratorPiece, ALineOfSixteenCharactersIsCutInTwo)
{
    plot.pieceName = true;
    const std::pair<const char *, const char *> cases[] = {{"1234567 901234", " 1234567 901234"},
        {"1234567 9012345", " 1234567|9012345"}, {"12345678901234567", " 12345678901234567"}};
    for (const auto &[name, expected] : cases) {
        piece->pieceData.nameText = name;
        EXPECT_EQ(information(), expected);
    }
}

TEST_F(IllustratorPiece, TheLineOfMarksTellsBlocksPartnersAndScales)
{
    struct Case
    {
        bool blocking, partner, partnerBlocking;
        short relation, index;
        const char *marks;
    };
    const Case cases[] = {
        {false, false, false, 0, 0, ""},
        {false, false, false, 1, 0, ""},
        {true, false, false, 0, 0, ""},
        {false, true, false, 0, 0, "Cut Down|"},
        {false, true, true, 0, 0, "Cut Down Block|"},
        {true, true, true, 0, 0, "Cut Down|"},
        {false, false, false, 0, 7, " Block 7|"},
        {true, false, false, 1, 7, " Block 7F|"},
        {true, true, true, 2, 7, "Cut Down FBlock 7|"},
    };
    plot.pieceTrait = true;
    for (const Case &each : cases) {
        polygon->blockingPolygon = each.blocking;
        std::unique_ptr<CDbPolygon> partner;
        if (each.partner) {
            partner = std::make_unique<CDbPolygon>(1, 1, true);
            partner->blockingPolygon = each.partnerBlocking;
        }
        polygon->setCutDownPolygon(std::move(partner));
        EXPECT_EQ(information(each.relation, each.index), each.marks);
    }
}

TEST_F(IllustratorPiece, AHybridPolygonHasMarksAlone)
{
    polygon->pieceIndex = 0;
    plot.taille = true;
    const QStringList lines = linesOf([&](QTextStream &out) {
        CDbMarkerOptions::mDefaultOptions.setValues(plot);
        ILLMK_Piece_Info_Mk(out, &builder.drawing(), &fabric(), polygon, 0, 0, 0);
    });
    EXPECT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.mid(3), (QStringList{"T", "U"}));
    plot.pieceTrait = polygon->foldedPiece = true;
    EXPECT_EQ(information(), " Fold");
    polygon->pieceIndex = 3;
    EXPECT_THROW(information(), AssertionError);
}

// 20 characters are 20 cm of the 20 cm of the piece in no size but the smallest.
TEST_F(IllustratorPiece, TheInformationIsInTheMiddleOfThePiece)
{
    plot.pieceName = true;
    piece->pieceData.nameText = "1234567890123456789";
    const QStringList lines = linesOf([&](QTextStream &out) {
        CDbMarkerOptions::mDefaultOptions.setValues(plot);
        ILLMK_Piece_Info_Mk(out, &builder.drawing(), &fabric(), polygon, 10, 0, 0);
    });
    EXPECT_EQ(lines[2], "[1 0 0 1 567 56.7]e");
    EXPECT_EQ(polygon->infoCentre.pointType, 100);
    EXPECT_TRUE(polygon->infoCentre.notchDx == 10.0F && polygon->infoCentre.notchDy == 2.0F);
}

} // namespace
} // namespace KivIllustrator
} // namespace KivSystem
