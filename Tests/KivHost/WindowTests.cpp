// The main window, as a user works with it.

#include "Window/HostWindow.h"

#include "CommandLine.h"
#include "HostTestSupport.h"
#include "KivCore/Application.h"
#include "KivCore/Locale.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Links.h"
#include "KivMarker/ShareGlobales.h"
#include "MarkerFacts.h"
#include "PluginLoader.h"
#include "ScriptedUserInterface.h"
#include "Verbs.h"
#include "Window/MarkerChild.h"
#include "Window/MarkerItems.h"
#include "Window/MarkerScene.h"
#include "Window/MarkerView.h"
#include "Window/PieceList.h"
#include "Window/PieceName.h"
#include "Window/Ruler.h"
#include "Window/WindowUserInterface.h"
#include "Window/ZentrimView.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QGraphicsPathItem>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>
#include <QWheelEvent>

#include <sstream>

namespace KivSystem {
namespace {

const QString kTshirt = QStringLiteral(KIV_SOURCE_DIR "/Samples/tshirt.mar");
const QString kTrousers = QStringLiteral(KIV_SOURCE_DIR "/Samples/trousers.mar");

// A square piece of so many cm, its corner at 0.
std::unique_ptr<CDbPolygon> square(double side, const CDbVectorsObjectTable &inside = {})
{
    PieceShape shape;
    shape.contour = {{0, 0}, {side, 0}, {side, side}, {0, side}};
    shape.internalPoints = inside;
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

class WindowTest : public testing::Test
{
protected:
    WindowTest()
    {
        QSettings().clear();
        auto owned = std::make_unique<ScriptedUserInterface>();
        user = owned.get();
        application = std::make_unique<KivApplication>(std::move(owned), QDir());
        restart();
    }

    ~WindowTest() override
    {
        window.reset();
        QSettings().clear();
        CDbMarkerShareGlobales::instance()->setZentrimActif(false);
    }

    void restart()
    {
        if (window) {
            window->close();
        }
        window = std::make_unique<HostWindow>();
        user->window = window.get();
        window->show();
        QApplication::processEvents();
    }

    MarkerChild &open(const QString &path)
    {
        EXPECT_TRUE(window->openFile(path)) << path;
        QApplication::processEvents();
        return *window->activeMarker();
    }

    QAction &action(const char *name)
    {
        return *window->findChild<QAction *>(QString::fromLatin1(name));
    }

    void close()
    {
        window->mdiArea()->closeActiveSubWindow();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    Folder folder;
    ScriptedUserInterface *user = nullptr; // owned by the application
    std::unique_ptr<KivApplication> application;
    std::unique_ptr<HostWindow> window;
};

TEST_F(WindowTest, TheStatusLineHasTheValuesOfTheInfoVerb)
{
    for (const LengthUnit unit : {LengthUnit::Centimetre, LengthUnit::Inch}) {
        KivConventions conventions;
        conventions.length = unit;
        KivLocale::setApplicationConventions(conventions);
        for (const QString &path : {kTshirt, kTrousers}) {
            KeptConsole kept;
            InfoOptions options;
            options.marker = path;
            QSettings().setValue("units/length", unitSymbol(unit));
            ASSERT_EQ(showInfo(options, kept.console), ExitDone);
            MarkerChild &child = open(path);
            child.refresh();
            for (const QString &status : child.statusText().split("   |   ")) {
                // "Layer 1: length 1 cm, width 2 cm, efficiency 3%, ..."
                const QString name = status.section(": ", 0, 0);
                const QStringList parts = status.section(": ", 1).split(", ");
                const QString told = QString("layer \"%1\": %2, %3, %4, garments ")
                                         .arg(name, parts.value(1), parts.value(0), parts.value(2));
                EXPECT_TRUE(kept.out.contains(told)) << told << kept.out;
            }
        }
    }
    KivLocale::setApplicationConventions({});
}

TEST_F(WindowTest, LayersLieSideBySideAndStandByGroupsAboveTheFabric)
{
    const MarkerChild &child = open(kTshirt);
    const CDbMarkerDrawing &drawing = *child.document().drawing();
    const CDbFabricObject &fabric = *drawing.getFabric(0);
    const std::vector<LaidLayer> laid = drawing.laidLayers(&fabric);
    ASSERT_EQ(laid.size(), 2U);
    int standBy = 0;
    for (const ScenePiece &piece : child.scene()->pieces()) {
        const QRectF place = piece.item->mapRectToScene(piece.item->shape().boundingRect());
        const LaidLayer &layer = laid.at(static_cast<std::size_t>(piece.layer - 1));
        EXPECT_GE(place.left(), layer.start - 0.01);
        EXPECT_LE(place.right(), layer.start + layer.length + 0.01);
        if (piece.standBy) {
            ++standBy;
            EXPECT_GT(place.top(), fabric.getFabricLayerWidth(piece.layer));
        } else {
            EXPECT_LE(place.bottom(), fabric.getFabricLayerWidth(piece.layer) + 0.01);
        }
    }
    EXPECT_EQ(standBy, layerFacts(fabric, 1).standBy + layerFacts(fabric, 2).standBy);
    EXPECT_GT(standBy, 0);
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

TEST_F(WindowTest, TheListSelectsOnTheDrawingAndTheDrawingInTheList)
{
    MarkerChild &child = open(kTshirt);
    QTreeWidget &placed = *child.pieceList()->placedTree();
    placed.setCurrentItem(placed.topLevelItem(3));
    ASSERT_EQ(child.scene()->selectedPieces().size(), 1U);
    const ScenePiece &listed =
        child.scene()->pieces()[static_cast<std::size_t>(child.scene()->selectedPieces()[0])];
    EXPECT_EQ(listed.name, placed.topLevelItem(3)->text(PieceList::PieceColumn));
    EXPECT_EQ(listed.size, placed.topLevelItem(3)->text(PieceList::SizeColumn));

    // A click on each piece that is seen selects its row, of the other tab for one in stand-by.
    for (std::size_t i = 0; i < child.scene()->pieces().size(); ++i) {
        const ScenePiece &piece = child.scene()->pieces()[i];
        const CDbVectorsObjectTable &outline = *piece.polygon->currentContour();
        CDbMarkerPointObject centre;
        CDbTextObject::computationTextCenter(&centre, &outline, piece.polygon->polygonRect);
        const QPointF place = piece.item->mapToScene(
            static_cast<double>(centre.notchDx), static_cast<double>(centre.notchDy));
        QTest::mouseClick(child.view()->viewport(), Qt::LeftButton, Qt::NoModifier,
            child.view()->mapFromScene(place));
        ASSERT_EQ(child.pieceList()->selectedPieces(), std::vector<int>{static_cast<int>(i)});
        const QTreeWidget *tree = piece.standBy ? child.pieceList()->toPlaceTree() : &placed;
        ASSERT_EQ(tree->selectedItems().size(), 1);
        EXPECT_EQ(tree->selectedItems()[0]->text(PieceList::SideColumn), piece.side);
        EXPECT_TRUE(piece.item->toolTip().contains(
            QString("%1, %2, %3").arg(piece.name, piece.size, piece.side)));
    }
    // From one tab to the other; a row of the chart is no piece on the drawing, and stays selected.
    QTreeWidget &toPlace = *child.pieceList()->toPlaceTree();
    placed.setCurrentItem(placed.topLevelItem(3));
    for (int i = 0; i < toPlace.topLevelItemCount(); ++i) {
        toPlace.setCurrentItem(toPlace.topLevelItem(i));
        EXPECT_EQ(toPlace.selectedItems(), QList<QTreeWidgetItem *>{toPlace.topLevelItem(i)});
        EXPECT_TRUE(placed.selectedItems().isEmpty());
        EXPECT_EQ(child.scene()->selectedPieces(), child.pieceList()->selectedPieces());
    }
    action("selectAll").trigger();
    EXPECT_EQ(child.scene()->selectedPieces().size(), child.scene()->pieces().size());
    EXPECT_EQ(placed.selectedItems().size(), placed.topLevelItemCount());
    action("selectNone").trigger();
    EXPECT_TRUE(child.pieceList()->selectedPieces().empty());
}

TEST_F(WindowTest, SwitchingTheFabricShowsItsPiecesAndMakesItCurrent)
{
    MarkerChild &child = open(kTshirt);
    CDbMarkerDrawing &drawing = *child.document().drawing();
    ASSERT_GT(drawing.getFabricsQty(), 1);
    ASSERT_EQ(child.fabric(), 1);
    QTest::keyClick(child.view(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(child.fabric(), 2);
    EXPECT_EQ(child.fabricBox()->currentIndex(), 1);
    EXPECT_EQ(drawing.currentFabric, 2);
    const CDbFabricObject &fabric = *drawing.getFabric(1);
    qint64 placed = 0;
    qint64 left = 0;
    for (const PieceFacts &facts : pieceFacts(drawing, fabric)) {
        placed += facts.placed;
        left += facts.left;
    }
    int quantity = 0;
    const QTreeWidget &toPlace = *child.pieceList()->toPlaceTree();
    for (int i = 0; i < toPlace.topLevelItemCount(); ++i) {
        quantity += toPlace.topLevelItem(i)->text(PieceList::QuantityColumn).toInt();
    }
    EXPECT_EQ(child.pieceList()->placedTree()->topLevelItemCount(), placed);
    EXPECT_EQ(quantity,
        left + static_cast<int>(child.scene()->pieces().size()) - static_cast<int>(placed));
    child.fabricBox()->setCurrentIndex(0);
    EXPECT_EQ(drawing.currentFabric, 1);
}

TEST_F(WindowTest, TheWheelZoomsAboutTheMouseAndTheMiddleButtonPans)
{
    MarkerView &view = *open(kTshirt).view();
    const double fitted = view.zoom();
    EXPECT_TRUE(view.mapToScene(view.viewport()->rect()).boundingRect().contains(view.sceneRect()));

    const QPoint mouse = view.viewport()->rect().center() + QPoint(120, 40);
    const QPointF before = view.mapToScene(mouse);
    for (int i = 0; i < 6; ++i) {
        QWheelEvent wheel(mouse, view.viewport()->mapToGlobal(mouse), {}, {0, 120}, Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &wheel);
    }
    EXPECT_GT(view.zoom(), 3 * fitted);
    EXPECT_LT(QLineF(view.mapToScene(mouse), before).length() * view.zoom(), 4); // pixels

    const QPoint there = mouse - QPoint(50, 30);
    const auto send = [&](QEvent::Type type, const QPoint &place, Qt::MouseButtons down) {
        QMouseEvent event(type, place, Qt::MiddleButton, down, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    };
    send(QEvent::MouseButtonPress, mouse, Qt::MiddleButton);
    send(QEvent::MouseMove, there, Qt::MiddleButton);
    send(QEvent::MouseButtonRelease, there, Qt::NoButton);
    send(QEvent::MouseMove, mouse, Qt::NoButton);
    EXPECT_LT(QLineF(view.mapToScene(there), before).length() * view.zoom(), 4);

    QTest::keyClick(&view, Qt::Key_F);
    EXPECT_NEAR(view.zoom(), fitted, 1e-9);
    window->resize(window->width() * 3 / 4, window->height());
    QApplication::processEvents();
    EXPECT_LT(view.zoom(), fitted) << "what is fitted stays so";
}

TEST_F(WindowTest, MarksOfTheRulerAreRoundNumbersApart)
{
    const struct
    {
        double pixels;
        double distance;
    } cases[] = {
        {64, 1}, {63.9, 2}, {32, 2}, {31, 5}, {12.8, 5}, {12.7, 10}, {640, 0.1}, {0.05, 2000}};
    for (const auto &entry : cases) {
        EXPECT_DOUBLE_EQ(Ruler::markDistance(entry.pixels, 64), entry.distance) << entry.pixels;
    }
}

TEST_F(WindowTest, ADrawingCountsAsOptimisedWhileItsZentrimViewIsShown)
{
    QFile sample(kTshirt);
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
    const QString path = folder.write(
        "tshirt.mar", sample.readAll().replace("\"optimised\": true", "\"optimised\": false"));
    const auto isActive = [] { return CDbMarkerShareGlobales::instance()->getZentrimActif(); };
    MarkerChild &tshirt = open(path);
    const bool &tshirtOptimised = tshirt.document().drawing()->zentrimActif;
    EXPECT_FALSE(tshirtOptimised || isActive());
    QTest::keyClick(tshirt.view(), Qt::Key_F9);
    ASSERT_TRUE(tshirt.isZentrimView());
    EXPECT_TRUE(tshirtOptimised && isActive() && action("zentrim").isChecked());
    const auto *scene = qobject_cast<ZentrimScene *>(tshirt.view()->scene());
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(scene->objectCount(), tshirt.pieceList()->placedTree()->topLevelItemCount());

    // A drawing beside it does not, and the view is active all the same: cut formats ask.
    MarkerChild &trousers = open(kTrousers);
    const bool &trousersOptimised = trousers.document().drawing()->zentrimActif;
    EXPECT_TRUE(isActive() && tshirtOptimised);
    EXPECT_FALSE(trousersOptimised || action("zentrim").isChecked());
    trousers.setZentrimView(true);
    EXPECT_TRUE(trousersOptimised);

    // Each lets go for itself, also when it is closed.
    window->openFile(path);
    close();
    EXPECT_EQ(window->activeMarker(), &trousers);
    EXPECT_TRUE(trousersOptimised && isActive());
    action("zentrim").trigger();
    EXPECT_FALSE(trousersOptimised || isActive() || trousers.isZentrimView());
    EXPECT_EQ(trousers.view()->scene(), trousers.scene());
    action("zentrim").trigger();
    EXPECT_TRUE(isActive());
    close();
    EXPECT_FALSE(isActive());
}

template <class Item>
std::vector<const Item *> visibleItems(const QGraphicsScene &scene)
{
    std::vector<const Item *> found;
    for (const QGraphicsItem *item : scene.items()) {
        const auto *wanted = dynamic_cast<const Item *>(item);
        if (wanted != nullptr && wanted->isVisible()) {
            found.push_back(wanted);
        }
    }
    return found;
}

TEST_F(WindowTest, ZentrimDrawsTheIdleWaysThatItCountsAndObeysTheViewOptions)
{
    CDbMarkerShareGlobales &globals = *CDbMarkerShareGlobales::instance();
    MarkerChild &child = open(kTrousers);
    const CutSettings before = globals.cutSettings();
    CutSettings settings = before;
    settings.cutOrderCrans = NotchDuringOutline;
    settings.cutExternalPunchHoles = true;
    settings.cutFabricEdge = true;
    settings.penCutInfos = true;
    settings.cutFusing = NC::CutBlockOutlineOnly; // outlines of blocks around those of pieces
    settings.miniCutFileBlock = true;
    globals.setCutSettings(settings);
    child.setZentrimView(true);
    const auto *scene = qobject_cast<ZentrimScene *>(child.view()->scene());
    ASSERT_NE(scene, nullptr);
    double idle = 0;
    for (const auto *path : visibleItems<QGraphicsPathItem>(*scene)) {
        idle += path->pen().style() == Qt::DashLine ? path->path().length() : 0;
    }
    const QString told = KivLocale().formatLength(idle, KivLocale::WithUnit);
    EXPECT_TRUE(scene->summary().contains("idle " + told + ",")) << told << scene->summary();

    const auto texts = visibleItems<SceneTextItem>(*scene).size();
    const auto lines = visibleItems<QGraphicsPathItem>(*scene).size();
    SceneOptions options;
    options.texts = options.notches = false;
    for (int round = 0; round < 2; ++round) { // also in a scene that comes up with them
        child.setOptions(options);
        child.setZentrimView(round == 0);
        child.setZentrimView(true);
        scene = qobject_cast<ZentrimScene *>(child.view()->scene());
        const auto numbers = visibleItems<SceneTextItem>(*scene);
        EXPECT_LT(visibleItems<QGraphicsPathItem>(*scene).size(), lines);
        EXPECT_LT(numbers.size(), texts);
        ASSERT_EQ(numbers.size(), static_cast<std::size_t>(scene->objectCount()));
        for (const SceneTextItem *one : numbers) {
            for (const SceneTextItem *other : numbers) {
                const QPointF way = one->boundingRect().center() - other->boundingRect().center();
                EXPECT_TRUE(one == other || way.manhattanLength() > 2); // cm
            }
        }
    }
    child.setOptions({});
    EXPECT_EQ(visibleItems<SceneTextItem>(*scene).size(), texts);
    globals.setCutSettings(before);
}

TEST_F(WindowTest, AMarkerThatWasStoredOptimisedStaysSo)
{
    QByteArray bytes = smallMarker();
    bytes.insert(1, "\"optimised\": true, ");
    MarkerChild &child = open(folder.write("small.mar", bytes));
    ASSERT_TRUE(child.document().drawing()->zentrimActif);
    child.setZentrimView(true);
    child.setZentrimView(false);
    EXPECT_TRUE(child.document().drawing()->zentrimActif);
    EXPECT_FALSE(CDbMarkerShareGlobales::instance()->getZentrimActif());
}

TEST_F(WindowTest, AFabricThatMustNotBeCutTellsWhyInItsZentrimView)
{
    QByteArray bytes = smallMarker();
    bytes.replace("\"y\": 1}", "\"y\": 140}"); // reaches beyond the cloth
    MarkerChild &child = open(folder.write("wide.mar", bytes));
    child.setZentrimView(true);
    const auto *scene = qobject_cast<ZentrimScene *>(child.view()->scene());
    ASSERT_NE(scene, nullptr);
    EXPECT_TRUE(scene->isRefused());
    EXPECT_EQ(scene->objectCount(), 0);
    EXPECT_TRUE(scene->messages().join(' ').contains("Front")) << scene->messages().join(' ');
    EXPECT_TRUE(user->warnings.empty());
    child.showFabric(2); // nothing lies there, which is no reason to refuse it
    scene = qobject_cast<ZentrimScene *>(child.view()->scene());
    EXPECT_FALSE(scene->isRefused());
    EXPECT_EQ(scene->messages().size(), 1);
}

TEST_F(WindowTest, WhatCannotBeOpenedIsOneSentenceAndTheWindowGoesOn)
{
    folder.write("small.mar", smallMarker());
    QDir().mkpath(folder.path("folder.mar"));
    const struct
    {
        QString path;
        QString sentence; // how it begins, behind the file's name
    } cases[] = {
        {folder.path("none.mar"), ": there is no such file"},
        {folder.path("folder.mar"), ": is a directory"},
        {folder.write("broken.mar", smallMarker().left(300)), ": "},
        {folder.write("picture.png", "\x89PNG"), ": "},
        {folder.write("empty.mar", ""), ": "},
    };
    for (const auto &entry : cases) {
        user->warnings.clear();
        EXPECT_FALSE(window->openFile(entry.path)) << entry.path;
        ASSERT_EQ(user->warnings.size(), 1U) << entry.path;
        const QString message = user->warnings[0].message;
        EXPECT_TRUE(message.startsWith(entry.path + entry.sentence)) << message;
        EXPECT_FALSE(message.contains('\n')) << message;
    }
    EXPECT_TRUE(window->recentFiles().isEmpty());
    EXPECT_TRUE(window->mdiArea()->subWindowList().isEmpty());
    open(folder.path("small.mar"));
    EXPECT_EQ(window->activeMarker()->pieceList()->placedTree()->topLevelItemCount(), 1);

    // A file that breaks while it is open leaves the marker as it was.
    folder.write("small.mar", "{");
    user->warnings.clear();
    action("reload").trigger();
    EXPECT_EQ(user->warnings.size(), 1U);
    EXPECT_NE(window->activeMarker(), nullptr);
}

TEST_F(WindowTest, WithoutAPlugInNothingIsExported)
{
    open(kTshirt);
    EXPECT_FALSE(action("export").isEnabled());
    EXPECT_TRUE(action("export").toolTip().contains("plug-in"));
    window->setExporterFactory(&loadPlugin(QDir(QStringLiteral(KIV_BINARY_DIR "/bin/plugins"))));
    EXPECT_TRUE(action("export").isEnabled());
    close();
    EXPECT_FALSE(action("export").isEnabled()) << "there is no marker";
    EXPECT_FALSE(action("fit").isEnabled());
}

TEST_F(WindowTest, ExportAndSettingsOpenTheirDialogs)
{
    application.reset();
    KivApplication withWindow(std::make_unique<WindowUserInterface>(window.get()), QDir());
    window->setExporterFactory(&loadPlugin(QDir(QStringLiteral(KIV_BINARY_DIR "/bin/plugins"))));
    MarkerChild &child = open(kTshirt);
    for (const char *name : {"export", "settings"}) {
        QString opened;
        QTimer::singleShot(0, window.get(), [&opened] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            opened = dialog != nullptr ? dialog->objectName() : QString();
            if (dialog != nullptr) {
                dialog->reject();
            }
        });
        action(name).trigger();
        EXPECT_EQ(opened, QString(name) + "Dialog");
    }
    EXPECT_EQ(window->activeMarker(), &child);

    // What the dialog stores is shown everywhere.
    QSettings().setValue("units/length", "mm");
    window->applySettings();
    EXPECT_TRUE(child.statusText().contains(" mm, ")) << child.statusText();
    QSettings().remove("units/length");
    window->applySettings();
    window->close();
}

TEST_F(WindowTest, RecentFilesAndTheWindowsStateSurviveARestart)
{
    open(kTshirt);
    open(kTrousers);
    open(kTshirt); // is there already: no second child
    EXPECT_EQ(window->mdiArea()->subWindowList().size(), 2);
    action("fillByStyle").trigger();
    action("pieceList").trigger();
    window->resize(777, 555);
    window->findChild<QToolBar *>("tools")->hide();
    QApplication::processEvents();
    // Not even a crash may lose what was chosen.
    EXPECT_EQ(QSettings().value("window/fill").toInt(), SceneOptions::ByStyle);
    EXPECT_EQ(QSettings().value("window/show_pieceList").toBool(), false);

    restart();
    EXPECT_EQ(window->recentFiles(), (QStringList{kTrousers, kTshirt}));
    EXPECT_EQ(window->size(), QSize(777, 555));
    EXPECT_TRUE(window->findChild<QToolBar *>("tools")->isHidden());
    EXPECT_TRUE(action("fillByStyle").isChecked());
    const MarkerChild &child = open(kTshirt);
    EXPECT_TRUE(child.pieceList()->isHidden());
    EXPECT_EQ(window->recentFiles().first(), kTshirt);
    for (int i = 0; i < 12; ++i) {
        open(folder.write(QString("%1.mar").arg(i), smallMarker()));
    }
    EXPECT_EQ(window->recentFiles().size(), 10);
    EXPECT_EQ(window->recentFiles().first(), folder.path("11.mar"));
}

TEST_F(WindowTest, FilesAreDroppedOnTheWindow)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(kTshirt), QUrl::fromLocalFile(kTrousers),
        QUrl("https://example.org/a.mar")});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(window->mdiArea()->subWindowList().size(), 2);
    EXPECT_TRUE(user->warnings.empty());
}

TEST_F(WindowTest, EveryActionHasAKeyAndAToolTipAndNoKeyTwice)
{
    QStringList keys;
    for (const QAction *entry : window->findChildren<QAction *>()) {
        if (entry->objectName().isEmpty() || entry->isSeparator()) {
            continue; // of the tool bar itself
        }
        EXPECT_TRUE(entry->text().contains('&')) << entry->text();
        EXPECT_FALSE(entry->shortcut().isEmpty()) << entry->text();
        EXPECT_NE(entry->toolTip(), entry->text().remove('&')) << entry->text();
        EXPECT_FALSE(keys.contains(entry->shortcut().toString())) << entry->text();
        keys.append(entry->shortcut().toString());
    }
    EXPECT_GT(keys.size(), 20);
}

TEST(WindowCommandLine, FilesInPlaceOfAVerbAreForTheWindow)
{
    const Folder folder;
    const QByteArray odd = folder.write("notes", "x").toUtf8();
    const struct
    {
        std::vector<const char *> arguments;
        bool window;
        QStringList files;
    } cases[] = {
        {{}, true, {}},
        {{"a.mar"}, true, {"a.mar"}},
        {{"a.cut", "b.DXF", "-c.ai"}, false, {}}, // -c.ai is an option that there is not
        {{"a.cut", "b.DXF", "notes"}, true, {"a.cut", "b.DXF", "notes"}},
        {{"--", "-c.ai"}, true, {"-c.ai"}},
        {{"--plugins", "info", "a.txt"}, true, {"a.txt"}},
        {{odd.constData()}, true, {QString::fromUtf8(odd)}},
        {{"fly"}, false, {}},
        {{"info"}, false, {}},
        {{"info", "a.mar"}, false, {}},
    };
    for (const auto &entry : cases) {
        std::vector<const char *> arguments = {"kivhost"};
        arguments.insert(arguments.end(), entry.arguments.begin(), entry.arguments.end());
        std::ostringstream out;
        const CommandLine line =
            parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, out);
        const auto *window = std::get_if<WindowOptions>(&line.verb);
        EXPECT_EQ(window != nullptr && !line.exitStatus, entry.window) << arguments.back();
        EXPECT_EQ(window != nullptr ? window->files : QStringList(), entry.files)
            << arguments.back() << out.str();
    }

    // Nothing opens where nothing can be seen.
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const QByteArray display = qgetenv("DISPLAY");
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("DISPLAY");
    const char *const arguments[] = {"kivhost", "a.mar"};
    for (const int count : {1, 2}) {
        std::ostringstream out;
        EXPECT_EQ(parseCommandLine(count, arguments, out, out).exitStatus, int(ExitWrongUsage));
    }
    qputenv("QT_QPA_PLATFORM", platform);
    if (!display.isEmpty()) {
        qputenv("DISPLAY", display);
    }
}

} // namespace
} // namespace KivSystem
