#include "ZentrimView.h"

#include "CutRequests.h"
#include "KivCore/Locale.h"
#include "KivMarker/CutStatistics.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Point.h"
#include "KivMarker/ShareGlobales.h"
#include "KivMarker/Text.h"
#include "MarkerItems.h"
#include "WindowText.h"

#include <QDomDocument>
#include <QLineF>
#include <QPainterPath>
#include <QPen>

#include <algorithm>

namespace KivSystem {

namespace {

constexpr double kNumberHeight = 5; // cm
constexpr double kHole = 0.3;       // cm, half of a hole's cross
constexpr double kSign = 4;         // pixels, half of a sign on the way
constexpr double kMargin = 8;       // cm around the cloth
constexpr double kCentimetresOfPoint = 0.03528;
constexpr double kLeastNumber = 9; // pixels, as far as the piece has room for it

const QColor kOutline(0x11, 0x18, 0x27);
const QColor kIdle(0x38, 0xa3, 0xd8);
const QColor kHoleColor(0xd9, 0x77, 0x06);

QPen cosmetic(const QColor &color, double width = 1, Qt::PenStyle style = Qt::SolidLine)
{
    QPen pen(color, width, style);
    pen.setCosmetic(true);
    return pen;
}

double number(const QDomElement &element, const char *name)
{
    return element.attribute(QLatin1String(name)).toDouble();
}

/// Appends "M x,y L x,y ..." to the path.
void addData(QPainterPath &path, const QString &data)
{
    bool isMove = true;
    for (const QStringRef &word : data.splitRef(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const int comma = word.indexOf(QLatin1Char(','));
        if (comma < 0) {
            isMove = word == QLatin1String("M") || path.elementCount() == 0;
            continue;
        }
        const QPointF place(word.left(comma).toDouble(), word.mid(comma + 1).toDouble());
        if (isMove) {
            path.moveTo(place);
        } else {
            path.lineTo(place);
        }
    }
}

void addHole(QPainterPath &path, const QPointF &place)
{
    path.moveTo(place - QPointF(kHole, 0));
    path.lineTo(place + QPointF(kHole, 0));
    path.moveTo(place - QPointF(0, kHole));
    path.lineTo(place + QPointF(0, kHole));
    path.addEllipse(place, kHole / 2, kHole / 2);
}

QPainterPath joined(const std::vector<QPainterPath> &paths)
{
    QPainterPath all;
    for (const QPainterPath &path : paths) {
        all.addPath(path);
    }
    return all;
}

QRectF boundsOf(const std::vector<QPainterPath> &paths)
{
    return paths.empty() ? QRectF() : joined(paths).boundingRect();
}

double areaOf(const QRectF &rect)
{
    return rect.width() * rect.height();
}

// In the middle of the largest outline, as wide as that is free there.
void placeNumber(SceneText &number, const std::vector<QPainterPath> &outlines)
{
    const QPainterPath &outline = *std::max_element(
        outlines.begin(), outlines.end(), [](const QPainterPath &a, const QPainterPath &b) {
            return areaOf(a.boundingRect()) < areaOf(b.boundingRect());
        });
    const QRectF extent = outline.boundingRect();
    CDbVectorsObjectTable points;
    for (int i = 0; i < outline.elementCount(); ++i) {
        CDbMarkerPointObject point;
        point.x = outline.elementAt(i).x;
        point.y = outline.elementAt(i).y;
        points.append(point);
    }
    CDbMarkerPointObject centre;
    CDbTextObject::computationTextCenter(
        &centre, &points, {extent.left(), extent.right(), extent.top(), extent.bottom()});
    number.place = {static_cast<double>(centre.notchDx), static_cast<double>(centre.notchDy)};
    number.room = extent.width() * centre.pointType / 100;
    number.across = extent.height();
}

// What a number covers, with some room around it.
QRectF boxAt(const QPointF &place, const SceneText &number)
{
    constexpr double digit = 0.9; // of the height
    double height = 1.4 * std::min(number.height, number.across);
    double width = height * digit * number.lines.first().size();
    if (number.room > 0 && width > number.room) {
        height *= number.room / width;
        width = number.room;
    }
    return {place.x() - width / 2, place.y() - height / 2, width, height};
}

QPainterPath startSign()
{
    QPainterPath ring;
    ring.addEllipse(QPointF(), kSign, kSign);
    return ring;
}

QPainterPath endSign()
{
    QPainterPath square;
    square.addRect(-kSign, -kSign, 2 * kSign, 2 * kSign);
    return square;
}

// To the right.
QPainterPath arrow()
{
    QPainterPath head;
    head.addPolygon(QVector<QPointF>{{kSign, 0}, {-kSign, kSign}, {-kSign, -kSign}});
    head.closeSubpath();
    return head;
}

int s_holds = 0;

} // namespace

struct ZentrimScene::Number
{
    SceneText text;
    QPainterPath outlines;
    QRectF extent;
};

/// The paths of an object, none of them empty.
struct ZentrimScene::ObjectCuts
{
    std::vector<QPainterPath> holes; // a point each
    std::vector<QPainterPath> internals;
    std::vector<QPainterPath> notches;
    std::vector<QPainterPath> outlines;
};

ZentrimHold::ZentrimHold(CDbMarkerDrawing &drawing)
    : m_drawing(drawing)
    , m_wasOptimised(drawing.zentrimActif)
{
    ++s_holds;
    CDbMarkerShareGlobales::instance()->setZentrimActif(true);
    m_drawing.zentrimActif = true;
}

ZentrimHold::~ZentrimHold()
{
    --s_holds;
    CDbMarkerShareGlobales::instance()->setZentrimActif(s_holds > 0);
    m_drawing.zentrimActif = m_wasOptimised;
}

ZentrimScene::ZentrimScene(
    const DocumentMak &document, short fabric, const SceneOptions &options, QObject *parent)
    : QGraphicsScene(parent)
{
    const CDbMarkerDrawing &drawing = *document.drawing();
    addCloth(drawing, fabric);
    const QVector<QDomDocument> documents = document.toSVG(cutRequestFor("ansi", drawing), fabric);
    for (const CutMessage &message : document.takeCutMessages()) {
        m_messages.append(message.text);
        m_refused = m_refused || message.refused;
    }
    if (documents.isEmpty() && m_messages.isEmpty()) {
        m_messages.append(windowText("There is nothing to cut on this fabric."));
    }
    CutStatistics sum;
    for (const QDomDocument &part : documents) {
        addDocument(part, sum);
    }
    showNumbers();
    summarise(sum);
    setOptions(options);
    setSceneRect(m_extent.adjusted(-kMargin, -kMargin, kMargin, kMargin));
}

ZentrimScene::~ZentrimScene() = default;

void ZentrimScene::setOptions(const SceneOptions &options)
{
    for (QGraphicsItem *item : m_texts) {
        item->setVisible(options.texts);
    }
    for (QGraphicsItem *item : m_details) {
        item->setVisible(options.notches);
    }
}

void ZentrimScene::addCloth(const CDbMarkerDrawing &drawing, short fabric)
{
    const CDbFabricObject *cloth = drawing.getFabric(static_cast<short>(fabric - 1));
    if (cloth == nullptr) {
        return;
    }
    for (const LaidLayer &laid : drawing.laidLayers(cloth)) {
        const QRectF rect(laid.start, 0, laid.length, cloth->getFabricLayerWidth(laid.layer));
        m_extent = m_extent.united(rect);
        addRect(rect, cosmetic(QColor(0xb8, 0xc0, 0xcb)), QColor(0xff, 0xff, 0xff));
    }
}

void ZentrimScene::addDocument(const QDomDocument &document, CutStatistics &sum)
{
    const QDomElement root = document.documentElement();
    // A file counts its holes outside of the pieces, and objects of which nothing is cut, too.
    int position = root.firstChildElement(QStringLiteral("external"))
                       .elementsByTagName(QStringLiteral("circle"))
                       .size();
    for (QDomElement object = root.firstChildElement(QStringLiteral("object")); !object.isNull();
         object = object.nextSiblingElement(QStringLiteral("object"))) {
        addObject(object, ++position);
    }
    addOthers(root);
    addWay(document, sum);
}

// The ways with the tool up, from a ring to a square.
void ZentrimScene::addWay(const QDomDocument &document, CutStatistics &sum)
{
    const CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    QPainterPath idle;
    QLineF first;
    QPointF end;
    const CutStatistics part =
        measureCuts(document, static_cast<NotchOrder>(settings.getCutOrderCrans()),
            static_cast<CutLine>(settings.getCutInternalOrder()), [&](const CutMove &move) {
                end = {move.to.x, move.to.y};
                if (move.kind == CutMove::Idle) {
                    const QLineF way({move.from.x, move.from.y}, end);
                    first = idle.isEmpty() ? way : first;
                    idle.moveTo(way.p1());
                    idle.lineTo(way.p2());
                }
            });
    addPath(idle, cosmetic(kIdle, 1, Qt::DashLine));
    addSign(startSign(), {0, 0}, kIdle);
    addSign(endSign(), end, kIdle);
    if (!first.isNull()) {
        addSign(arrow(), first.center(), kIdle)->setRotation(first.angle());
    }
    sum += part;
}

// As large on the screen at each zoom; the shape's y goes downward.
QGraphicsItem *ZentrimScene::addSign(
    const QPainterPath &shape, const QPointF &place, const QColor &color)
{
    QGraphicsItem *sign = addPath(shape, QPen(color, 2), Qt::white);
    sign->setFlag(QGraphicsItem::ItemIgnoresTransformations);
    sign->setPos(place);
    return sign;
}

void ZentrimScene::addObject(const QDomElement &object, int position)
{
    const ObjectCuts cuts = cutsOf(object);
    m_extent = m_extent.united(boundsOf(cuts.outlines));
    addPath(joined(cuts.outlines), cosmetic(kOutline), QColor(0x60, 0xa5, 0xfa, 0x28));
    addPath(joined(cuts.internals), cosmetic(QColor(0x1f, 0x5f, 0xbf)));
    if (!cuts.notches.empty()) {
        m_details.push_back(addPath(joined(cuts.notches), cosmetic(QColor(0xc8, 0x1e, 0x1e), 1.5)));
    }
    QPainterPath holes;
    for (const QPainterPath &hole : cuts.holes) {
        addHole(holes, hole.currentPosition());
    }
    addHoles(holes);
    addTexts(object);
    if (!cuts.outlines.empty() || !cuts.holes.empty()) { // or nothing of the object is cut
        addNumber(cuts, position);
    }
}

void ZentrimScene::addNumber(const ObjectCuts &cuts, int position)
{
    ++m_objects;
    Number number;
    number.text.lines = QStringList{QString::number(position)};
    number.text.height = kNumberHeight;
    if (cuts.outlines.empty()) {
        number.text.place = cuts.holes.back().currentPosition();
        number.text.across = kNumberHeight;
    } else {
        number.outlines = joined(cuts.outlines);
        number.extent = number.outlines.boundingRect();
        placeNumber(number.text, cuts.outlines);
    }
    m_numbers.push_back(std::move(number));
}

// Small objects have theirs in the middle. A larger one that has others on it, as a block has its
// pieces, makes way for them.
void ZentrimScene::showNumbers()
{
    std::stable_sort(
        m_numbers.begin(), m_numbers.end(), [](const Number &left, const Number &right) {
            return areaOf(left.extent) < areaOf(right.extent);
        });
    std::vector<QRectF> taken;
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
        const auto isFree = [&](const QRectF &box, bool offOthers) {
            for (std::size_t k = 0; k < i; ++k) {
                if (taken[k].intersects(box) || (offOthers && m_numbers[k].extent.intersects(box) &&
                                                    m_numbers[k].outlines.intersects(box))) {
                    return false;
                }
            }
            return true;
        };
        Number &number = m_numbers[i];
        if (!isFree(boxAt(number.text.place, number.text), true)) {
            makeWay(number, isFree);
        }
        taken.push_back(boxAt(number.text.place, number.text));
        auto *item = new SceneTextItem(number.text, QColor(0x0b, 0x3d, 0x91), kLeastNumber);
        item->setZValue(1);
        addItem(item);
    }
    m_numbers.clear();
}

// To the nearest place inside the outline that is free of other objects, or at least of numbers.
void ZentrimScene::makeWay(
    Number &number, const std::function<bool(const QRectF &, bool offOthers)> &isFree)
{
    constexpr int steps = 24; // of a grid over the object
    std::vector<QPointF> places;
    for (int i = 0; i < steps * steps; ++i) {
        places.emplace_back(
            number.extent.left() + number.extent.width() * (i % steps + 0.5) / steps,
            number.extent.top() + number.extent.height() * (i / steps + 0.5) / steps);
    }
    const QPointF middle = number.text.place;
    const auto way = [&](const QPointF &place) { return QLineF(middle, place).length(); };
    std::sort(places.begin(), places.end(),
        [&](const QPointF &left, const QPointF &right) { return way(left) < way(right); });
    for (const bool offOthers : {true, false}) {
        for (const QPointF &place : places) {
            const QRectF box = boxAt(place, number.text);
            if (number.outlines.contains(box) && isFree(box, offOthers)) {
                number.text.place = place;
                number.text.room = box.width();
                return;
            }
        }
    }
}

void ZentrimScene::addHoles(const QPainterPath &holes)
{
    if (!holes.isEmpty()) {
        m_details.push_back(addPath(holes, cosmetic(kHoleColor, 1.5)));
    }
}

void ZentrimScene::addTexts(const QDomElement &object)
{
    for (QDomElement line = object.firstChildElement(QStringLiteral("text")); !line.isNull();
         line = line.nextSiblingElement(QStringLiteral("text"))) {
        SceneText text;
        text.lines = QStringList{line.text()};
        text.place = {number(line, "x"), number(line, "y")};
        text.height = number(line, "fontSize") * kCentimetresOfPoint;
        text.alignment = Qt::AlignLeft | Qt::AlignVCenter;
        text.angle = number(line, "angle");
        m_texts.push_back(new SceneTextItem(text, QColor(0x16, 0x6b, 0x34)));
        addItem(m_texts.back());
    }
}

ZentrimScene::ObjectCuts ZentrimScene::cutsOf(const QDomElement &object)
{
    const CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    ObjectCuts cuts;
    for (QDomElement path = object.firstChildElement(QStringLiteral("path")); !path.isNull();
         path = path.nextSiblingElement(QStringLiteral("path"))) {
        const QString kind = path.attribute(QStringLiteral("t"));
        const bool isHole = path.hasAttribute(QStringLiteral("drill"));
        QPainterPath cut;
        addData(cut, isHole ? path.attribute(QStringLiteral("drill")) : path.text());
        if (cut.elementCount() == 0) {
            continue;
        }
        if (isHole) {
            cuts.holes.push_back(cut);
        } else if (kind == QLatin1String("outline")) {
            cuts.outlines.push_back(cut);
        } else if (kind == QLatin1String("notch") && settings.getCutOrderCrans() != NotchNone) {
            cuts.notches.push_back(cut);
        } else if (kind == QLatin1String("internal") &&
                   settings.getCutInternalOrder() != CutLineNone) {
            cuts.internals.push_back(cut);
        }
    }
    return cuts;
}

// Holes outside of the pieces, places where the conveyor stops, waste cuts.
void ZentrimScene::addOthers(const QDomElement &root)
{
    QPainterPath holes;
    QPainterPath frames;
    QPainterPath waste;
    for (QDomElement child = root.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("external")) {
            for (QDomElement hole = child.firstChildElement(); !hole.isNull();
                 hole = hole.nextSiblingElement()) {
                addHole(holes, {number(hole, "cx"), number(hole, "cy")});
            }
        } else if (child.tagName() == QLatin1String("M69")) {
            frames.moveTo(number(child, "tissuL"), 0);
            frames.lineTo(number(child, "tissuL"), number(root, "tissuW"));
        } else if (child.tagName() == QLatin1String("scrap")) {
            for (QDomElement cut = child.firstChildElement(); !cut.isNull();
                 cut = cut.nextSiblingElement()) {
                addData(waste, cut.text());
            }
        }
    }
    addHoles(holes);
    addPath(frames, cosmetic(QColor(0x7a, 0x2f, 0xa0), 2, Qt::DashLine));
    addPath(waste, cosmetic(QColor(0x8b, 0x4a, 0x1e)));
}

void ZentrimScene::summarise(const CutStatistics &sum)
{
    const KivLocale locale;
    m_summary = windowText("Zentrim view: %1 objects in cutting order, cut %2, idle %3, "
                           "%4 plunges, %5 holes")
                    .arg(QString::number(sum.objects),
                        locale.formatLength(sum.cutLength, KivLocale::WithUnit),
                        locale.formatLength(sum.idleLength, KivLocale::WithUnit),
                        QString::number(sum.plunges), QString::number(sum.holes));
    if (sum.frameAdvances > 0) {
        m_summary += windowText(", %1 frame advances").arg(sum.frameAdvances);
    }
}

} // namespace KivSystem
