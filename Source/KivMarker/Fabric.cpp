#include "KivMarker/Fabric.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Polygon.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace KivSystem {
namespace {

// Calls `visit` for each polygon that lies on the marker.
template <class Visitor>
void forEachPlacedPolygon(const FabricLayer &layer, Visitor visit)
{
    for (const auto &group : layer.groups) {
        if (group->groupPlace() != PlacedOnMarker) {
            continue;
        }
        for (const CDbPolygon *polygon = group->firstPolygon; polygon != nullptr;
             polygon = polygon->nextPolygon) {
            visit(*polygon);
        }
    }
}

// Counts are handed out as short: one that does not fit stands at the largest value.
short shortCount(qint64 count)
{
    const qint64 most = std::numeric_limits<short>::max();
    return static_cast<short>(std::clamp(count, qint64(0), most));
}

template <class Value>
void store(Value *target, Value value)
{
    if (target != nullptr) {
        *target = value;
    }
}

} // namespace

FabricLayer::FabricLayer() = default;
FabricLayer::FabricLayer(FabricLayer &&) noexcept = default;
FabricLayer &FabricLayer::operator=(FabricLayer &&) noexcept = default;
FabricLayer::~FabricLayer() = default;

CDbFabricObject::CDbFabricObject(const QString &name, int layers)
    : fabricName(name)
    , m_layers(static_cast<std::size_t>(layers))
{}

CDbFabricObject::~CDbFabricObject() = default;

void CDbFabricObject::setGaps(double x, double y)
{
    m_gapX = x;
    m_gapY = y;
}

double CDbFabricObject::getMaxGapInFabric() const
{
    return std::max(std::abs(m_gapX), std::abs(m_gapY));
}

const FabricLayer *CDbFabricObject::findLayer(short layer) const
{
    return layer >= 1 && layer <= layerCount() ? &m_layers[static_cast<std::size_t>(layer - 1)]
                                               : nullptr;
}

FabricLayer *CDbFabricObject::findLayer(short layer)
{
    return const_cast<FabricLayer *>(std::as_const(*this).findLayer(layer));
}

double CDbFabricObject::getFabricLayerWidth(short layer) const
{
    const FabricLayer *found = findLayer(layer);
    return found != nullptr ? found->width : 0;
}

double CDbFabricObject::getMultiLayerFabricMaxWidth(
    const CDbMarkerDrawing *drawing, bool onlyOccupied) const
{
    const int layers =
        drawing != nullptr ? std::min(drawing->getLayersQty(nullptr), layerCount()) : layerCount();
    double width = 0;
    for (int number = 1; number <= layers; ++number) {
        const auto layer = static_cast<short>(number);
        if (!onlyOccupied || getLengthOccupiedLayer(layer) > kEmptyLayerLength) {
            width = std::max(width, getFabricLayerWidth(layer));
        }
    }
    return width;
}

double CDbFabricObject::getLengthOccupiedLayer(short layer) const
{
    double length = 0;
    if (const FabricLayer *found = findLayer(layer)) {
        forEachPlacedPolygon(*found, [&length](const CDbPolygon &polygon) {
            length = std::max(length, polygon.polygonRect.right());
        });
    }
    return length;
}

void CDbFabricObject::calculateTheValuesToDisplayInALayer(short layer, short *error,
    short *garments, short *toPlace, short *placed, double *length, double *area) const
{
    qint64 placedCount = 0;
    qint64 orderedCount = 0;
    double placedArea = 0;
    const FabricLayer *found = findLayer(layer);
    if (found != nullptr) {
        forEachPlacedPolygon(*found, [&](const CDbPolygon &polygon) {
            ++placedCount;
            placedArea += polygon.area();
        });
        for (const auto &piece : m_pieces) {
            orderedCount += piece->orderedInLayer(layer);
        }
    }
    const qint64 garmentCount = m_drawing != nullptr ? m_drawing->garmentsInLayer(this, layer) : 0;
    store(garments, shortCount(garmentCount));
    store(toPlace, shortCount(orderedCount - placedCount));
    store(placed, shortCount(placedCount));
    store(length, getLengthOccupiedLayer(layer));
    store(area, placedArea);
    setErrorCode(error, found != nullptr ? k_no_error : k_error_index);
}

double CDbFabricObject::returnPlacementEfficiencyFactor(
    double width, double length, double area) const
{
    const double whole = width * length;
    return whole > 0 ? 100 * area / whole : 0;
}

bool CDbFabricObject::isFabricInvolvedByStyle(short style) const
{
    return firstPieceByStyle(style, nullptr) != nullptr;
}

CDbPieceObject *CDbFabricObject::firstPieceByStyle(short style, short *error) const
{
    const bool known = style >= 1 && static_cast<std::size_t>(style) <= m_firstPieces.size();
    CDbPieceObject *found = known ? m_firstPieces[static_cast<std::size_t>(style - 1)] : nullptr;
    setErrorCode(error, found != nullptr ? k_no_error : k_error_missing);
    return found;
}

CDbPieceObject *CDbFabricObject::firstPiece() const
{
    return m_pieces.empty() ? nullptr : m_pieces.front().get();
}

CDbPieceObject *CDbFabricObject::findPieceAccordingIndex(short index, short *error) const
{
    if (index < 1 || index > pieceCount()) {
        setErrorCode(error, k_error_index);
        return nullptr;
    }
    setErrorCode(error, k_no_error);
    return m_pieces[static_cast<std::size_t>(index - 1)].get();
}

CDbPieceObject *CDbFabricObject::addPiece(std::unique_ptr<CDbPieceObject> piece)
{
    if (piece->getStyleNo() < 1) {
        throw std::out_of_range("the piece has no style");
    }
    if (!m_pieces.empty()) {
        m_pieces.back()->m_next = piece.get();
    }
    piece->m_fabric = this;
    m_pieces.push_back(std::move(piece));
    CDbPieceObject *added = m_pieces.back().get();
    const auto style = static_cast<std::size_t>(added->getStyleNo());
    if (m_firstPieces.size() < style) {
        m_firstPieces.resize(style, nullptr);
    }
    if (m_firstPieces[style - 1] == nullptr) {
        m_firstPieces[style - 1] = added;
    }
    return added;
}

CDbGrPolysObject *CDbFabricObject::layerFirstGrPolys(short layer) const
{
    const FabricLayer *found = findLayer(layer);
    if (found == nullptr || found->groups.empty()) {
        return nullptr;
    }
    found->walkPosition = 0;
    return found->groups.front().get();
}

CDbGrPolysObject *CDbFabricObject::layerNextGrPolys(short layer, short *error) const
{
    const FabricLayer *found = findLayer(layer);
    if (found == nullptr) {
        setErrorCode(error, k_error_index);
        return nullptr;
    }
    setErrorCode(error, k_no_error);
    if (found->walkPosition + 1 >= found->groups.size()) {
        return nullptr;
    }
    return found->groups[++found->walkPosition].get();
}

bool CDbFabricObject::hasTextListInLayer(short layer) const
{
    const FabricLayer *found = findLayer(static_cast<short>(layer + 1));
    return found != nullptr && !found->texts.empty();
}

const CDbGrPolysObjectList *CDbFabricObject::getPlaceGroupList(t_1_Based layer) const
{
    const FabricLayer *found = findLayer(layer.ValidIndex());
    return found != nullptr && !found->groupList.isEmpty() ? &found->groupList : nullptr;
}

const CDbGrPolysObjectList *CDbFabricObject::listOfGroup(const CDbGrPolysObject *group) const
{
    const auto found = std::find_if(m_layers.begin(), m_layers.end(), [group](const auto &layer) {
        return layer.groupList.contains(const_cast<CDbGrPolysObject *>(group));
    });
    return found != m_layers.end() ? &found->groupList : nullptr;
}

const CDbLineObjectList *CDbFabricObject::getHorLines(t_1_Based layer) const
{
    const FabricLayer *found = findLayer(layer.ValidIndex());
    return found != nullptr ? &found->horizontalLines : nullptr;
}

const CDbLineObjectList *CDbFabricObject::getVerLines(t_1_Based layer) const
{
    const FabricLayer *found = findLayer(layer.ValidIndex());
    return found != nullptr ? &found->verticalLines : nullptr;
}

CDbTwainLinkPiecesObjectTable *CDbFabricObject::findLinks(short style)
{
    const auto found = m_links.find(style);
    return found != m_links.end() ? &found->second : nullptr;
}

void CDbFabricObject::addLink(const TwainLink &link)
{
    for (const TiedPoint &tied : {link.first, link.second}) {
        const CDbPieceObject *piece = findPieceAccordingIndex(tied.piece, nullptr);
        for (int size = 1; piece != nullptr && size <= piece->getNumberOfSizes(); ++size) {
            const PieceShape &shape = piece->getPieceSize(static_cast<short>(size)).shape;
            if (tied.point < 1 ||
                tied.point > (tied.internal ? shape.internalPoints : shape.contour).size()) {
                throw std::out_of_range("the piece has no such point in each size");
            }
        }
        if (piece == nullptr) {
            throw std::out_of_range("the fabric has no such piece");
        }
    }
    const short style = findPieceAccordingIndex(link.first.piece, nullptr)->getStyleNo();
    if (findPieceAccordingIndex(link.second.piece, nullptr)->getStyleNo() != style) {
        throw std::out_of_range("the pieces are of different styles");
    }
    m_links[style].addLink(link);
}

CDbGrPolysObject *CDbFabricObject::addGroup(short layer, std::unique_ptr<CDbGrPolysObject> group)
{
    FabricLayer *found = findLayer(layer);
    if (found == nullptr) {
        throw std::out_of_range("the fabric has no such layer");
    }
    for (CDbPolygon *polygon = group->firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        if (CDbPieceObject *piece = findPieceAccordingIndex(polygon->pieceIndex, nullptr)) {
            polygon->sizeNumber = piece->getPieceSize(polygon->pieceSize()).sizeNumber;
            CDbPieceObject::modifyPolyInTableData(
                m_drawing, polygon, layer, this, -1, nullptr, true);
        }
    }
    found->groupList.append(group.get());
    found->groups.push_back(std::move(group));
    return found->groups.back().get();
}

short CDbFabricsObjectTable::findFabricIndex(const CDbFabricObject *fabric) const
{
    const auto found = std::find(begin(), end(), fabric);
    return found != end() ? static_cast<short>(found - begin() + 1) : short(0);
}

} // namespace KivSystem
