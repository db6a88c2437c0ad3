// One marker in the window, as a user works with it.

#include "Window/MarkerChild.h"

#include "KivCore/Locale.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "MarkerFacts.h"
#include "Verbs.h"
#include "Window/MarkerItems.h"
#include "Window/MarkerScene.h"
#include "Window/MarkerView.h"
#include "Window/PieceList.h"
#include "Window/Ruler.h"
#include "Window/ZentrimView.h"
#include "WindowTestSupport.h"

#include <QComboBox>
#include <QGraphicsPathItem>
#include <QHeaderView>
#include <QTest>
#include <QTreeWidget>
#include <QWheelEvent>

namespace KivSystem {
namespace {

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
            QStringList layers = child.statusText().split("   |   ");
            EXPECT_EQ(layers.removeAll("stored as optimised"), path == kTshirt ? 1 : 0);
            for (const QString &status : layers) {
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
        EXPECT_EQ(tree->selectedItems()[0]->text(PieceList::LayerColumn),
            child.document().drawing()->getLayerObjectTable()[piece.layer - 1]->layerName +
                (piece.standBy ? " (stand-by)" : ""));
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

TEST_F(WindowTest, LettersThatAreTypedInAListAreSoughtThere)
{
    MarkerChild &child = open(kTshirt);
    QTreeWidget &placed = *child.pieceList()->placedTree();
    child.view()->zoomBy(4);
    const double zoom = child.view()->zoom();
    placed.setCurrentItem(placed.topLevelItem(0));
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier}) { // fit, fit the selection
        QTest::keyClick(&placed, Qt::Key_F, modifier);
        EXPECT_TRUE(placed.currentItem()->text(PieceList::PieceColumn).startsWith("Front"));
    }
    EXPECT_EQ(child.view()->zoom(), zoom);
    QTest::keyClick(&placed, Qt::Key_F9);
    EXPECT_TRUE(child.isZentrimView()) << "other keys are the window's";
}

TEST_F(WindowTest, TheColumnsOfTheListStayAsTheUserArrangesThem)
{
    MarkerChild *child = &open(kTshirt);
    QTreeWidget *tree = child->pieceList()->placedTree();
    ASSERT_EQ(tree->topLevelItem(0)->text(PieceList::PieceColumn), "Back");
    const int fitting = tree->columnWidth(PieceList::PieceColumn);
    child->showFabric(2);
    child->showFabric(1);
    EXPECT_EQ(tree->columnWidth(PieceList::PieceColumn), fitting) << "nobody has chosen it";
    tree->setColumnWidth(PieceList::PieceColumn, fitting + 33);
    tree->header()->setSortIndicator(PieceList::PieceColumn, Qt::DescendingOrder);
    tree->header()->moveSection(0, 2);
    for (const bool restarted : {false, true}) {
        if (restarted) {
            restart();
            child = &open(kTshirt);
            tree = child->pieceList()->placedTree();
        }
        child->refresh();
        EXPECT_EQ(tree->topLevelItem(0)->text(PieceList::PieceColumn), "Sleeve");
        EXPECT_EQ(tree->columnWidth(PieceList::PieceColumn), fitting + 33);
        EXPECT_EQ(tree->header()->visualIndex(PieceList::PieceColumn), 2);
        EXPECT_TRUE(tree->isColumnHidden(PieceList::QuantityColumn));
    }
}

TEST_F(WindowTest, AReloadKeepsFabricPlaceSelectionAndZentrimView)
{
    const auto write = [this](const QByteArray &bytes) { folder.write("small.mar", bytes); };
    QByteArray more = smallMarker(); // another one of the same pieces, before the first
    more.replace("\"groups\": [\n",
        "\"groups\": [{\"polygons\": [{\"piece\": 1, \"size\": 1, \"x\": 60, \"y\": 2}]},");
    write(smallMarker());
    MarkerChild &child = open(folder.path("small.mar"));
    const MarkerView &view = *child.view();
    const auto middle = [&view] { return view.mapToScene(view.viewport()->rect().center()); };
    child.scene()->selectPieces({0});
    child.view()->zoomBy(3);
    const double zoom = view.zoom();
    const QPointF place = middle();
    const auto isAtItsPlace = [&] {
        window->resize(window->size() + QSize(0, 20)); // about the middle
        QApplication::processEvents();
        return view.zoom() == zoom && QLineF(place, middle()).length() * zoom < 3; // pixels
    };

    write(more);
    QTest::keyClick(child.view(), Qt::Key_F5);
    EXPECT_EQ(window->activeMarker(), &child);
    EXPECT_EQ(child.scene()->pieces().size(), 3U);
    EXPECT_EQ(child.pieceList()->selectedPieces(), std::vector<int>{1});
    EXPECT_TRUE(isAtItsPlace());

    child.setZentrimView(true);
    write(smallMarker());
    action("reload").trigger();
    const auto *scene = qobject_cast<ZentrimScene *>(view.scene());
    ASSERT_TRUE(child.isZentrimView() && scene != nullptr);
    EXPECT_EQ(scene->objectCount(), 1);
    EXPECT_TRUE(child.document().drawing()->zentrimActif && isAtItsPlace());

    // A file that breaks while it is open leaves everything as it was.
    const DocumentMak *document = &child.document();
    write("{");
    action("reload").trigger();
    EXPECT_EQ(user->warnings.size(), 1U);
    EXPECT_EQ(&child.document(), document);
    EXPECT_EQ(view.scene(), scene);
    child.setZentrimView(false);
    EXPECT_FALSE(child.document().drawing()->zentrimActif);
    EXPECT_FALSE(CDbMarkerShareGlobales::instance()->getZentrimActif());
    EXPECT_EQ(child.scene()->selectedPieces(), std::vector<int>{0});

    child.showFabric(2);
    write(more);
    action("reload").trigger();
    EXPECT_EQ(child.fabricBox()->currentText(), "Lining (not exported)");
    EXPECT_EQ(child.document().drawing()->currentFabric, 2);

    write(R"({"format": "kiv-marker", "version": 1, "layers": [{"name": "A"}],
        "fabrics": [], "styles": []})");
    action("reload").trigger();
    EXPECT_EQ(user->warnings.size(), 1U) << user->warnings.back().message;
    EXPECT_EQ(child.scene(), nullptr);
    EXPECT_EQ(view.scene(), nullptr);
    EXPECT_EQ(child.fabricBox()->count() + child.pieceList()->placedTree()->topLevelItemCount(), 0);
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
    // Up to 0.7 pixels at each notch, which the notches behind it enlarge.
    constexpr double rounding = 8;
    EXPECT_LT(QLineF(view.mapToScene(mouse), before).length() * view.zoom(), rounding);

    const QPoint there = mouse - QPoint(50, 30);
    const auto send = [&](QEvent::Type type, const QPoint &place, Qt::MouseButtons down) {
        QMouseEvent event(type, place, Qt::MiddleButton, down, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    };
    send(QEvent::MouseButtonPress, mouse, Qt::MiddleButton);
    send(QEvent::MouseMove, there, Qt::MiddleButton);
    send(QEvent::MouseButtonRelease, there, Qt::NoButton);
    send(QEvent::MouseMove, mouse, Qt::NoButton);
    EXPECT_LT(QLineF(view.mapToScene(there), before).length() * view.zoom(), rounding);

    QTest::keyClick(&view, Qt::Key_F);
    EXPECT_NEAR(view.zoom(), fitted, 1e-9);
    const QPointF middle = view.mapToScene(mouse);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_NEAR((view.mapToScene(mouse) - middle).x() * fitted, 60, 2);
    QTest::keyClick(&view, Qt::Key_Plus);
    EXPECT_GT(view.zoom(), fitted);
    QTest::keyClick(&view, Qt::Key_F);
    window->resize(window->width() * 9 / 10, window->height());
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
    EXPECT_FALSE(action("fillBySize").isEnabled() || action("guideLines").isEnabled());
    const auto *scene = qobject_cast<ZentrimScene *>(tshirt.view()->scene());
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(scene->objectCount(), tshirt.pieceList()->placedTree()->topLevelItemCount());

    // A drawing beside it does not, and the view is active all the same: cut formats ask.
    MarkerChild &trousers = open(kTrousers);
    const bool &trousersOptimised = trousers.document().drawing()->zentrimActif;
    EXPECT_TRUE(isActive() && tshirtOptimised);
    EXPECT_FALSE(trousersOptimised || action("zentrim").isChecked());
    EXPECT_TRUE(action("fillBySize").isEnabled() && action("guideLines").isEnabled());
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
    EXPECT_TRUE(action("fillBySize").isEnabled() && action("guideLines").isEnabled());
    action("zentrim").trigger();
    EXPECT_TRUE(isActive());
    close();
    EXPECT_FALSE(isActive());

    MarkerChild &stored = open(kTshirt); // as optimised
    stored.setZentrimView(true);
    stored.setZentrimView(false);
    EXPECT_TRUE(stored.document().drawing()->zentrimActif && !isActive());
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

TEST_F(WindowTest, ZentrimNumbersAreThoseOfTheCutFile)
{
    CDbMarkerShareGlobales &globals = *CDbMarkerShareGlobales::instance();
    const CutSettings before = globals.cutSettings();
    QByteArray bytes = smallMarker(); // a hole outside of each of two pieces
    bytes.replace(
        "[0, 20]]", R"([0, 20]], "internalPoints": [{"x": 12, "y": 5, "type": "punch"}])");
    bytes.replace("{\"polygons\": [{\"piece\": 1, \"size\": 1, \"x\": 5",
        R"({"polygons": [{"piece": 1, "size": 1, "x": 40}, {"piece": 1, "size": 1, "x": 22)");
    const QString path = folder.write("holes.mar", bytes);
    const struct
    {
        double threshold; // of a frame
        bool holes;
        QStringList numbers;
        const char *told;
    } cases[] = {{120, true, {"3", "4"}, " 2 holes"},
        // The conveyor moves before each piece, first behind an object without any cut.
        {10, false, {"2", "3"}, " 2 frame advances"}};
    for (const auto &entry : cases) {
        CutSettings settings = before;
        settings.cutExternalPunchHoles = entry.holes;
        settings.cutCommandM69 = !entry.holes;
        settings.cutThresholdAdvance = entry.threshold;
        globals.setCutSettings(settings);
        MarkerChild &child = open(path);
        child.setZentrimView(true);
        const auto *scene = qobject_cast<ZentrimScene *>(child.view()->scene());
        ASSERT_NE(scene, nullptr);
        QStringList numbers;
        for (const SceneTextItem *item : visibleItems<SceneTextItem>(*scene)) {
            numbers += item->text().lines;
        }
        numbers.sort();
        EXPECT_EQ(numbers, entry.numbers) << scene->messages().join(' ');
        EXPECT_TRUE(scene->summary().endsWith(entry.told)) << scene->summary();
        close();
    }
    globals.setCutSettings(before);
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

} // namespace
} // namespace KivSystem
