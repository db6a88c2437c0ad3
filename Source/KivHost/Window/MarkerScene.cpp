#include "MarkerScene.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/Image.h"
#include "KivMarker/MarkerOptions.h"
#include "KivMarker/ShareGlobales.h"
#include "MarkerFacts.h"
#include "PieceName.h"
#include "WindowText.h"

#include <QPen>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>
#include <map>

namespace KivSystem {

namespace {

constexpr double kLayerNameHeight = 4;  // cm
constexpr double kLeastLayerName = 11;  // pixels
constexpr double kStandByGap = 6;       // cm between the fabric, rows and groups in stand-by
constexpr double kEmptyLength = 100;    // cm that a layer without anything is drawn long
constexpr double kMargin = 12;          // cm around everything
constexpr double kShareOfLength = 0.98; // of a layer's length that its name may take
constexpr double kFoldWidth = 4;        // pixels, of the line at a folded edge

enum Height : int
{
    ClothHeight = 0,
    PieceHeight = 1,
    DetailHeight = 2, // above the fills of all pieces
    GuideHeight = 3,
    TextHeight = 4,
};

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

double lengthOf(const QPolygonF &path, int points)
{
    double length = 0;
    for (int i = 1; i < points; ++i) {
        length += QLineF(path[i - 1], path[i]).length();
    }
    return length;
}

// The middle of the text stands at the path's middle point, whatever the alignment: a box that
// the text is as wide as has its middle there.
void followPath(SceneText &shown, const CDbTextObject &text)
{
    for (const GeoPoint2D &point : text.pathPoints()) {
        shown.path.append({point.x, point.y});
    }
    shown.path.translate(
        text.textPosition.x - text.textPathOrigin.x, text.textPosition.y - text.textPathOrigin.y);
    shown.along = lengthOf(shown.path, shown.path.size() / 2 + 1);
    shown.alignment = Qt::AlignHCenter;
}

SceneText sceneText(const CDbTextObject &text)
{
    SceneText shown;
    shown.lines = text.textLines;
    shown.place = {text.textPosition.x, text.textPosition.y};
    shown.height = text.textLetterSize * CDbTextObject::LetterHeight;
    shown.alignment = text.textAlignment & Qt::AlignHorizontal_Mask;
    if (text.textPath.size() > 2) {
        followPath(shown, text);
    }
    return shown;
}

using Texts = std::vector<std::unique_ptr<CDbTextObject>>;

std::vector<SceneText> sceneTexts(const Texts &texts)
{
    std::vector<SceneText> shown;
    for (const auto &text : texts) {
        shown.push_back(sceneText(*text));
    }
    return shown;
}

// The section counts for the texts of a layer alone: those of groups and polygons are on the
// Illustrator drawing whatever theirs is.
std::vector<SceneText> layerTexts(const Texts &texts)
{
    std::vector<SceneText> shown;
    for (const auto &text : texts) {
        if (text->textWorkSection == WorkAreaSection) {
            shown.push_back(sceneText(*text));
        }
    }
    return shown;
}

void addExtents(std::vector<QRectF> &extents, const std::vector<SceneText> &texts)
{
    for (const SceneText &text : texts) {
        extents.push_back(extentOf(text));
    }
}

// What a group's texts and those of its polygons take, where they lie in the marker.
void addExtents(std::vector<QRectF> &extents, const CDbGrPolysObject &group)
{
    addExtents(extents, sceneTexts(group.texts));
    for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        addExtents(extents, sceneTexts(polygon->polygonTexts));
    }
}

StripesItem::Stripes stripesOf(const CDbLineObjectList &lines, double repetition, double offset)
{
    StripesItem::Stripes stripes;
    stripes.repetition = repetition;
    for (const CDbLineObject &line : lines) {
        stripes.positions.push_back(line.linePosition + offset);
    }
    return stripes;
}

std::vector<short> layersByRank(const CDbLayerObjectTable &table)
{
    std::vector<short> layers;
    forEachNumber(table.size(),
        [&](short rank) { layers.push_back(table.getLayerIndexInGiveRank(rank, false)); });
    return layers;
}

QString identityOf(const ScenePiece &piece)
{
    return QStringList{
        QString::number(piece.layer), piece.name, piece.size, piece.side, piece.style}
        .join(QLatin1Char('\n'));
}

QPointF middleOf(const ScenePiece &piece)
{
    return piece.item->sceneBoundingRect().center();
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
    m_details = new DetailsItem(m_options);
    m_details->setZValue(DetailHeight);
    addItem(m_details);
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

void MarkerScene::selectLike(const MarkerScene &other)
{
    std::multimap<QString, int> mine; // those that are not taken yet
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        mine.emplace(identityOf(m_pieces[i]), static_cast<int>(i));
    }
    std::vector<int> positions;
    for (const int position : other.selectedPieces()) {
        const ScenePiece &wanted = other.m_pieces[static_cast<std::size_t>(position)];
        const auto way = [&](const std::pair<const QString, int> &entry) {
            const ScenePiece &piece = m_pieces[static_cast<std::size_t>(entry.second)];
            return QLineF(middleOf(piece), middleOf(wanted)).length();
        };
        const auto [first, last] = mine.equal_range(identityOf(wanted));
        const auto nearest = std::min_element(first, last,
            [&](const auto &one, const auto &another) { return way(one) < way(another); });
        if (nearest != last) {
            positions.push_back(nearest->second);
            mine.erase(nearest);
        }
    }
    selectPieces(positions);
}

// By rank. Layers that occupy nothing stand behind the others if there is something to show of
// them; of a fabric on which nothing lies all are shown. The places come in the order of the file.
std::vector<MarkerScene::Place> MarkerScene::places() const
{
    std::vector<short> layers = layersByRank(m_drawing.getLayerObjectTable());
    const auto firstBare = std::stable_partition(layers.begin(), layers.end(),
        [this](short layer) { return m_fabric.getLengthOccupiedLayer(layer) > kEmptyLayerLength; });
    const auto space = static_cast<double>(CDbMarkerOptions::mDefaultOptions.spaceLayers());
    std::vector<Place> places;
    double start = 0;
    const auto add = [&](short layer, double length, double gap) {
        places.push_back({layer, start, length, m_fabric.getFabricLayerWidth(layer)});
        start += length + gap;
    };
    std::for_each(layers.begin(), firstBare,
        [&](short layer) { add(layer, m_fabric.getLengthOccupiedLayer(layer), space); });
    const bool isBare = places.empty();
    start += isBare ? 0 : 2 * kStandByGap - space;
    std::for_each(firstBare, layers.end(), [&](short layer) {
        if (isBare || !m_fabric.findLayer(layer)->groups.empty()) {
            add(layer, kEmptyLength, 2 * kStandByGap);
        }
    });
    std::sort(places.begin(), places.end(),
        [](const Place &left, const Place &right) { return left.layer < right.layer; });
    return places;
}

void MarkerScene::addLayer(const Place &place)
{
    const QRectF rect(place.start, 0, place.length, place.width);
    QPainterPath edge;
    edge.addRect(rect);
    addLine(edge, QPen(QColor(0x9a, 0xa3, 0xaf), 1), ClothHeight)
        .setBrush(QColor(0xfd, 0xfd, 0xfb));
    m_extent = m_extent.united(rect);

    SceneText name;
    name.lines = QStringList{m_drawing.getLayerObjectTable()[place.layer - 1]->layerName};
    name.place = {place.start, -1};
    name.height = kLayerNameHeight;
    name.alignment = Qt::AlignLeft | Qt::AlignTop;
    name.room = kShareOfLength * place.length;
    name.elided = true;
    auto *nameItem = new SceneTextItem(name, QColor(0x4b, 0x55, 0x63), kLeastLayerName);
    nameItem->setToolTip(plainToolTip(name.lines.first()));
    addItem(nameItem);

    addStripes(rect);
    addFolds(rect);
    const FabricLayer &layer = *m_fabric.findLayer(place.layer);
    addGuideLines(layer, rect);
    std::vector<QRectF> texts;
    addExtents(texts, layerTexts(layer.texts));
    for (const auto &group : layer.groups) {
        if (group->groupPlace() == PlacedOnMarker) {
            addExtents(texts, *group);
        }
    }
    for (const auto &group : layer.groups) {
        if (group->groupPlace() == PlacedOnMarker) {
            addGroup(*group, place, {place.start, 0}, texts);
        }
    }
    addTexts(layerTexts(layer.texts), {place.start, 0});
    addStandBy(place);
}

LineItem &MarkerScene::addLine(const QPainterPath &path, const QPen &pen, double height)
{
    auto *item = new LineItem(path, pen);
    item->setZValue(height);
    addItem(item);
    return *item;
}

LineItem &MarkerScene::addLine(const QLineF &line, const QPen &pen, const QString &toolTip)
{
    QPainterPath path(line.p1());
    path.lineTo(line.p2());
    LineItem &item = addLine(path, pen, GuideHeight);
    item.setToolTip(plainToolTip(toolTip));
    return item;
}

// The pattern begins anew with each layer.
void MarkerScene::addStripes(const QRectF &cloth)
{
    const CDbPlaidAndStripesInfo &plaid = m_fabric.plaidInfo;
    if (!plaid.plaidActive) {
        return;
    }
    auto *item =
        new StripesItem(cloth, stripesOf(plaid.sampleVerLines, plaid.xRepetition, plaid.xRepOffset),
            stripesOf(plaid.sampleHorLines, plaid.yRepetition, plaid.yRepOffset));
    item->setZValue(GuideHeight);
    addItem(item);
    m_guideLines.push_back(item);
}

void MarkerScene::addFolds(const QRectF &cloth)
{
    const QPen pen(QColor(0x6d, 0x28, 0x72), kFoldWidth, Qt::SolidLine, Qt::FlatCap);
    const int type = m_fabric.fabricType;
    if (type == FoldOnBottom || type == TubularFabric) {
        addLine(QLineF(cloth.left(), 0, cloth.right(), 0), pen, windowText("folded edge"));
    }
    if (type == FoldOnTop || type == TubularFabric) {
        addLine(QLineF(cloth.left(), cloth.height(), cloth.right(), cloth.height()), pen,
            windowText("folded edge"));
    }
}

void MarkerScene::addGuideLines(const FabricLayer &layer, const QRectF &cloth)
{
    const QPen pen(QColor(0x00, 0x86, 0x8b), 1, Qt::DashLine, Qt::FlatCap);
    const auto add = [&](const QLineF &line, const QString &text) {
        if (cloth.contains(line.p1()) && cloth.contains(line.p2())) { // or it has none of the cloth
            m_guideLines.push_back(&addLine(line, pen, text));
        }
    };
    for (const CDbLineObject &line : layer.horizontalLines) {
        add({cloth.left(), line.linePosition, cloth.right(), line.linePosition}, line.getText());
    }
    for (const CDbLineObject &line : layer.verticalLines) {
        const double x = cloth.left() + line.linePosition;
        add({x, cloth.top(), x, cloth.bottom()}, line.getText());
    }
}

// `texts` are what the names of the pieces must not lie on, without the shift.
void MarkerScene::addGroup(const CDbGrPolysObject &group, const Place &place, const QPointF &shift,
    const std::vector<QRectF> &texts)
{
    const bool standBy = group.groupPlace() == PlacedInStandBy;
    for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        ScenePiece piece = describe(*polygon);
        piece.layer = place.layer;
        piece.standBy = standBy;
        const PieceOutline outline = outlineOf(*polygon);
        piece.item = addPolygon(outline, PolygonItem::Piece, piece, shift,
            standBy ? windowText("in stand-by") : QString());
        QStringList lines{piece.name, piece.size};
        lines.removeAll(QString());
        m_extent = m_extent.united(
            m_details->add(outline, pieceName(lines, *polygon, outline, texts), shift));
        m_pieces.push_back(std::move(piece));
        if (polygon->cutDownPolygon != nullptr) {
            const PieceOutline partner = outlineOf(*polygon->cutDownPolygon);
            addPolygon(partner, PolygonItem::CutDownPartner, describe(*polygon->cutDownPolygon),
                shift, windowText("partner of a cut-down piece"));
            m_extent = m_extent.united(m_details->add(partner, {}, shift));
        }
        addTexts(sceneTexts(polygon->polygonTexts), shift);
    }
    if (group.blockingFusion != nullptr) { // as its pieces would be cut in one
        const QPainterPath block = contourPath(*group.getFirstContourBlockingFusion());
        addLine(block.translated(shift), QPen(QColor(0x0f, 0x76, 0x6e), 2), DetailHeight);
    }
    addTexts(sceneTexts(group.texts), shift);
}

PolygonItem *MarkerScene::addPolygon(const PieceOutline &outline, PolygonItem::Kind kind,
    const ScenePiece &words, const QPointF &shift, const QString &remark)
{
    auto *item = new PolygonItem(outline, kind);
    addItem(item);
    item->setPos(shift);
    item->setZValue(PieceHeight);
    QStringList lines{QStringLiteral("<b>%1, %2, %3</b>")
                          .arg(words.name.toHtmlEscaped(), words.size.toHtmlEscaped(),
                              words.side.toHtmlEscaped()),
        words.style.toHtmlEscaped()};
    if (!remark.isEmpty()) {
        lines.append(remark);
    }
    for (const CDbImage *image : words.polygon->getImages()) {
        if (!image->file.isEmpty()) {
            lines.append(windowText("image %1").arg(image->file.toHtmlEscaped()));
        }
    }
    item->setToolTip(lines.join(QStringLiteral("<br>")));
    return item;
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
        std::vector<QRectF> texts;
        addExtents(texts, *group);
        addGroup(*group, place, {x - extent.left(), bottom - extent.top()}, texts);
        x += extent.width() + kStandByGap;
        top = std::max(top, bottom + extent.height());
    }
}

void MarkerScene::addTexts(const std::vector<SceneText> &texts, const QPointF &shift)
{
    for (const SceneText &text : texts) {
        auto *item = new SceneTextItem(text.translated(shift), QColor(0x1e, 0x6b, 0x3a));
        item->setZValue(TextHeight);
        addItem(item);
        m_texts.push_back(item);
    }
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
