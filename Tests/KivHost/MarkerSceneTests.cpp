// What is drawn of a fabric.

#include "Window/MarkerScene.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Links.h"
#include "MarkerFacts.h"
#include "Verbs.h"
#include "Window/PieceName.h"
#include "WindowTestSupport.h"

#include <QPainter>

namespace KivSystem {
namespace {

// A square piece of so many cm, its corner at 0.
std::unique_ptr<CDbPolygon> square(double side, const CDbVectorsObjectTable &inside = {},
    const std::vector<InternalLine> &lines = {})
{
    PieceShape shape;
    shape.contour = {{0, 0}, {side, 0}, {side, side}, {0, side}};
    shape.internalPoints = inside;
    shape.internalLines = lines;
    auto polygon = std::make_unique<CDbPolygon>(short(1), short(1), true);
    polygon->setOwnShape(shape, Placement());
    return polygon;
}

QImage imageOf(QGraphicsScene &scene, const QRectF &rect, double pixelsPerCm)
{
    QImage image((rect.size() * pixelsPerCm).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(0, image.height());
    painter.scale(1, -1); // y of a scene is upward
    scene.render(&painter, image.rect(), rect);
    return image;
}

bool isInked(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(WindowTest, LayersLieSideBySideByRankAndStandByGroupsAboveTheFabric)
{
    for (const auto &[path, first] : {std::pair(kTshirt, 1), std::pair(kTrousers, 2)}) {
        const MarkerChild &child = open(path);
        const CDbFabricObject &fabric = *child.document().drawing()->getFabric(0);
        int standBy = 0;
        short layer = 1;
        for (const ScenePiece &piece : child.scene()->pieces()) {
            const QRectF place = piece.item->mapRectToScene(piece.item->shape().boundingRect());
            const double start =
                piece.layer == first ? 0 : fabric.getLengthOccupiedLayer(static_cast<short>(first));
            EXPECT_GE(place.left(), start - 0.01);
            EXPECT_LE(place.right(), start + fabric.getLengthOccupiedLayer(piece.layer) + 0.01);
            if (piece.standBy) {
                ++standBy;
                EXPECT_GT(place.top(), fabric.getFabricLayerWidth(piece.layer));
            } else {
                EXPECT_LE(place.bottom(), fabric.getFabricLayerWidth(piece.layer) + 0.01);
            }
            EXPECT_GE(piece.layer, layer) << "in the order of the file";
            layer = piece.layer;
        }
        EXPECT_EQ(standBy, layerFacts(fabric, 1).standBy + layerFacts(fabric, 2).standBy);
        EXPECT_EQ(standBy > 0, path == kTshirt);
        EXPECT_EQ(layer, 2);
    }
}

TEST(MarkerScene, WhatReachesBeyondAPieceLiesOverItsNeighbour)
{
    const Folder folder;
    QByteArray bytes = smallMarker(); // with a notch that is 3 cm long, to the right
    bytes.replace("[10, 0],", R"([10, 0], {"x": 10, "y": 8, "type": "simpleNotch", "notch": [3, 0]},
        [10, 12],)");
    bytes.replace(R"("x": 5, "y": 1})", R"("x": 5, "y": 1,
        "images": [{"x": 14, "y": 2, "width": 4, "height": 2}],
        "texts": [{"lines": ["P"], "section": "margin", "x": 8, "y": 4}]},
        {"piece": 1, "size": 1, "x": 15, "y": 1})");
    bytes.replace(R"("width": 150,)", R"("width": 150,
        "texts": [{"lines": ["H"], "section": "header", "x": 8, "y": 4}],)");
    const auto document = loadMarker(folder.write("a.mar", bytes));
    SceneOptions options;
    MarkerScene scene(*document->drawing(), *document->drawing()->getFabric(0), options);
    QStringList texts;
    for (const QGraphicsItem *item : scene.items()) {
        if (const auto *text = dynamic_cast<const SceneTextItem *>(item)) {
            texts += text->text().lines;
        }
    }
    texts.sort();
    EXPECT_EQ(texts, QStringList({"Layer A", "P"})) << "the section is for texts of layers alone";
    for (const bool shown : {true, false}) {
        options.texts = false;
        options.notches = shown;
        scene.setOptions(options);
        EXPECT_EQ(isInked(imageOf(scene, {16, 8.5, 1, 1}, 20)), shown) << "notch";
        EXPECT_EQ(isInked(imageOf(scene, {17.5, 2.5, 1, 1}, 20)), shown) << "frame of the image";
    }
}

TEST(MarkerScene, APictureHasTheMarkerInItsMiddle)
{
    const Folder folder;
    KeptConsole kept;
    RenderOptions options;
    options.file = folder.write("a.mar", smallMarker());
    options.output = folder.path("a.png");
    options.size = "900x300";
    ASSERT_EQ(renderPicture(options, kept.console), ExitDone);
    const QImage image(options.output);
    EXPECT_FALSE(isInked(image.copy(0, 0, 300, 300)));
    EXPECT_TRUE(isInked(image.copy(300, 0, 300, 300)));
    EXPECT_FALSE(isInked(image.copy(600, 0, 300, 300)));
}

TEST(MarkerScene, LinksAreDrawnInTheirPatternAndDrillsInTheirFigure)
{
    const LinkEnd corner{false, 0};
    const LinkEnd next{false, 1};
    const struct
    {
        LinkObjectType kind;
        LinkEnd to;
        unsigned char line;
        double part;
        int strokes;
    } links[] = {
        {SewingLink, next, SolidTrait, 0, 1}, {TreeLink, next, DashedTrait, 1, 5},
        {TreeLink, next, DashedTrait, 0.001, 1}, // too fine to be seen
        {TreeLink, {true, 7}, SolidTrait, 0, 0}, // there is no such point
    };
    for (const auto &link : links) {
        const auto polygon = square(10);
        auto table = std::make_unique<CDbLinksObjectTable>();
        CDbLinkObject &added = table->addLink(link.kind, corner, link.to);
        added.traitFlag = link.line;
        added.traitTriple = {link.part, link.part, 0};
        polygon->setLinks(std::move(table));
        EXPECT_EQ(outlineOf(*polygon).links.toSubpathPolygons().size(), link.strokes) << link.part;
    }

    const struct
    {
        float PunchFeature::*size;
        QRectF extent; // of a figure of the size 2 at (5, 5), turned by a quarter
    } drills[] = {
        {&PunchFeature::punchBarLeft, {3, 4.8, 2, 0.4}},
        {&PunchFeature::punchBowTie, {4, 4.666667, 2, 0.666667}},
        {&PunchFeature::punchSquare, {4, 4, 2, 2}},
        {&PunchFeature::punchHalfDiscs, {4, 4, 1, 2}},
        {&PunchFeature::punchCorner, {3, 5, 2, 2}},
    };
    for (const auto &drill : drills) {
        PunchFeature punch;
        punch.*drill.size = 2;
        punch.punchMatrix = {0, 1, -1, 0};
        CDbMarkerPointObject point(5, 5, Punch);
        point.setPunch(punch);
        // On an internal line likewise.
        EXPECT_EQ(outlineOf(*square(10, {point})).drills,
            outlineOf(*square(10, {}, {{InternalLine::Kind::Draw, {point, {6, 5}}}})).drills);
        const QRectF extent = outlineOf(*square(10, {point})).drills.boundingRect();
        const QRectF off(extent.topLeft() - drill.extent.topLeft(),
            extent.bottomRight() - drill.extent.bottomRight());
        EXPECT_LT(std::abs(off.left()) + std::abs(off.top()) + std::abs(off.right()) +
                      std::abs(off.bottom()),
            0.001)
            << extent.left() << ' ' << extent.top() << ' ' << extent.width() << ' '
            << extent.height();
    }
}

TEST(MarkerScene, FoldsAndStripesOfTheClothAreShown)
{
    const auto document = loadMarker(KIV_SOURCE_DIR "/Tests/Golden/markers/plaid.mar");
    CDbFabricObject &fabric = *document->drawing()->getFabric(1);
    const std::pair<int, std::vector<double>> folds[] = {
        {PlainFabric, {}}, {FoldOnBottom, {0}}, {FoldOnTop, {70.5}}, {TubularFabric, {0, 70.5}}};
    for (const auto &[type, edges] : folds) {
        fabric.fabricType = type;
        std::vector<double> found;
        const MarkerScene scene(*document->drawing(), fabric, {});
        for (const QGraphicsItem *item : scene.items(Qt::AscendingOrder)) {
            if (item->toolTip() == "folded edge") {
                found.push_back(item->boundingRect().center().y());
            }
        }
        EXPECT_EQ(found, edges) << type;
    }

    // Every 6.25 cm from -0.5 on.
    fabric.fabricType = PlainFabric;
    for (const bool shown : {true, false}) {
        SceneOptions options;
        options.guideLines = shown;
        MarkerScene scene(*document->drawing(), fabric, options);
        const QImage image = imageOf(scene, {0.5, 0.25, 2, 70}, 10).mirrored();
        std::vector<int> rows;
        for (int y = 0; y < image.height(); ++y) {
            if (qGray(image.pixel(10, y)) < 220) {
                rows.push_back((y + 4) / 10); // 0.25 cm above the edge, and a little
            }
        }
        EXPECT_EQ(rows, shown ? std::vector<int>({5, 12, 18, 24, 30, 37, 43, 49, 55, 62, 68})
                              : std::vector<int>());
    }
}

TEST(MarkerScene, GuideLinesEndWithTheirLayer)
{
    const auto document = loadMarker(kTshirt);
    CDbMarkerDrawing &drawing = *document->drawing();
    FabricLayer &layer = *drawing.getFabric(0)->findLayer(1);
    const double length = drawing.laidLayers(drawing.getFabric(0)).at(0).length;
    for (const double part : {-0.1, 0.3, 1.1}) {
        layer.horizontalLines.addLine(part * layer.width, "along");
        layer.verticalLines.addLine(part * length, "across");
    }
    const MarkerScene scene(drawing, *drawing.getFabric(0), {});
    QStringList found;
    for (const QGraphicsItem *item : scene.items()) {
        if (item->toolTip() == "along" || item->toolTip() == "across") {
            found.append(item->toolTip());
            EXPECT_LT(item->boundingRect().right(), length + 1);
            EXPECT_LT(item->boundingRect().bottom(), layer.width + 1);
        }
    }
    found.sort();
    EXPECT_EQ(found, QStringList({"across", "along"}));
}

TEST(MarkerScene, AFusedGroupHasTheOutlineOfItsBlock)
{
    const auto document = loadMarker(kTshirt);
    CDbMarkerDrawing &drawing = *document->drawing();
    CDbGrPolysObject &group = *drawing.getFabric(0)->findLayer(1)->groups.front();
    const MarkerScene before(drawing, *drawing.getFabric(0), {});
    group.fusion(false, 0, true, 0.0001, 0, 0, 0, nullptr);
    ASSERT_TRUE(group.isAllPolysInFusion());
    const MarkerScene after(drawing, *drawing.getFabric(0), {});
    EXPECT_EQ(after.items().size(), before.items().size() + 1);
}

TEST(MarkerScene, ALayersNameIsNoLongerThanTheLayerAtAnyZoom)
{
    const auto document = loadMarker(kTshirt);
    CDbMarkerDrawing &drawing = *document->drawing();
    const QString name = QString("narrow roll ").repeated(40);
    drawing.getLayerObjectTable()[0]->layerName = name;
    MarkerScene scene(drawing, *drawing.getFabric(0), {});
    const double length = drawing.laidLayers(drawing.getFabric(0)).at(0).length;
    int seen = 0;
    for (const double zoom : {0.5, 5.0}) {
        imageOf(scene, scene.sceneRect(), zoom);
        for (const QGraphicsItem *item : scene.items()) {
            if (item->toolTip() == name) {
                ++seen;
                EXPECT_LE(item->shape().boundingRect().width(), length);
                EXPECT_GT(item->shape().boundingRect().width(), length / 2);
            }
        }
    }
    EXPECT_EQ(seen, 2);
}

TEST(MarkerScene, LettersFollowTheirPath)
{
    SceneText text;
    text.lines = QStringList{QString(12, 'M')};
    text.height = 2;
    text.path = {{{0, 20}, {20, 20}, {20, 20}, {20, 0}}};
    text.along = 20;
    QGraphicsScene scene;
    scene.addItem(new SceneTextItem(text, Qt::black));
    EXPECT_TRUE(isInked(imageOf(scene, {12, 18, 4, 4}, 10)));
    EXPECT_TRUE(isInked(imageOf(scene, {18, 12, 4, 4}, 10)));
    EXPECT_FALSE(isInked(imageOf(scene, {23, 0, 20, 40}, 10)));
    EXPECT_FALSE(isInked(imageOf(scene, {0, 0, 17, 17}, 10)));
}

TEST(MarkerScene, ANameStandsBesideTextsAndDrills)
{
    const auto plain = square(40);
    const QStringList lines{"Front", "M"};
    const QPointF middle(20, 20);
    const auto extent = [&](const CDbPolygon &polygon, const std::vector<QRectF> &texts) {
        return extentOf(pieceName(lines, polygon, outlineOf(polygon), texts));
    };
    EXPECT_TRUE(extent(*plain, {}).contains(middle));
    const auto drilled = square(40, {CDbMarkerPointObject(20, 20, Punch)});
    EXPECT_FALSE(extent(*drilled, {}).contains(middle));
    const QRectF text(10, 18, 20, 4);
    const QRectF beside = extent(*drilled, {text});
    EXPECT_FALSE(beside.intersects(text));
    EXPECT_TRUE(QRectF(0, 0, 40, 40).contains(beside));
    EXPECT_EQ(extent(*drilled, {QRectF(0, 0, 40, 40)}), extent(*plain, {})); // no room at all
}

} // namespace
} // namespace KivSystem
