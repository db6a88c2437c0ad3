// What a fabric and a drawing compute, and what they answer past the end.

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/MarkerFile.h"
#include "KivMarker/Polygon.h"

#include <QFile>

#include <gtest/gtest.h>

namespace KivSystem {
namespace {

std::unique_ptr<DocumentMak> fullMarker()
{
    return MarkerFile::load(QStringLiteral(KIV_TEST_DATA "/full.mar"));
}

struct LayerValues
{
    short error = -1, garments = -1, toPlace = -1, placed = -1;
    double length = -1, area = -1;
};

LayerValues layerValues(const CDbFabricObject &fabric, short layer)
{
    LayerValues values;
    fabric.calculateTheValuesToDisplayInALayer(layer, &values.error, &values.garments,
        &values.toPlace, &values.placed, &values.length, &values.area);
    return values;
}

TEST(Fabric, CountsPlacedOrderedAndGarmentsOfALayer)
{
    const auto document = fullMarker();
    const CDbFabricObject &fabric = *document->drawing()->getFabric(0);
    const LayerValues lower = layerValues(fabric, 1);
    EXPECT_EQ(lower.error, k_no_error);
    EXPECT_EQ(lower.garments, 3);
    EXPECT_EQ(lower.placed, 2);
    // Six are ordered, two lie on the marker; the one in stand-by is still to be placed.
    EXPECT_EQ(lower.toPlace, 4);
    EXPECT_EQ(lower.length, 48.125);
    EXPECT_EQ(lower.area, 48); // two trapezes of 8 by 4 and 2
    EXPECT_NEAR(fabric.returnPlacementEfficiencyFactor(90.5, lower.length, lower.area),
        100 * 48 / (90.5 * 48.125), 1e-12);

    const LayerValues upper = layerValues(fabric, 2);
    EXPECT_EQ(upper.garments, 0);
    EXPECT_EQ(upper.placed, 1);
    EXPECT_EQ(upper.toPlace, 4);
    EXPECT_EQ(upper.length, 12);
    EXPECT_EQ(upper.area, 36);
}

TEST(Fabric, AnswersPastTheEndWithZeroAndAnErrorCode)
{
    const auto document = fullMarker();
    const CDbFabricObject &fabric = *document->drawing()->getFabric(0);
    for (const short layer : {short(0), short(4), short(-1)}) {
        const LayerValues values = layerValues(fabric, layer);
        EXPECT_EQ(values.error, k_error_index);
        EXPECT_EQ(values.placed, 0);
        EXPECT_EQ(values.toPlace, 0);
        EXPECT_EQ(values.garments, 0);
        EXPECT_EQ(values.length, 0);
        EXPECT_EQ(fabric.getFabricLayerWidth(layer), 0);
        EXPECT_EQ(fabric.layerFirstGrPolys(layer), nullptr);
    }
    fabric.calculateTheValuesToDisplayInALayer(
        1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    short error = 0;
    EXPECT_EQ(fabric.findPieceAccordingIndex(3, &error), nullptr);
    EXPECT_EQ(error, k_error_index);
    EXPECT_EQ(fabric.firstPieceByStyle(3, &error), nullptr);
    EXPECT_EQ(error, k_error_missing);
    EXPECT_EQ(fabric.returnPlacementEfficiencyFactor(0, 10, 5), 0);
    EXPECT_EQ(fabric.returnPlacementEfficiencyFactor(10, 0, 5), 0);
}

TEST(Fabric, CountsThatDoNotFitAreTheLargestThatDo)
{
    CDbMarkerDrawing drawing;
    drawing.addLayer(QStringLiteral("1"));
    CDbFabricObject *fabric = drawing.addFabric(QStringLiteral("F"));
    for (int number = 0; number < 3; ++number) { // more than fits into 32 bits, too
        auto piece = std::make_unique<CDbPieceObject>(QStringLiteral("P"), short(1));
        for (int size = 1; size <= 32767; ++size) {
            piece->setOrderedQuantity({static_cast<short>(size), 1, true}, 32767);
        }
        fabric->addPiece(std::move(piece));
    }
    EXPECT_EQ(layerValues(*fabric, 1).toPlace, 32767);
    EXPECT_THROW(
        fabric->addPiece(std::make_unique<CDbPieceObject>(QString(), short(0))), std::out_of_range);
}

TEST(Fabric, WalksItsGroupsAndPiecesToTheirEnd)
{
    const auto document = fullMarker();
    const CDbFabricObject &fabric = *document->drawing()->getFabric(0);
    short error = -1;
    CDbGrPolysObject *first = fabric.layerFirstGrPolys(1);
    EXPECT_EQ(first->groupPlace(), PlacedOnMarker);
    CDbGrPolysObject *second = fabric.layerNextGrPolys(1, &error);
    EXPECT_EQ(second->groupPlace(), PlacedInStandBy);
    EXPECT_EQ(error, k_no_error);
    EXPECT_EQ(fabric.layerNextGrPolys(1, &error), nullptr);
    EXPECT_EQ(fabric.layerNextGrPolys(1, &error), nullptr);
    EXPECT_EQ(error, k_no_error);
    EXPECT_EQ(fabric.layerFirstGrPolys(1), first);
    EXPECT_EQ(fabric.layerNextGrPolys(5, &error), nullptr);
    EXPECT_EQ(error, k_error_index);

    CDbPieceObject *front = fabric.firstPieceByStyle(2, &error);
    EXPECT_EQ(front->getName(), QStringLiteral("FRONT"));
    EXPECT_EQ(front->getNextPiece()->getName(), QStringLiteral("POCKET"));
    EXPECT_EQ(front->getNextPiece()->getNextPiece(), nullptr);
    EXPECT_TRUE(fabric.isFabricInvolvedByStyle(1));
    EXPECT_FALSE(document->drawing()->getFabric(1)->isFabricInvolvedByStyle(1));
}

TEST(Piece, ChartCountsWhatIsLeftOnEachSideOfASizeAndLayer)
{
    const auto document = fullMarker();
    const CDbPieceObject &front =
        *document->drawing()->getFabric(0)->findPieceAccordingIndex(1, nullptr);
    struct Case
    {
        short size;
        bool left;
        short layer;
        short expected;
    };
    // Size 1 left has both in stand-by; size 2 has its left and one of three right placed.
    for (const Case &row :
        {Case{1, true, 1, 0}, Case{1, false, 1, 0}, Case{2, true, 1, 0}, Case{2, false, 1, 2},
            Case{1, false, 2, 4}, Case{3, true, 1, 0}, Case{1, true, 3, 0}}) {
        EXPECT_EQ(front.getQtyPieceSizeLayer(row.size, row.left, row.layer), row.expected)
            << row.size << row.left << row.layer;
    }
    EXPECT_EQ(front.getPieceSize(3).sizeNumber, 0);
    EXPECT_EQ(front.getPieceSize(0).sizeRect.width(), 0);
}

TEST(Style, FindsQuantitiesAndNamesByThePiecesOwnOrderOfSizes)
{
    const auto document = fullMarker();
    const CDbMarkerDrawing &drawing = *document->drawing();
    const CDbFabricObject *fabric = drawing.getFabric(0);
    const CDbPieceObject *front = fabric->findPieceAccordingIndex(1, nullptr);
    short error = -1;
    const CDbStyleSizeObjectTable *sizes = drawing.findSizesList(1, 1, &error);
    EXPECT_EQ(error, k_no_error);
    // The piece has 40 first, the style 38.
    EXPECT_EQ(sizes->quantityClothingBySize(fabric, 1, front, 1), 2);
    EXPECT_EQ(sizes->quantityClothingBySize(fabric, 1, front, 2), 1);
    EXPECT_EQ(sizes->quantityClothingBySize(fabric, 1, nullptr, 1), 1);
    EXPECT_EQ(sizes->quantityClothingBySize(fabric, 2, front, 1), 0);
    EXPECT_EQ(sizes->quantityClothingBySize(fabric, 3, front, 1), 0);
    EXPECT_EQ(sizes->quantityClothingBySize(fabric, 1, front, 3), 0);
    EXPECT_EQ(sizes->quantityClothingBySize(drawing.getFabric(1), 1, front, 1), 0);

    QString name;
    QString special;
    front->returnsSizeAndNameAccordingTypeSize(sizes, 2, name, special, &error);
    EXPECT_EQ(name, QStringLiteral("S"));
    EXPECT_EQ(special, QStringLiteral("short"));
    front->returnsSizeAndNameAccordingTypeSize(sizes, 3, name, special, &error);
    EXPECT_EQ(error, k_error_index);
    front->returnsSizeAndNameAccordingTypeSize(nullptr, 1, name, special, &error);
    EXPECT_EQ(error, k_error_missing);

    for (const auto &[style, number] : {std::pair<short, short>(2, 1), {-1, 1}, {1, 0}, {1, 3}}) {
        EXPECT_EQ(drawing.findSizesList(style, number, &error), nullptr);
        EXPECT_EQ(error, k_error_index);
    }
}

TEST(Drawing, KeepsBothIndexCustoms)
{
    const auto document = fullMarker();
    const CDbMarkerDrawing &drawing = *document->drawing();
    EXPECT_EQ(drawing.getFabric(1)->fabricName, QStringLiteral("Rib"));
    EXPECT_EQ(drawing.getFabric(2), nullptr);
    EXPECT_EQ(drawing.getFabric(-1), nullptr);
    EXPECT_EQ(drawing.getStyle(2), nullptr);
    EXPECT_EQ(drawing.getFabricsTable().findFabricIndex(drawing.getFabric(1)), 2);
    EXPECT_EQ(drawing.getFabricsTable().findFabricIndex(nullptr), 0);
    // getStyle counts from 0, firstPieceByStyle from 1.
    EXPECT_EQ(drawing.getStyle(1)->getStyleName(), QStringLiteral("TEE"));
    EXPECT_EQ(drawing.getFabric(0)->firstPieceByStyle(2, nullptr)->getStyleNo(), 2);

    short error = -1;
    EXPECT_TRUE(drawing.getLayerObjectTable().isPlacementInTheFabric(drawing.getFabric(0), &error));
    EXPECT_EQ(error, k_no_error);
    EXPECT_FALSE(
        drawing.getLayerObjectTable().isPlacementInTheFabric(drawing.getFabric(1), &error));
    EXPECT_FALSE(drawing.getLayerObjectTable().isPlacementInTheFabric(nullptr, &error));
    EXPECT_EQ(error, k_error_missing);
}

TEST(Drawing, RefusesLayersAndFabricsThatComeTooLate)
{
    CDbMarkerDrawing drawing;
    EXPECT_EQ(drawing.drawingName(), QStringLiteral("Untitled"));
    drawing.addLayer(QStringLiteral("1"));
    drawing.addFabric(QStringLiteral("F"));
    EXPECT_THROW(drawing.addLayer(QStringLiteral("2")), std::logic_error);
    drawing.addStyle(QStringLiteral("S"), QString(), {{1, QStringLiteral("one"), QString()}});
    EXPECT_THROW(drawing.addFabric(QStringLiteral("G")), std::logic_error);
    EXPECT_FALSE(SummaryInfo::isValidStamped(drawing.summaryInfo().dateStamp));
    EXPECT_FALSE(SummaryInfo::isValidStamped(QDateTime()));
}

} // namespace
} // namespace KivSystem
