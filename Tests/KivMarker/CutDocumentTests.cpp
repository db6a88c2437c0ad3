// DocumentMak::toSVG: what reaches the formats.

#include "KivMarker/CutStatistics.h"
#include "KivMarker/MarkerOptions.h"
#include "KivMarker/MarkerSettings.h"
#include "KivMarker/ShareGlobales.h"
#include "KivMarker/SvgOptions.h"
#include "MarkerBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KivSystem {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Strings = std::vector<std::string>;

class CutDocument : public testing::Test
{
protected:
    CutDocument()
    {
        builder.layer("Lower").layer("Upper").fabric("Twill", {100, 80}).fabric("Empty", {90});
        builder.style("Shirt", {"S"});
        builder.piece(1, 1, "Back", 20, 10).piece(1, 1, "Cuff", 6, 4);
        options.setExportType(SvgOptions::ExportAnsi);
        options.setNotchLength(0.5);
    }
    ~CutDocument() override { MarkerSettings().apply(); }

    // A left-hand polygon of a shape of its own.
    static std::unique_ptr<CDbPolygon> polygon(PieceShape shape, short piece = 1)
    {
        auto result = std::make_unique<CDbPolygon>(piece, short(1), true);
        result->sizeNumber = 1;
        result->setOwnShape(std::move(shape), Placement());
        return result;
    }
    static PieceShape square(double left, double bottom, double side)
    {
        PieceShape shape;
        shape.contour = {{left, bottom}, {left + side, bottom}, {left + side, bottom + side},
            {left, bottom + side}};
        return shape;
    }
    // A block of the polygons.
    void lay(std::vector<std::unique_ptr<CDbPolygon>> polygons, short layer = 1)
    {
        auto group = std::make_unique<CDbGrPolysObject>();
        for (auto &each : polygons) {
            group->addPolygon(std::move(each));
        }
        builder.fabricAt(1).addGroup(layer, std::move(group));
    }
    void lay(PieceShape shape)
    {
        std::vector<std::unique_ptr<CDbPolygon>> one;
        one.push_back(polygon(std::move(shape)));
        lay(std::move(one));
    }

    QVector<QDomDocument> documents(short fabric = 1)
    {
        if (document == nullptr) {
            document = builder.take();
        }
        settings.apply();
        return document->toSVG(options, fabric);
    }
    // Element and attributes in short: kind and path data of each path of the main document.
    Strings paths()
    {
        Strings found;
        const QDomNodeList list =
            documents()[0].documentElement().elementsByTagName(QStringLiteral("path"));
        for (int i = 0; i < list.size(); ++i) {
            const QDomElement path = list.at(i).toElement();
            found.push_back(
                (path.attribute("t") + ':' + path.attribute("drill") + path.text()).toStdString());
        }
        return found;
    }
    static int count(const QDomDocument &svg, const char *tag)
    {
        return svg.elementsByTagName(QString::fromLatin1(tag)).size();
    }
    static std::string attributeOf(const QDomDocument &svg, const char *tag, const char *name)
    {
        const QDomNodeList list = svg.elementsByTagName(QString::fromLatin1(tag));
        return list.isEmpty() ? "no element" : list.at(0).toElement().attribute(name).toStdString();
    }
    Strings messages()
    {
        Strings texts;
        for (const CutMessage &message : document->takeCutMessages()) {
            texts.push_back((message.refused ? "refused: " : "") + message.text.toStdString());
        }
        return texts;
    }

    MarkerBuilder builder;
    std::unique_ptr<DocumentMak> document;
    SvgOptions options;
    MarkerSettings settings;
};

TEST_F(CutDocument, HoldsALayerBehindTheOtherAndNothingInStandBy)
{
    builder.place(1, 1, 1, 1, 2, 3)
        .place(1, 2, 2, 1, 0, 0)
        .place(1, 1, 2, 1, 0, 0, PlacedInStandBy);
    settings.plot.spaceLayers = 5;
    EXPECT_THAT(paths(), ElementsAre("outline:M 2,3 L 22,3 L 22,13 L 2,13 L 2,3",
                             "outline:M 27,0 L 33,0 L 33,4 L 27,4 L 27,0"));
    const QDomDocument svg = documents()[0];
    EXPECT_EQ(attributeOf(svg, "svg", "tissuL"), "33");
    EXPECT_EQ(attributeOf(svg, "svg", "tissuW"), "100");
    EXPECT_EQ(attributeOf(svg, "object", "velocity"), "1");
}

TEST_F(CutDocument, OfAllFabricsPassesOverThoseWithoutPiecesOrWithAnotherStatus)
{
    builder.place(1, 1, 1, 1, 0, 0);
    document = builder.take();
    EXPECT_EQ(documents(0).size(), 1);
    EXPECT_TRUE(documents(2).isEmpty());
    EXPECT_TRUE(documents(3).isEmpty());
    EXPECT_TRUE(documents(-1).isEmpty());
    document->drawing()->getFabric(0)->fabricStatus = 2;
    EXPECT_TRUE(documents(0).isEmpty());
    EXPECT_EQ(documents(1).size(), 1);
    EXPECT_TRUE(DocumentMak(nullptr).toSVG(options, 1).isEmpty());
}

TEST_F(CutDocument, RepeatsTheBaseOfANotchThatIsCutDuringTheOutline)
{
    PieceShape shape;
    CDbMarkerPointObject notch(5, 0, SimpleNotch);
    notch.notchDy = 1;
    shape.contour = {{0, 0}, notch, {10, 0}, {0, 3}}; // sharp at (10, 0)
    lay(std::move(shape));
    settings.cut.cutOrderCrans = NotchDuringOutline;
    EXPECT_THAT(paths(),
        ElementsAre("notch:M 5,0 L 5,0.5", "outline:M 0,0 L 5,0 L 5,0 L 10,0 L 0,3 L 0,0"));
    EXPECT_EQ(attributeOf(documents()[0], "path", "LiftPlunge"), ""); // that of the notch
    EXPECT_THAT(documents()[0].toString().toStdString(), HasSubstr("LiftPlunge=\"4 5\""));

    settings.cut.cutOrderCrans = NotchAfterOutline;
    EXPECT_THAT(
        paths(), ElementsAre("notch:M 5,0 L 5,0.5", "outline:M 0,0 L 5,0 L 10,0 L 0,3 L 0,0"));
    EXPECT_THAT(documents()[0].toString().toStdString(), HasSubstr("LiftPlunge=\"3 4\""));
}

TEST_F(CutDocument, GathersNotchesWhereTheOutlineComesTwiceAtItsLastVisit)
{
    PieceShape shape; // two squares that meet in (10, 10)
    CDbMarkerPointObject first(10, 10, SimpleNotch);
    first.notchDx = -1;
    CDbMarkerPointObject second(10, 10, SimpleNotch);
    second.notchDx = 1;
    shape.contour = {{0, 0}, {10, 0}, first, {20, 10}, {20, 20}, {10, 20}, second, {0, 10}};
    lay(std::move(shape));
    settings.cut.cutOrderCrans = NotchDuringOutline;
    EXPECT_THAT(paths(), ElementsAre("notch:M 10,10 L 10.5,10 L 10,10 L 9.5,10",
                             "outline:M 0,0 L 10,0 L 10,10 L 20,10 L 20,20 L 10,20 L 10,10 L 10,10 "
                             "L 0,10 L 0,0"));
    settings.cut.cutOrderCrans = NotchBeforeOutline;
    EXPECT_EQ(paths().size(), 3U);
}

TEST_F(CutDocument, MakesNotchesShorterThatWouldCutThroughThePiece)
{
    PieceShape shape;
    CDbMarkerPointObject notch(5, 0, SimpleNotch);
    notch.notchDy = 1;
    shape.contour = {{0, 0}, notch, {10, 0}, {10, 1}, {0, 1}};
    lay(std::move(shape));
    options.setNotchLength(2);
    EXPECT_EQ(paths()[0], "notch:M 5,0 L 5,0.5");
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("1 notches that would cut through it")));
}

TEST_F(CutDocument, NamesTheToolsOfHolesAndPunchesOutsideOfPiecesOnlyWhenAsked)
{
    PieceShape shape = square(0, 0, 10);
    shape.internalPoints = {
        {2, 2, Punch}, {5, 5, UserPunch}, {30, 5, Punch}, {15, 5, Punch}, {30, -5, Punch}};
    shape.internalPoints[0].matchPoint = true;
    shape.internalLines = {
        {InternalLine::Kind::Cut, {{1, 1}, {9, 1}}}, {InternalLine::Kind::Draw, {{1, 2}, {9, 2}}}};
    lay(std::move(shape));
    lay(square(14, 0, 5)); // the hole at (15, 5) would go into its edge
    EXPECT_THAT(paths(),
        ElementsAre("M43:M 2,2", "M44:M 5,5", "internal:M 1,1 L 9,1", testing::_, testing::_));
    EXPECT_EQ(attributeOf(documents()[0], "match_point", "matchPointX"), "2");
    EXPECT_EQ(count(documents()[0], "external"), 0);
    EXPECT_TRUE(messages().empty());

    settings.cut.cutExternalPunchHoles = true;
    settings.cut.cutExternalPunchHoleTool = 1;
    const QDomDocument svg = documents()[0];
    EXPECT_EQ(attributeOf(svg, "external", "outil"), "M44");
    EXPECT_EQ(count(svg, "circle"), 1);
    EXPECT_EQ(attributeOf(svg, "circle", "cx"), "30");
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("lies in piece \"Back\", size S and is left out"),
                                HasSubstr("lies beside the cloth and is left out")));

    options.setExportType(SvgOptions::ExportEastman);
    options.setDrillType(DrillNone);
    EXPECT_EQ(count(documents()[0], "circle"), 1);
    EXPECT_EQ(count(documents()[0], "path"), 3);
    options.setDrillType(DrillSlit);
    options.setDrillSize(45);
    EXPECT_EQ(attributeOf(documents()[0], "path", "drillSize"), "45");
}

TEST_F(CutDocument, RefusesWhatLiesBeyondTheClothAndNamesEachPiece)
{
    options.setCheckRange(true);
    builder.place(1, 1, 1, 1, 0, 90.0005);
    document = builder.take();
    EXPECT_EQ(documents().size(), 1); // less than the tolerance

    builder = MarkerBuilder();
    builder.layer("L").fabric("Twill", {100}).style("S", {"S"}).piece(1, 1, "Back", 20, 10);
    builder.place(1, 1, 1, 1, 0, 90.01).place(1, 1, 1, 1, -1, 5).place(1, 1, 1, 1, 30, -2);
    document = builder.take();
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_THAT(messages(),
        ElementsAre("refused: fabric \"Twill\": piece \"Back\", size S lies 0.010 cm beyond the "
                    "upper edge of the fabric",
            HasSubstr("1.000 cm beyond the start"), HasSubstr("2.000 cm beyond the lower edge")));
    EXPECT_TRUE(messages().empty());
    options.setCheckRange(false);
    EXPECT_THAT(paths()[1], testing::StartsWith("outline:M -0.9999999,5"));
}

TEST_F(CutDocument, RefusesACutIntoTheNextLayerAndPiecesBeforeTheStartOfOne)
{
    options.setCheckRange(true);
    PieceShape shape = square(0, 0, 10);
    shape.internalLines = {{InternalLine::Kind::Cut, {{5, 5}, {11, 5}}}};
    lay(std::move(shape));
    builder.place(1, 2, 2, 1, 0, 0);
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("1.000 cm beyond the start of the next layer")));
    settings.plot.spaceLayers = 1;
    EXPECT_EQ(documents().size(), 1);
    EXPECT_TRUE(messages().empty());
    settings.plot.spaceLayers = 0;
    options.setCheckRange(false); // told, and cut
    EXPECT_EQ(documents().size(), 1);
    EXPECT_EQ(messages().size(), 1U);

    builder = MarkerBuilder();
    builder.layer("A")
        .layer("B")
        .fabric("Twill", {9, 9})
        .style("S", {"S"})
        .piece(1, 1, "Cuff", 6, 4);
    builder.place(1, 1, 1, 1, 0, 0).place(1, 2, 1, 1, -6, 0);
    document = builder.take();
    options.setCheckRange(true);
    EXPECT_TRUE(documents(0).isEmpty());
    EXPECT_THAT(messages(), ElementsAre(HasSubstr("6.000 cm beyond the start of the fabric")));
}

TEST_F(CutDocument, ScalesEveryCoordinateButNotTheFabric)
{
    PieceShape shape = square(10, 20, 10);
    shape.internalPoints = {{15, 25, Punch}};
    lay(std::move(shape));
    options.setExportType(SvgOptions::ExportEastman);
    options.setScaleX(0.5);
    options.setScaleY(1.1);
    EXPECT_THAT(
        paths(), ElementsAre("M43:M 7.5,27.5", "outline:M 5,22 L 10,22 L 10,33 L 5,33 L 5,22"));
    EXPECT_EQ(attributeOf(documents()[0], "svg", "tissuL"), "20");
}

TEST_F(CutDocument, OfLabelsHoldsNoPathAndNamesPieceSizeAndStyle)
{
    builder.place(1, 1, 1, 1, 0, 0).place(1, 1, 2, 1, 20, 0);
    options = SvgOptions();
    options.setExportType(SvgOptions::ExportLabels);
    settings.cut.cutFusing = NC::CutBlockOutlineOnly;
    settings.cut.cutFabricEdge = true;
    const QDomDocument svg = documents()[0];
    EXPECT_EQ(count(svg, "object"), 2);
    EXPECT_EQ(count(svg, "path") + count(svg, "scrap"), 0);
    EXPECT_EQ(attributeOf(svg, "object", "label"), "Back S Shirt");
    EXPECT_EQ(attributeOf(svg, "object", "centreX"), "10");

    options.setExportType(SvgOptions::ExportAnsi);
    EXPECT_EQ(count(documents()[0], "text"), 0);
    EXPECT_FALSE(
        documents()[0].documentElement().firstChildElement("object").hasAttribute("label"));
    settings.cut.penCutInfos = true;
    settings.plot.pieceName = true;
    settings.plot.taille = true;
    EXPECT_THAT(documents()[0].elementsByTagName("text").at(0).toElement().text().toStdString(),
        HasSubstr("S Back"));
}

TEST_F(CutDocument, ALabelForACutterHasNoAsteriskAndNoMoreThanItsCharacters)
{
    builder.piece(1, 1, "A*B very long name of a piece that goes on", 5, 5).place(1, 1, 3, 1, 0, 0);
    settings.cut.cutLabelM31 = true;
    EXPECT_EQ(
        attributeOf(documents()[0], "object", "label"), "AxB very long name of a piece that g");
}

class CutBlocks : public CutDocument
{
protected:
    // A block of two squares, 1 cm apart, and a single piece 3 cm from it.
    CutBlocks()
    {
        builder.fabricAt(1).setGaps(1, 0.5);
        std::vector<std::unique_ptr<CDbPolygon>> pair;
        pair.push_back(polygon(square(0, 0, 10)));
        pair.push_back(polygon(square(11, 0, 10), 2));
        lay(std::move(pair));
        lay(square(24, 0, 10));
    }
};

TEST_F(CutBlocks, OfSeveralPiecesAreCutByPieceAsOneOrByTheirOutline)
{
    EXPECT_EQ(count(documents()[0], "object"), 3);
    settings.cut.cutFusing = NC::CutBlockInternalPiecesOnly;
    EXPECT_EQ(count(documents()[0], "object"), 2);
    EXPECT_EQ(paths().size(), 3U);
    settings.cut.cutFusing = NC::CutBlockOutlineOnly;
    EXPECT_EQ(count(documents()[0], "object"), 2);
    // Widened by the gap, but not beyond the cloth.
    EXPECT_THAT(paths(), testing::Contains("outline:M 24,0 L 34,0 L 34,10 L 24,10 L 24,0"));
    EXPECT_THAT(paths()[0], testing::AllOf(HasSubstr("22,10.5"), HasSubstr("0,10.5"),
                                HasSubstr("22,0"), HasSubstr("0,0")));
    // Eastman cutters have a setting of their own.
    options.setExportType(SvgOptions::ExportEastman);
    EXPECT_EQ(count(documents()[0], "object"), 3);
    settings.cut.eastCutFusing = NC::CutBlockInternalPiecesOnly;
    EXPECT_EQ(count(documents()[0], "object"), 2);
}

TEST_F(CutBlocks, OfASinglePieceAreCutByTheirOutline)
{
    settings.cut.cutBlocking = true;
    EXPECT_THAT(paths()[2], testing::AllOf(HasSubstr("23,10.5"), HasSubstr("34,10.5")));
    EXPECT_EQ(paths()[0], "outline:M 0,0 L 10,0 L 10,10 L 0,10 L 0,0");
    // With 3 cm between them each has its half of a gap of 4, and the pair its 2 cm.
    builder = MarkerBuilder();
    document->drawing()->getFabric(0)->setGaps(4, 0);
    settings.cut.cutFusing = NC::CutBlockOutlineOnly;
    EXPECT_THAT(paths()[0], testing::AllOf(HasSubstr("22,0"), testing::Not(HasSubstr("22.5"))));
    EXPECT_THAT(paths()[1], HasSubstr("23,0"));
}

TEST_F(CutBlocks, MayHaveDocumentsOfTheirOwn)
{
    settings.cut.miniCutFileBlock = true;
    QVector<QDomDocument> made = documents();
    ASSERT_EQ(made.size(), 2);
    EXPECT_EQ(count(made[0], "object"), 1);
    EXPECT_EQ(attributeOf(made[0], "svg", "block_index"), "");
    EXPECT_EQ(count(made[1], "object"), 2);
    EXPECT_EQ(attributeOf(made[1], "svg", "block_index"), "1");
    EXPECT_EQ(attributeOf(made[1], "svg", "tissuL"), "34");

    // The block is cut out roughly with the fabric, its pieces later.
    settings.cut.cutFusing = NC::CutBlockOutlineOnly;
    made = documents();
    EXPECT_EQ(count(made[0], "object"), 2);
    EXPECT_EQ(count(made[1], "object"), 2);
}

TEST_F(CutBlocks, MoveOnWithTheConveyor)
{
    settings.cut.cutCommandM69 = true;
    settings.cut.cutLength = 22;
    settings.cut.cutThresholdAdvance = 22;
    const QDomDocument svg = documents()[0];
    EXPECT_EQ(count(svg, "M69"), 1);
    EXPECT_EQ(attributeOf(svg, "M69", "tissuL"), "24");
    const QDomElement last = svg.documentElement().lastChildElement("M69");
    EXPECT_EQ(last.previousSiblingElement().tagName(), "object");
    EXPECT_EQ(last.nextSiblingElement().tagName(), "object");

    settings.cut.cutLength = 9;
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_EQ(messages().size(), 3U);

    // Nothing lies in the first frame: an object of which nothing is cut lets the conveyor move.
    settings.cut.cutLength = 12;
    settings.cut.cutThresholdAdvance = 12;
    settings.cut.miniCutFileBlock = true;
    const QDomElement root = documents()[0].documentElement();
    EXPECT_FALSE(root.firstChildElement("object").hasChildNodes());
    EXPECT_EQ(root.firstChildElement("M69").attribute("advance"), "24");
    EXPECT_EQ(count(documents()[0], "object"), 2);
}

TEST_F(CutBlocks, AreMeasuredInTheOrderOfACutFile)
{
    options.setCaller(SvgOptions::CallerExport);
    const CutStatistics cuts = measureCuts(documents()[0], NotchNone, CutLineNone);
    EXPECT_EQ(cuts.objects, 3);
    EXPECT_EQ(cuts.plunges, 3);
    EXPECT_DOUBLE_EQ(cuts.cutLength, 120);
    EXPECT_DOUBLE_EQ(cuts.idleLength, 24);
    settings.cut.cutFabricEdge = true;
    settings.cut.cutFabricEdgeSpacing = 22.5;
    const CutStatistics waste = measureCuts(documents()[0], NotchNone, CutLineNone);
    EXPECT_DOUBLE_EQ(waste.cutLength, 120 + 2 * 10 + 100);
    EXPECT_EQ(waste.plunges, 3 + 2 + 1);
}

} // namespace
} // namespace KivSystem
