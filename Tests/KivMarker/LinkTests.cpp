// Links, images, contours, ranks and texts: what a marker offers to those who draw it.

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Image.h"
#include "KivMarker/Links.h"
#include "KivMarker/MarkerFile.h"
#include "KivMarker/Polygon.h"
#include "KivMarker/TextIterators.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace KivSystem {
namespace {

// The folded polygon of the file that holds every key: a triangle of (0, 0), (12, 0), (12, 6).
class FullMarker : public testing::Test
{
protected:
    std::unique_ptr<DocumentMak> document =
        MarkerFile::load(QStringLiteral(KIV_TEST_DATA "/full.mar"));
    const CDbMarkerDrawing &drawing = *document->drawing();
    const CDbFabricObject &fabric = *drawing.getFabric(0);
    CDbPolygon &polygon = *fabric.layerFirstGrPolys(2)->firstPolygon;
    const CDbPieceObject &piece = *fabric.findPieceAccordingIndex(2, nullptr);
};

TEST_F(FullMarker, SeamAndSpacingStandBeforeTheCutContourThatAllElseGoesBy)
{
    EXPECT_EQ(polygon.contourKinds, std::vector<int>({SpacingContour, SeamContour, CutContour}));
    EXPECT_EQ(polygon.currentContour(), polygon.contourList.back());
    EXPECT_EQ(polygon.area(), 36);
    EXPECT_EQ(polygon.polygonRect.left(), 0);
    EXPECT_EQ(polygon.findContour(SeamContour)->first().x, 3);
    const GeoRectangle wide = polygon.findContour(SpacingContour)->boundingRect();
    EXPECT_NEAR(wide.left(), -0.5, 0.005);
    EXPECT_NEAR(wide.top(), 6.5, 0.005);

    polygon.setSpacing(0);
    EXPECT_EQ(polygon.contourKinds, std::vector<int>({SeamContour, CutContour}));
    polygon.place(piece.getPieceSize(1), Placement());
    EXPECT_EQ(polygon.contourKinds, std::vector<int>({CutContour}));
    EXPECT_EQ(polygon.findContour(SeamContour), nullptr);
}

TEST_F(FullMarker, TheSeamOfAPieceIsPlacedWithItsPolygon)
{
    const CDbPolygon &mirrored = *fabric.findLayer(1)->groups[1]->firstPolygon;
    const CDbVectorsObjectTable &seam = *mirrored.findContour(SeamContour);
    EXPECT_TRUE(seam[0].equals(1.05, -1.1, 1e-12));
    EXPECT_TRUE(seam[2].matchPoint);
}

TEST_F(FullMarker, LinksTieThePointsTheyName)
{
    CDbLinksObjectTable &links = *polygon.polygonLinks;
    ASSERT_EQ(links.size(), 4);
    EXPECT_THROW(links[4], std::out_of_range);
    EXPECT_THROW(links[-1], std::out_of_range);
    EXPECT_TRUE(links.isLinkExistByType(TreeLink));
    EXPECT_TRUE(links.isLinkExistByType(SewingLink));
    EXPECT_FALSE(links.isLinkExistByType(2));
    CDbMarkerPointObject first;
    CDbMarkerPointObject second;
    links[3].getVectorsFromLink(polygon.currentContour(), &polygon.internalPoints, &first, &second);
    EXPECT_TRUE(first.equals(12, 0, 0));
    EXPECT_TRUE(second.equals(12, 6, 0));
    GeoPoint2D end;
    CDbLinkObject::getExtremitiesMarkerLink(
        polygon.currentContour(), &polygon.internalPoints, links[0], nullptr, &end);
    EXPECT_TRUE(end.equals(3, 1, 0)); // the internal point
}

TEST_F(FullMarker, RefreshedTreeLinesFollowThePointsAndLeaveWithThem)
{
    CDbLinksObjectTable &links = *polygon.polygonLinks;
    EXPECT_EQ(links[0].linkLine, nullptr);
    links.refreshMkTreesLines(piece, polygon.currentContour(), &polygon.internalPoints);
    ASSERT_NE(links[0].linkLine, nullptr);
    EXPECT_EQ(links[0].linkLine->lineTrait->traitTriple, (TraitTriple{2, 0.5, 0.25}));
    EXPECT_EQ(links[0].linkLine->lineTrait->traitFlag, ChainDottedTrait);
    EXPECT_EQ(links[0].linkLine->lineTrait->traitScalar, -0.5);
    EXPECT_EQ(links[3].linkLine, nullptr); // a sewing link
    const auto shown = [&links](short index, e_Type_Preference preference) {
        return CDbLinkObject::isLinkDisplays(links[index], preference);
    };
    EXPECT_TRUE(shown(0, PreferencePlot));
    EXPECT_FALSE(shown(2, PreferencePlot)); // for the screen only
    EXPECT_TRUE(shown(2, PreferenceScreen));

    CDbVectorsObjectTable moved{{5, 5}, {6, 5}};
    links.refreshMkTreesLines(piece, &moved, &polygon.internalPoints);
    EXPECT_TRUE(links[0].linkLine->v1()->equals(5, 5, 0));
    EXPECT_TRUE(links[0].linkLine->v2()->equals(3, 1, 0));
    EXPECT_FALSE(shown(1, PreferenceScreen)); // there is no third point any more
    EXPECT_EQ(links[1].linkLine, nullptr);
    CDbMarkerPointObject first;
    CDbMarkerPointObject second;
    links[1].getVectorsFromLink(&moved, nullptr, &first, &second);
    EXPECT_TRUE(first.equals(0, 0, 0) && second.equals(0, 0, 0));
    links[0].getVectorsFromLink(&moved, nullptr, &first, &second);
    EXPECT_TRUE(first.equals(5, 5, 0) && second.equals(5, 5, 0));

    links.refreshMkTreesLines(piece, polygon.currentContour(), &polygon.internalPoints);
    EXPECT_TRUE(shown(1, PreferencePlot));
}

std::vector<CDbMarkerLink> linksOf(const std::vector<std::pair<int, int>> &edges)
{
    std::vector<CDbMarkerLink> links(edges.size());
    for (std::size_t index = 0; index < edges.size(); ++index) {
        links[index].line = std::make_unique<LineObject>();
        links[index].first = CDbPointKIV(edges[index].first, 0);
        links[index].second = CDbPointKIV(edges[index].second, 0);
    }
    return links;
}

std::vector<std::pair<int, int>> edgesOf(const std::vector<CDbMarkerLink> &links)
{
    std::vector<std::pair<int, int>> edges;
    for (const CDbMarkerLink &link : links) {
        EXPECT_NE(link.line, nullptr);
        edges.emplace_back(static_cast<int>(link.first.x), static_cast<int>(link.second.x));
    }
    return edges;
}

TEST(MarkerLinks, AreOrderedFromTheRootsOutward)
{
    using Edges = std::vector<std::pair<int, int>>;
    const std::pair<Edges, Edges> cases[] = {
        {{}, {}}, {{{3, 4}, {1, 3}, {0, 1}, {1, 2}}, {{0, 1}, {1, 3}, {1, 2}, {3, 4}}},
        {{{8, 9}, {1, 2}, {7, 8}, {0, 1}}, {{7, 8}, {0, 1}, {8, 9}, {1, 2}}}, // two trees
        {{{2, 3}, {0, 2}, {1, 2}}, {{0, 2}, {1, 2}, {2, 3}}},                 // a confluence
        {{{5, 6}, {6, 5}, {4, 4}, {0, 1}}, {{4, 4}, {0, 1}, {5, 6}, {6, 5}}}, // rings
        {{{2, 3}, {1, 2}, {1, 1}}, {{1, 2}, {1, 1}, {2, 3}}}, // two points at one place
    };
    for (const auto &[edges, expected] : cases) {
        std::vector<CDbMarkerLink> links = linksOf(edges);
        CDbMarkerLink::reOrderLinks(links);
        EXPECT_EQ(edgesOf(links), expected);
    }
}

TEST(MarkerLinks, OfALargeTreeNoneComesBeforeItsRoot)
{
    constexpr int kPoints = 3000;
    std::mt19937 random(7);
    std::vector<std::pair<int, int>> edges;
    for (int point = 1; point < kPoints; ++point) {
        edges.emplace_back(static_cast<int>(random() % static_cast<unsigned>(point)), point);
    }
    std::shuffle(edges.begin(), edges.end(), random);
    std::vector<CDbMarkerLink> links = linksOf(edges);
    CDbMarkerLink::reOrderLinks(links);
    std::vector<bool> reached(kPoints, false);
    reached[0] = true;
    for (const auto &[from, to] : edgesOf(links)) {
        EXPECT_TRUE(reached[static_cast<std::size_t>(from)]) << from;
        reached[static_cast<std::size_t>(to)] = true;
    }
    EXPECT_EQ(std::count(reached.begin(), reached.end(), false), 0);
}

TEST_F(FullMarker, ImagesHaveTheirCornersCounterClockwiseAndTurnAboutTheFirst)
{
    const QVector<CDbImage *> images = polygon.getImages();
    ASSERT_EQ(images.size(), 2);
    CDbImage image = *images[0];
    image.rotation = 90;
    const double expected[4][2] = {{7, 1}, {7, 4}, {5, 4}, {5, 1}};
    for (int corner = 0; corner < 4; ++corner) {
        const GeoPoint2D place = image.getVector(static_cast<CDbImage::Corner>(corner));
        EXPECT_TRUE(place.equals(expected[corner][0], expected[corner][1], 0)) << corner;
    }
}

TEST_F(FullMarker, LayersAreFoundByRankAndUnusedOnesMayBePassedOver)
{
    CDbLayerObjectTable table = drawing.getLayerObjectTable(); // of the ranks 3, 1, 2 (unused)
    const short byRank[] = {0, 2, 3, 1, 0};
    for (short rank = 0; rank < 5; ++rank) {
        EXPECT_EQ(table.getLayerIndexInGiveRank(rank, false), byRank[rank]) << rank;
        EXPECT_EQ(table.getLayerIndexInGiveRank(rank, true), rank == 2 ? 0 : byRank[rank]) << rank;
    }
    EXPECT_EQ(table.lastDefinesLayerIndex(false), 1);
    table.remove(0);
    table[0]->layerRank = table[1]->layerRank = 0; // as they stand
    EXPECT_EQ(table.getLayerIndexInGiveRank(2, false), 2);
    EXPECT_EQ(table.lastDefinesLayerIndex(false), 2);
    EXPECT_EQ(table.lastDefinesLayerIndex(true), 1);
    EXPECT_EQ(CDbLayerObjectTable().lastDefinesLayerIndex(false), 0);
}

TEST_F(FullMarker, TextsAreWalkedOverInTheirOrderAndAgain)
{
    EXPECT_TRUE(fabric.hasTextListInLayer(0));
    for (const short layer : {short(-1), short(1), short(2), short(3)}) {
        EXPECT_FALSE(fabric.hasTextListInLayer(layer)) << layer;
        CDbTextObject *text = fabric.findLayer(1)->texts[0].get();
        EXPECT_FALSE(CTextLayerTableIter(fabric, layer).next(&text)) << layer;
        EXPECT_EQ(text, nullptr);
    }
    CTextLayerTableIter iterator(fabric, 0);
    for (int round = 0; round < 2; ++round) {
        QStringList first;
        CDbTextObjectIter &any = iterator;
        for (CDbTextObject *text = nullptr; any.next(&text);) {
            first << text->textLines.first();
        }
        EXPECT_EQ(first, QStringList({QStringLiteral("Lay"), QStringLiteral("round")}));
        iterator.first();
    }
    const CDbTextObject &round = *fabric.findLayer(1)->texts[1];
    EXPECT_EQ(round.textWorkSection, HeaderSection);
    EXPECT_EQ(round.pathPoints().size(), 3U);
    EXPECT_TRUE(round.textPathOrigin.equals(5, 5.5, 0));
    EXPECT_EQ(round.textBoxHeight, 1.25);
}

TEST_F(FullMarker, APolygonIsNamedByTheSpecialTextOfItsSize)
{
    const CDbPieceObject &front = *fabric.findPieceAccordingIndex(1, nullptr);
    const CDbPolygon &placed = *fabric.layerFirstGrPolys(1)->firstPolygon;
    const CDbPolygon beyond(1, 3, true);
    const CDbStyleObject *style = drawing.getStyle(1);
    struct
    {
        const CDbPolygon *polygon;
        const CDbStyleObject *style;
        short fabric;
        const char *name;
        short error;
    } const cases[] = {
        {&placed, style, 1, "short", k_no_error},
        {&placed, drawing.getStyle(0), 1, "", k_error_missing},
        {nullptr, style, 1, "", k_error_missing},
        {&placed, nullptr, 1, "", k_error_missing},
        {&placed, style, 3, "", k_error_index},
        {&beyond, style, 1, "", k_error_index},
    };
    for (const auto &entry : cases) {
        QString name = QStringLiteral("old");
        short error = -1;
        front.getPolyName(entry.polygon, entry.style, entry.fabric, name, &error);
        EXPECT_EQ(name, QLatin1String(entry.name));
        EXPECT_EQ(error, entry.error);
    }
    short error = -1;
    EXPECT_FALSE(placed.isPolygoneHybrid(&error));
    EXPECT_EQ(error, k_no_error);
    EXPECT_TRUE(CDbPolygon(0, 1, true).isPolygoneHybrid(&error));
    EXPECT_EQ(error, k_no_error);
    EXPECT_FALSE(CDbPolygon(-1, 1, true).isPolygoneHybrid(&error));
    EXPECT_EQ(error, k_error_index);
}

} // namespace
} // namespace KivSystem
