// How a piece's shape reaches the marker.

#include "KivMarker/Bundle.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Group.h"
#include "MarkerBuilder.h"

#include <gtest/gtest.h>

namespace KivSystem {
namespace {

// An L with a notch that points inward, a punch that points along the grain, and a grain line.
CDbPieceSizeObject hook()
{
    CDbPieceObject piece(QStringLiteral("HOOK"), 1);
    PieceShape shape;
    for (const auto &[x, y] : {std::pair(0., 0.), std::pair(6., 0.), std::pair(6., 1.),
             std::pair(2., 1.), std::pair(2., 3.), std::pair(0., 3.)}) {
        shape.contour.append(CDbMarkerPointObject(x, y));
    }
    shape.contour[1].pointType = SimpleNotch;
    shape.contour[1].notchDx = -0.5F;
    shape.contour[1].notchDy = 0.25F;
    CDbMarkerPointObject punch(1, 1, Punch);
    PunchFeature feature;
    feature.punchCorner = 0.5F;
    punch.setPunch(feature);
    shape.internalPoints.append(punch);
    InternalLine grain;
    grain.kind = InternalLine::Kind::Grain;
    grain.points.append(CDbMarkerPointObject(1, 2));
    grain.points.append(CDbMarkerPointObject(5, 0.5));
    shape.internalLines.push_back(grain);
    piece.addSize(38, shape);
    return piece.getPieceSize(1);
}

struct Turn
{
    Placement placement;
    GeoPoint2D corner; // where (6, 0) goes
    GeoPoint2D notch;  // where the vector (-0.5, 0.25) goes
    GeoPoint2D grainEnd;
    std::array<double, 4> matrix;
    GeoRectangle rect;
};

TEST(Polygon, TakesItsPiecesShapeMirroredThenTurnedThenShifted)
{
    const Turn turns[] = {
        {{10, 20, 0, false}, {16, 20}, {-0.5, 0.25}, {15, 20.5}, {1, 0, 0, 1}, {10, 16, 20, 23}},
        {{10, 20, 90, false}, {10, 26}, {-0.25, -0.5}, {9.5, 25}, {0, 1, -1, 0}, {7, 10, 20, 26}},
        {{10, 20, 180, false}, {4, 20}, {0.5, -0.25}, {5, 19.5}, {-1, 0, 0, -1}, {4, 10, 17, 20}},
        {{10, 20, 0, true}, {16, 20}, {-0.5, -0.25}, {15, 19.5}, {1, 0, 0, -1}, {10, 16, 17, 20}},
        {{10, 20, 90, true}, {10, 26}, {0.25, -0.5}, {10.5, 25}, {0, 1, 1, 0}, {10, 13, 20, 26}},
        {{10, 20, -270, true}, {10, 26}, {0.25, -0.5}, {10.5, 25}, {0, 1, 1, 0}, {10, 13, 20, 26}},
    };
    for (const Turn &turn : turns) {
        SCOPED_TRACE(testing::Message()
                     << turn.placement.rotation << (turn.placement.mirrored ? " mirrored" : ""));
        CDbPolygon polygon(1, 1, true);
        polygon.place(hook(), turn.placement);
        const CDbMarkerPointObject &corner = (*polygon.currentContour())[1];
        // Quarter turns are exact.
        EXPECT_TRUE(corner.equals(turn.corner, 0)) << corner.x << ' ' << corner.y;
        EXPECT_EQ(corner.pointType, SimpleNotch);
        EXPECT_EQ(corner.notchDx, static_cast<float>(turn.notch.x));
        EXPECT_EQ(corner.notchDy, static_cast<float>(turn.notch.y));
        EXPECT_TRUE(polygon.internalLines().front().points[1].equals(turn.grainEnd, 0));
        EXPECT_EQ(polygon.internalPoints[0].punch()->punchMatrix, turn.matrix);
        EXPECT_TRUE(polygon.polygonRect.equals(turn.rect, 0));
        EXPECT_EQ(polygon.area(), 10);
    }
}

TEST(Polygon, TurnsByAnyAngle)
{
    CDbPolygon polygon(1, 1, true);
    polygon.place(hook(), {1, 2, 30, false});
    EXPECT_TRUE((*polygon.currentContour())[1].equals(1 + 5.196152422706632, 2 + 3.0, 1e-12));
    EXPECT_NEAR(polygon.area(), 10, 1e-12);
    // The piece's own punch is not turned with the polygon's.
    EXPECT_EQ(hook().shape.internalPoints[0].punch()->punchMatrix[0], 1);
}

TEST(Polygon, ChainsPolygonsInTheOrderInWhichTheyWereAdded)
{
    CDbGrPolysObject group;
    EXPECT_EQ(group.firstPolygon, nullptr);
    for (short piece = 1; piece <= 3; ++piece) {
        group.addPolygon(std::make_unique<CDbPolygon>(piece, short(1), true));
    }
    short expected = 1;
    for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        EXPECT_EQ(polygon->pieceIndex, expected++);
    }
    EXPECT_EQ(expected, 4);
}

TEST(Polygon, ScalesThePieceButNotItsMarksAndMirrorsAcrossTheGrain)
{
    CDbFabricObject fabric("F", 1);
    CDbPolygon polygon(1, 1, true);
    polygon.place(hook(), {0, 0, 90, false, 2, 1});
    EXPECT_TRUE(polygon.polyIsScale());
    const CDbVectorsObjectTable &contour = *polygon.currentContour();
    const CDbMarkerPointObject corner = contour[1];
    polygon.addSpacingContour(1);
    EXPECT_EQ(polygon.contourKinds, (std::vector<int>{CutContour, SpacingContour}));
    const GeoRectangle before = polygon.polygonRect;
    polygon.makeSymXOrYFromLeftPoly(&fabric, nullptr);
    EXPECT_TRUE(contour[1].equals(-corner.x, corner.y, 1e-12)); // the grain lies along y
    EXPECT_NEAR(polygon.polygonRect.right(), -before.left(), 1e-12);
    EXPECT_TRUE(polygon.placement().mirrored);
    EXPECT_NEAR(polygon.contourList[1]->boundingRect().right(),
        polygon.contourList[0]->boundingRect().right() + 1, 1e-5);
    short error = 0;
    polygon.makeSymXOrYFromLeftPoly(nullptr, &error);
    EXPECT_EQ(error, k_error_missing);
}

TEST(Polygon, LeavesOutPointsOfCurvesThatChangeNothing)
{
    const auto count = [](std::initializer_list<CDbMarkerPointObject> points, double step) {
        CDbPieceSizeObject size;
        size.shape.contour = CDbVectorsObjectTable(points);
        CDbPolygon polygon(1, 1, true);
        polygon.place(size, {});
        polygon.thinCurves(step);
        return polygon.currentContour()->size();
    };
    const CDbMarkerPointObject flat(0.3, 0.0009, CurvePoint);
    const CDbMarkerPointObject bent(0.6, 0.002, CurvePoint);
    EXPECT_EQ(count({{0, 0}, flat, {10, 0}, {10, 5}}, 0.5), 3);
    EXPECT_EQ(count({{0, 0}, flat, {10, 0}, {10, 5}}, 0.2), 4);
    EXPECT_EQ(count({{0, 0}, bent, {10, 0}, {10, 5}}, 1), 4);
    EXPECT_EQ(count({{0, 0}, {0.3, 0}, {10, 0}, {10, 5}}, 0.5), 4); // a corner stays
    EXPECT_EQ(count({flat, {10, 0}, {10, 5}}, 0.5), 3);
}

TEST(Polygon, IsSymmetricalByItsShapeAndNotByItsPoints)
{
    const auto symmetrical = [](CDbVectorsObjectTable table, bool vertical) {
        const GeoPoint2D centre = table.boundingRect().center();
        return table.isSymmetrical({centre.x, centre.y}, vertical);
    };
    EXPECT_TRUE(symmetrical({{0, 0}, {3, 0}, {8, 0}, {8, 4}, {0, 4}}, false));
    EXPECT_TRUE(symmetrical({{0, 0}, {8, 1}, {8, 3}, {0, 4}}, false));
    EXPECT_FALSE(symmetrical({{0, 0}, {8, 1}, {8, 3}, {0, 4}}, true));
    EXPECT_TRUE(symmetrical({{0, 0}, {8, 0}, {8, 4.009}, {0, 4}}, true));
    EXPECT_FALSE(symmetrical({{0, 0}, {8, 0}, {8, 4.02}, {0, 4}}, true));
    // A thin spike outward, and edges that run elsewhere between mirrored points.
    EXPECT_FALSE(
        symmetrical({{0, 0}, {8, 0}, {8, 4}, {4, 4}, {4.001, 5}, {4.002, 4}, {0, 4}}, false));
    EXPECT_FALSE(symmetrical({{0, 0}, {4, 1}, {8, 0}, {8, 4}, {0, 4}, {4, 3}}, false));
}

CDbGrPolysObject &squaresAt(CDbGrPolysObject &group, std::initializer_list<GeoPoint2D> places)
{
    CDbPieceSizeObject size;
    size.shape.contour = CDbVectorsObjectTable({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    for (const GeoPoint2D &place : places) {
        auto polygon = std::make_unique<CDbPolygon>(short(1), short(1), true);
        polygon->place(size, {place.x, place.y, 0, false});
        group.addPolygon(std::move(polygon));
    }
    return group;
}

TEST(Group, FusesPolygonsThatTouchIntoOneContour)
{
    const auto fused = [](std::initializer_list<GeoPoint2D> places, bool fillHoles = true) {
        CDbGrPolysObject group;
        squaresAt(group, places).fusion(false, 0, fillHoles, 0.0001, 0, 0, 0, nullptr);
        return group.isAllPolysInFusion() ? group.getLastContourBlockingFusion()->area() : 0.0;
    };
    EXPECT_EQ(fused({{0, 0}, {10, 0}}), 200);
    EXPECT_NEAR(fused({{0, 0}, {10.00009, 3}}), 200, 0.01);
    EXPECT_EQ(fused({{0, 0}, {10.001, 0}}), 0);
    EXPECT_EQ(fused({{0, 0}, {10, 0}, {30, 0}}), 0);
    // Around a hole.
    EXPECT_EQ(
        fused({{0, 0}, {10, 0}, {20, 0}, {0, 10}, {20, 10}, {0, 20}, {10, 20}, {20, 20}}), 900);
    EXPECT_EQ(
        fused({{0, 0}, {10, 0}, {20, 0}, {0, 10}, {20, 10}, {0, 20}, {10, 20}, {20, 20}}, false),
        0);

    // A corner that stands before an edge, and a piece that lies within the others.
    EXPECT_NEAR(fused({{0, 0}, {10.00007, 10.00006}}), 200, 0.01);
    EXPECT_EQ(fused({{0, 0}, {10, 0}, {20, 0}, {30, 0}, {0, 10}, {30, 10}, {0, 20}, {30, 20},
                  {0, 30}, {10, 30}, {20, 30}, {30, 30}, {15, 15}}),
        1600);

    CDbGrPolysObject group;
    squaresAt(group, {{0.1, 0.1}, {10.1, 0.1}}).fusion(false, 0, true, 0, 2, 1, 0, nullptr);
    // Corners come through to the last digit; the last contour has the gap.
    EXPECT_EQ(group.getFirstContourBlockingFusion()->boundingRect().left(), 0.1);
    EXPECT_TRUE(group.getLastContourBlockingFusion()->boundingRect().equals(
        GeoRectangle(-1.9, 22.1, -0.9, 11.1), 1e-6));
    short error = 0;
    group.fusion(false, 2, true, 0, 0, 0, 0, &error);
    EXPECT_EQ(error, k_error_index);
    CDbGrPolysObject().fusion(false, 0, true, 0, 0, 0, 0, &error);
    EXPECT_EQ(error, k_error_missing);
}

TEST(Bundle, GivesTheLowestFreeGarmentAndThenItsSecondPiece)
{
    const auto document = MarkerBuilder()
                              .layer("1")
                              .fabric("F", {100})
                              .style("S", {"M"})
                              .garments(1, 1, 1, {2})
                              .piece(1, 1, "P")
                              .take();
    CDbFabricObject *fabric = document->drawing()->getFabric(0);
    CDbPieceObject *piece = fabric->firstPiece();
    const auto take = [&](bool left = true) {
        short index = 0;
        short copy = 0;
        CDBundleUtility::takeBundleIndex(fabric, 1, piece, 1, left, &index, &copy, nullptr);
        return std::pair<int, int>(index, copy);
    };
    EXPECT_EQ(take(), std::pair(1, 1));
    EXPECT_EQ(take(), std::pair(2, 1));
    EXPECT_EQ(take(), std::pair(1, 2));
    EXPECT_EQ(take(false), std::pair(1, 1));
    CDBundleUtility::releaseBundleIndex(fabric, 1, piece, 1, true, 2, 1);
    CDBundleUtility::releaseBundleIndex(fabric, 1, piece, 1, true, 9, 9);
    EXPECT_EQ(take(), std::pair(2, 1));
    EXPECT_EQ(take(), std::pair(2, 2));
}

} // namespace
} // namespace KivSystem
