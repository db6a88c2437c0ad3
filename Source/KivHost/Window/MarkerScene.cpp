#include "MarkerScene.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"
#include "MarkerFacts.h"
#include "WindowText.h"

#include <QGraphicsLineItem>
#include <QPen>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kPieceTextShare = 0.16; // of a piece's narrow extent, a letter's height
constexpr double kLeastPieceText = 1.2;  // cm
constexpr double kMostPieceText = 8;     // cm
constexpr double kLayerNameHeight = 4;   // cm
constexpr double kLeastLayerName = 11;   // pixels
constexpr double kStandByGap = 6;        // cm between the fabric, rows and groups in stand-by
constexpr double kEmptyLength = 100;     // cm that a layer without anything is drawn long
constexpr double kMargin = 12;           // cm around everything
constexpr double kTall = 1.3;            // a piece as much higher than long has its text upright
constexpr double kNarrowTextShare = 0.8; // of a piece's extent that a text may take

enum Height : int
{
    ClothHeight = 0,
    PieceHeight = 2,
    GuideHeight = 3,
    TextHeight = 4,
};

QPen cosmetic(const QColor &color, Qt::PenStyle style = Qt::SolidLine)
{
    QPen pen(color, 1, style);
    pen.setCosmetic(true);
    return pen;
}

// Neighbours in number are far apart in colour.
QColor paletteColor(int number)
{
    constexpr double goldenAngle = 137.50776405;
    constexpr int lightness[] = {205, 186, 220};
    return QColor::fromHsl(static_cast<int>(std::fmod(20 + number * goldenAngle, 360)), 150,
        lightness[static_cast<std::size_t>(number / 8) % 3]);
}

QRectF rectOf(const GeoRectangle &rect)
{
    return {rect.left(), rect.bottom(), rect.width(), rect.height()};
}

QRectF extentOf(const CDbGrPolysObject &group)
{
    QRectF extent;
    for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        extent = extent.united(rectOf(polygon->polygonRect));
        if (polygon->cutDownPolygon != nullptr) {
            extent = extent.united(rectOf(polygon->cutDownPolygon->polygonRect));
        }
    }
    return extent;
}

SceneText sceneText(const CDbTextObject &text)
{
    SceneText shown;
    shown.lines = text.textLines;
    shown.place = {text.textPosition.x, text.textPosition.y};
    if (text.textPath.size() > 2) { // a text along a line stands at the line's middle
        const CDbMarkerPointObject &middle = text.textPath[text.textPath.size() / 2];
        shown.place = {middle.x, middle.y};
    }
    shown.height = text.textLetterSize * CDbTextObject::LetterHeight;
    shown.alignment = text.textAlignment & Qt::AlignHorizontal_Mask;
    return shown;
}

// Name and size in the middle of the piece, along its longer extent.
SceneText pieceText(const ScenePiece &piece)
{
    const CDbPolygon &polygon = *piece.polygon;
    const QRectF rect = rectOf(polygon.polygonRect);
    SceneText text;
    text.lines = QStringList{piece.name, piece.size};
    text.lines.removeAll(QString());
    CDbMarkerPointObject centre;
    CDbTextObject::computationTextCenter(
        &centre, polygon.findContour(CutContour), polygon.polygonRect);
    text.place = {static_cast<double>(centre.notchDx), static_cast<double>(centre.notchDy)};
    text.height = std::min(kMostPieceText,
        std::max(kLeastPieceText, kPieceTextShare * std::min(rect.width(), rect.height())));
    text.angle = rect.height() > kTall * rect.width() ? 90 : 0;
    text.room = kNarrowTextShare * std::max(rect.width(), rect.height());
    text.across = kNarrowTextShare * std::min(rect.width(), rect.height());
    if (text.angle == 0) {
        text.room = kNarrowTextShare * rect.width() * centre.pointType / 100; // free at that place
    }
    return text;
}

} // namespace

QString sideText(const CDbPieceObject *piece, bool left)
{
    if (piece != nullptr && piece->getKIVPieceSingle()) {
        return windowText("single");
    }
    return left ? windowText("left") : windowText("right");
}

MarkerScene::MarkerScene(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
    const SceneOptions &options, QObject *parent)
    : QGraphicsScene(parent)
    , m_drawing(drawing)
    , m_fabric(fabric)
    , m_options(options)
{
    for (const Place &place : places()) {
        addLayer(place);
    }
    setSceneRect(m_extent.adjusted(-kMargin, -kMargin, kMargin, kMargin));
    setOptions(options);
}

void MarkerScene::setOptions(const SceneOptions &options)
{
    m_options = options;
    for (const ScenePiece &piece : m_pieces) {
        piece.item->setFill(fillOf(piece));
    }
    for (QGraphicsItem *line : m_guideLines) {
        line->setVisible(options.guideLines);
    }
    for (QGraphicsItem *text : m_texts) {
        text->setVisible(options.texts);
    }
    update();
}

std::vector<int> MarkerScene::selectedPieces() const
{
    std::vector<int> positions;
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        if (m_pieces[i].item->isSelected()) {
            positions.push_back(static_cast<int>(i));
        }
    }
    return positions;
}

void MarkerScene::selectPieces(const std::vector<int> &positions)
{
    {
        const QSignalBlocker blocker(this);
        clearSelection();
        for (const int position : positions) {
            m_pieces.at(static_cast<std::size_t>(position)).item->setSelected(true);
        }
    }
    emit selectionChanged();
}

// Layers that occupy nothing stand behind the others if there is something to show of them; of a
// fabric on which nothing lies all are shown.
std::vector<MarkerScene::Place> MarkerScene::places() const
{
    std::vector<Place> places;
    double end = 0;
    for (const LaidLayer &laid : m_drawing.laidLayers(&m_fabric)) {
        places.push_back(
            {laid.layer, laid.start, laid.length, m_fabric.getFabricLayerWidth(laid.layer)});
        end = laid.start + laid.length + 2 * kStandByGap;
    }
    const std::vector<Place> laid = places;
    forEachNumber(m_fabric.layerCount(), [&](short layer) {
        const bool isLaid = std::any_of(
            laid.begin(), laid.end(), [layer](const Place &place) { return place.layer == layer; });
        if (!isLaid && (laid.empty() || !m_fabric.findLayer(layer)->groups.empty())) {
            places.push_back({layer, end, kEmptyLength, m_fabric.getFabricLayerWidth(layer)});
            end += kEmptyLength + 2 * kStandByGap;
        }
    });
    return places;
}

void MarkerScene::addLayer(const Place &place)
{
    auto *cloth = addRect(place.start, 0, place.length, place.width,
        cosmetic(QColor(0x9a, 0xa3, 0xaf)), QColor(0xfd, 0xfd, 0xfb));
    cloth->setZValue(ClothHeight);
    m_extent = m_extent.united(cloth->rect());

    SceneText name;
    name.lines = QStringList{m_drawing.getLayerObjectTable()[place.layer - 1]->layerName};
    name.place = {place.start, -1};
    name.height = kLayerNameHeight;
    name.alignment = Qt::AlignLeft | Qt::AlignTop;
    addItem(new SceneTextItem(name, QColor(0x4b, 0x55, 0x63), kLeastLayerName));

    addGuideLines(place);
    const FabricLayer &layer = *m_fabric.findLayer(place.layer);
    for (const auto &group : layer.groups) {
        if (group->groupPlace() == PlacedOnMarker) {
            addGroup(*group, place, {place.start, 0});
        }
    }
    for (const auto &text : layer.texts) {
        if (text->textWorkSection == WorkAreaSection) {
            addText(*text, {place.start, 0});
        }
    }
    addStandBy(place);
}

void MarkerScene::addGuideLines(const Place &place)
{
    const QPen pen = cosmetic(QColor(0x00, 0x86, 0x8b), Qt::DashLine);
    const auto add = [&](const QLineF &line, const QString &text) {
        QGraphicsLineItem *item = addLine(line, pen);
        item->setZValue(GuideHeight);
        item->setToolTip(text.toHtmlEscaped());
        m_guideLines.push_back(item);
    };
    const FabricLayer &layer = *m_fabric.findLayer(place.layer);
    for (const CDbLineObject &line : layer.horizontalLines) {
        add({place.start, line.linePosition, place.start + place.length, line.linePosition},
            line.getText());
    }
    for (const CDbLineObject &line : layer.verticalLines) {
        const double x = place.start + line.linePosition;
        add({x, 0, x, place.width}, line.getText());
    }
}

void MarkerScene::addGroup(const CDbGrPolysObject &group, const Place &place, const QPointF &shift)
{
    const bool standBy = group.groupPlace() == PlacedInStandBy;
    for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        addPolygon(*polygon, place, shift, standBy, nullptr);
        if (polygon->cutDownPolygon != nullptr) {
            addPolygon(*polygon->cutDownPolygon, place, shift, standBy, m_pieces.back().item);
        }
    }
    for (const auto &text : group.texts) {
        addText(*text, shift);
    }
}

// `whole` is the item of the polygon that a partner was cut from; null for a polygon by itself.
void MarkerScene::addPolygon(const CDbPolygon &polygon, const Place &place, const QPointF &shift,
    bool standBy, PolygonItem *whole)
{
    ScenePiece piece = describe(polygon);
    PolygonItem::Content content;
    content.outline = outlineOf(polygon);
    content.cutDownPartner = whole != nullptr;
    if (whole == nullptr) {
        content.texts.push_back(pieceText(piece));
        for (const auto &text : polygon.polygonTexts) {
            content.texts.push_back(sceneText(*text));
        }
    }
    auto *item = new PolygonItem(std::move(content), m_options);
    addItem(item);
    item->setPos(shift);
    item->setZValue(PieceHeight);
    m_extent = m_extent.united(item->sceneBoundingRect());
    const QString words = QStringLiteral("%1, %2, %3").arg(piece.name, piece.size, piece.side);
    item->setToolTip(QStringLiteral("<b>%1</b><br>%2%3")
                         .arg(words.toHtmlEscaped(), piece.style.toHtmlEscaped(),
                             whole != nullptr ? QStringLiteral("<br>") +
                                                    windowText("partner of a cut-down piece")
                             : standBy ? QStringLiteral("<br>") + windowText("in stand-by")
                                       : QString()));
    if (whole == nullptr) {
        piece.item = item;
        piece.layer = place.layer;
        piece.standBy = standBy;
        m_pieces.push_back(std::move(piece));
    }
}

// Rows from left to right, no longer than the layer where a group allows it.
void MarkerScene::addStandBy(const Place &place)
{
    double x = place.start;
    double bottom = place.width + kStandByGap;
    double top = bottom;
    for (const auto &group : m_fabric.findLayer(place.layer)->groups) {
        if (group->groupPlace() != PlacedInStandBy) {
            continue;
        }
        const QRectF extent = extentOf(*group);
        if (x > place.start && x + extent.width() > place.start + place.length) {
            x = place.start;
            bottom = top + kStandByGap;
        }
        addGroup(*group, place, {x - extent.left(), bottom - extent.top()});
        x += extent.width() + kStandByGap;
        top = std::max(top, bottom + extent.height());
    }
}

void MarkerScene::addText(const CDbTextObject &text, const QPointF &shift)
{
    SceneText shown = sceneText(text);
    shown.place += shift;
    auto *item = new SceneTextItem(shown, QColor(0x1e, 0x6b, 0x3a));
    item->setZValue(TextHeight);
    addItem(item);
    m_texts.push_back(item);
}

ScenePiece MarkerScene::describe(const CDbPolygon &polygon) const
{
    ScenePiece words;
    words.polygon = &polygon;
    const CDbPieceObject *piece = m_fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    const CDbStyleObject *style =
        piece ? m_drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1)) : nullptr;
    words.name = piece ? piece->getName() : windowText("(no piece)");
    words.size = sizeText(style, polygon.sizeNumber);
    words.side = sideText(piece, polygon.isLeft());
    words.style = style ? style->getStyleName() : QString();
    return words;
}

QColor MarkerScene::fillOf(const ScenePiece &piece) const
{
    const CDbPolygon &polygon = *piece.polygon;
    if (m_options.fill == SceneOptions::ByColour) {
        const ColorTable &colors = CDbMarkerShareGlobales::instance()->getColorTable();
        const auto index = static_cast<std::size_t>(std::max<short>(polygon.colorIndex, 0));
        if (index == 0 || index > colors.size()) {
            return QColor(0xe2, 0xe5, 0xea);
        }
        // The outline of a piece has the colour on paper; filled with it, texts need it lighter.
        const QColor &color = colors[index - 1];
        return QColor::fromHsl(color.hslHue(), color.hslSaturation() * 3 / 4, 205);
    }
    if (m_options.fill == SceneOptions::BySize) {
        return paletteColor(polygon.sizeNumber);
    }
    const CDbPieceObject *owner = m_fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    return paletteColor(owner != nullptr ? owner->getStyleNo() - 1 : 0);
}

} // namespace KivSystem
