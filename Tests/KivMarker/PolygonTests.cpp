// How a piece's shape reaches the marker.

#include "KivMarker/Polygon.h"

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

} // namespace
} // namespace KivSystem
