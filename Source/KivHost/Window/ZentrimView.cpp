#include "ZentrimView.h"

#include "CutRequests.h"
#include "KivCore/Locale.h"
#include "KivMarker/CutStatistics.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"
#include "MarkerItems.h"
#include "WindowText.h"

#include <QDomDocument>
#include <QPainterPath>
#include <QPen>
#include <QRegularExpression>

namespace KivSystem {

namespace {

constexpr double kNumberHeight = 5; // cm
constexpr double kHole = 0.3;       // cm, half of a hole's cross
constexpr double kMargin = 8;       // cm around the cloth
constexpr double kCentimetresOfPoint = 0.03528;
constexpr double kLeastNumber = 9; // pixels, as far as the piece has room for it

const QColor kOutline(0x11, 0x18, 0x27);
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
    static const QRegularExpression step(
        QStringLiteral("([ML])\\s*([-+.\\deE]+)[,\\s]+([-+.\\deE]+)"));
    QRegularExpressionMatchIterator steps = step.globalMatch(data);
    while (steps.hasNext()) {
        const QRegularExpressionMatch match = steps.next();
        const QPointF place(match.capturedRef(2).toDouble(), match.capturedRef(3).toDouble());
        if (match.capturedRef(1) == QLatin1String("M") || path.elementCount() == 0) {
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

/// The paths of an object, none of them empty.
struct ObjectCuts
{
    std::vector<QPainterPath> holes; // a point each
    std::vector<QPainterPath> internals;
    std::vector<QPainterPath> notches;
    std::vector<QPainterPath> outlines;
};

ObjectCuts cutsOf(const QDomElement &object)
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

int s_holds = 0;

} // namespace

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

// Follows the tool as CutStatistics does.
struct ZentrimScene::Way
{
    QPainterPath idle;
    QPointF place;
    NotchOrder notches = NotchDuringOutline;
    CutLine internals = CutLineBeforeOutline;

    void follow(const ObjectCuts &cuts)
    {
        follow(cuts.holes);
        if (internals == CutLineBeforeOutline) {
            follow(cuts.internals);
        }
        if (notches == NotchBeforeOutline) {
            follow(cuts.notches);
        }
        follow(cuts.outlines);
        if (notches == NotchAfterOutline) {
            follow(cuts.notches);
        }
        if (internals == CutLineAfterOutline) {
            follow(cuts.internals);
        }
    }

private:
    void follow(const std::vector<QPainterPath> &paths)
    {
        for (const QPainterPath &path : paths) {
            const QPointF start(path.elementAt(0));
            if (start != place) {
                idle.moveTo(place);
                idle.lineTo(start);
            }
            place = path.currentPosition();
        }
    }
};

ZentrimScene::ZentrimScene(const DocumentMak &document, short fabric, QObject *parent)
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
    for (const QDomDocument &part : documents) {
        addDocument(part);
    }
    measure(documents);
    setSceneRect(m_extent.adjusted(-kMargin, -kMargin, kMargin, kMargin));
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

void ZentrimScene::addDocument(const QDomDocument &document)
{
    const QDomElement root = document.documentElement();
    const CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    Way way;
    way.notches = static_cast<NotchOrder>(settings.getCutOrderCrans());
    way.internals = static_cast<CutLine>(settings.getCutInternalOrder());
    for (QDomElement object = root.firstChildElement(QStringLiteral("object")); !object.isNull();
         object = object.nextSiblingElement(QStringLiteral("object"))) {
        addObject(object, way);
    }
    addPath(way.idle, cosmetic(QColor(0x38, 0xa3, 0xd8), 1, Qt::DashLine));
    QPainterPath holes;
    addOthers(root, holes);
    addPath(holes, cosmetic(kHoleColor, 1.5));
}

void ZentrimScene::addObject(const QDomElement &object, Way &way)
{
    ObjectCuts cuts = cutsOf(object);
    way.follow(cuts);
    const QRectF extent = boundsOf(cuts.outlines);
    m_extent = m_extent.united(extent);
    addPath(joined(cuts.outlines), cosmetic(kOutline), QColor(0x60, 0xa5, 0xfa, 0x28));
    addPath(joined(cuts.internals), cosmetic(QColor(0x1f, 0x5f, 0xbf)));
    addPath(joined(cuts.notches), cosmetic(QColor(0xc8, 0x1e, 0x1e), 1.5));
    QPainterPath holes;
    for (const QPainterPath &hole : cuts.holes) {
        addHole(holes, hole.currentPosition());
    }
    addPath(holes, cosmetic(kHoleColor, 1.5));
    addTexts(object);
    if (extent.isNull() && cuts.holes.empty()) {
        return; // an object of which nothing is cut
    }
    SceneText order;
    order.lines = QStringList{QString::number(++m_objects)};
    order.place = extent.isNull() ? way.place : extent.center();
    order.height = kNumberHeight;
    order.room = extent.width();
    order.across = extent.height();
    auto *item = new SceneTextItem(order, QColor(0x0b, 0x3d, 0x91), kLeastNumber);
    item->setZValue(1);
    addItem(item);
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
        addItem(new SceneTextItem(text, QColor(0x16, 0x6b, 0x34)));
    }
}

// Holes outside of the pieces, places where the conveyor stops, waste cuts.
void ZentrimScene::addOthers(const QDomElement &root, QPainterPath &holes)
{
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
    addPath(frames, cosmetic(QColor(0x7a, 0x2f, 0xa0), 2, Qt::DashLine));
    addPath(waste, cosmetic(QColor(0x8b, 0x4a, 0x1e)));
}

void ZentrimScene::measure(const QVector<QDomDocument> &documents)
{
    const CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    CutStatistics sum;
    for (const QDomDocument &document : documents) {
        const CutStatistics part =
            measureCuts(document, static_cast<NotchOrder>(settings.getCutOrderCrans()),
                static_cast<CutLine>(settings.getCutInternalOrder()));
        sum.objects += part.objects;
        sum.holes += part.holes;
        sum.plunges += part.plunges;
        sum.cutLength += part.cutLength;
        sum.idleLength += part.idleLength;
    }
    const KivLocale locale;
    m_summary = windowText("Zentrim view: %1 objects in cutting order, cut %2, idle %3, "
                           "%4 plunges, %5 holes")
                    .arg(QString::number(sum.objects),
                        locale.formatLength(sum.cutLength, KivLocale::WithUnit),
                        locale.formatLength(sum.idleLength, KivLocale::WithUnit),
                        QString::number(sum.plunges), QString::number(sum.holes));
}

} // namespace KivSystem
