#include "KivMarker/Group.h"

#include "Clipping.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Fabric.h"
#include "KivMarker/Text.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace KivSystem {
namespace {

// The contour of a polygon that a fusion takes; null when it has none such.
const CDbVectorsObjectTable *contourToFuse(
    const CDbPolygon &polygon, bool withSpacing, short number)
{
    const auto count = polygon.contourList.size();
    if (number != 0) {
        const auto position = static_cast<std::size_t>(number - 1);
        return number > 0 && position < count ? polygon.contourList[position] : nullptr;
    }
    if (withSpacing || count == 0) {
        return polygon.currentContour();
    }
    return polygon.findContour(CutContour);
}

CDbVectorsObjectTable tableOf(const Contour &contour)
{
    CDbVectorsObjectTable table;
    table.reserve(static_cast<int>(contour.size()));
    for (const GeoPoint2D &point : contour) {
        table.append(CDbMarkerPointObject(point.x, point.y));
    }
    return table;
}

// The smallest turn that is a step of both; 0, which forbids turning, when either is 0 or the turn
// would be more than a full one.
short commonStep(short left, short right)
{
    constexpr int fullTurn = 360;
    const int step = std::lcm(int(left), int(right));
    return step <= fullTurn ? static_cast<short>(step) : short(0);
}

} // namespace

CDbGrPolysObject::CDbGrPolysObject() = default;

CDbGrPolysObject::CDbGrPolysObject(GroupPlace place) : m_place(place) {}

CDbGrPolysObject::~CDbGrPolysObject() = default;

void CDbGrPolysObject::addPolygon(std::unique_ptr<CDbPolygon> polygon)
{
    if (m_polygons.empty()) {
        firstPolygon = polygon.get();
    } else {
        m_polygons.back()->nextPolygon = polygon.get();
    }
    polygon->nextPolygon = nullptr;
    m_polygons.push_back(std::move(polygon));
}

void CDbGrPolysObject::insertPolygon(CDbPolygon *polygon, short *error)
{
    setErrorCode(error, polygon != nullptr ? k_no_error : k_error_missing);
    if (polygon != nullptr) {
        addPolygon(std::unique_ptr<CDbPolygon>(polygon));
    }
}

void CDbGrPolysObject::estimateArea(short *error)
{
    setErrorCode(error, m_polygons.empty() ? k_error_missing : k_no_error);
    m_area = 0;
    for (const auto &polygon : m_polygons) {
        m_area += polygon->area();
    }
}

void CDbGrPolysObject::estimateBounding(short *error)
{
    setErrorCode(error, m_polygons.empty() ? k_error_missing : k_no_error);
    m_bounding = m_polygons.empty() ? GeoRectangle() : m_polygons.front()->polygonRect;
    for (const auto &polygon : m_polygons) {
        const GeoRectangle &rect = polygon->polygonRect;
        m_bounding.setRect(std::min(m_bounding.left(), rect.left()),
            std::max(m_bounding.right(), rect.right()),
            std::min(m_bounding.bottom(), rect.bottom()), std::max(m_bounding.top(), rect.top()));
    }
}

void CDbGrPolysObject::fusion(bool withSpacing, short contour, bool fillHoles, double tolerance,
    double gapX, double gapY, double reduction, short *error)
{
    std::vector<Contour> outlines;
    for (const auto &polygon : m_polygons) {
        const CDbVectorsObjectTable *taken = contourToFuse(*polygon, withSpacing, contour);
        if (taken == nullptr) {
            setErrorCode(error, k_error_index);
            return;
        }
        outlines.emplace_back(taken->begin(), taken->end());
    }
    setErrorCode(error, outlines.empty() ? k_error_missing : k_no_error);

    const Region region = joined(outlines, tolerance, fillHoles);
    if (region.outer.size() != 1 || !(fillHoles || region.holes.empty())) {
        return;
    }
    auto fused = std::make_unique<BlockingFusion>();
    fused->contours.push_back(tableOf(region.outer.front()));
    if (gapX > 0 || gapY > 0 || reduction > 0) {
        Contour used = widenedUnion(region.outer, gapX, gapY).front();
        fused->contours.push_back(tableOf(reduction > 0 ? simplified(used, reduction) : used));
    }
    m_fusion = std::move(fused);
    blockingFusion = m_fusion.get();
    for (const auto &polygon : m_polygons) {
        polygon->blockingPolygon = true;
    }
}

CDbVectorsObjectTable *CDbGrPolysObject::getFirstContourBlockingFusion() const
{
    return m_fusion != nullptr ? &m_fusion->contours.front() : nullptr;
}

CDbVectorsObjectTable *CDbGrPolysObject::getLastContourBlockingFusion() const
{
    return m_fusion != nullptr ? &m_fusion->contours.back() : nullptr;
}

PlacementRules CDbGrPolysObject::permissions(const CDbFabricObject *fabric) const
{
    PlacementRules all;
    bool isFirst = true;
    for (const auto &polygon : m_polygons) {
        const CDbPieceObject *piece =
            fabric != nullptr ? fabric->findPieceAccordingIndex(polygon->pieceIndex, nullptr)
                              : nullptr;
        const PlacementRules rules = piece != nullptr    ? piece->rulesOn(fabric)
                                     : fabric != nullptr ? fabric->rules
                                                         : PlacementRules();
        if (isFirst) {
            all = rules;
        }
        isFirst = false;
        all.rotationStep = commonStep(all.rotationStep, rules.rotationStep);
        all.fineRotation = std::min(all.fineRotation, rules.fineRotation);
        all.flipX = all.flipX && rules.flipX;
        all.flipY = all.flipY && rules.flipY;
    }
    return all;
}

// The rules of a fabric hold in all of its layers.
bool CDbGrPolysObject::permittedSymmetryX(const CDbFabricObject *fabric, short /*layer*/) const
{
    return permissions(fabric).flipX;
}

bool CDbGrPolysObject::permittedSymmetryY(const CDbFabricObject *fabric, short /*layer*/) const
{
    return permissions(fabric).flipY;
}

short CDbGrPolysObject::permittedRotationValue(const CDbFabricObject *fabric, short /*layer*/) const
{
    return permissions(fabric).rotationStep;
}

double CDbGrPolysObject::permittedFineRotationValue(
    const CDbFabricObject *fabric, short /*layer*/) const
{
    return permissions(fabric).fineRotation;
}

void CDbGrPolysObject::getGrPolysIndexSlaveMasterOrAnotherAndItsType(const CDbFabricObject *fabric,
    short *index, CDbBlockingObject::RelationshipType *relation,
    CDbBlockingObject::BlockingType *type, short *error) const
{
    *index = 0;
    *relation = CDbBlockingObject::NoRelationship;
    *type = blockingFusion != nullptr ? CDbBlockingObject::Fused : CDbBlockingObject::NotBlocked;
    const CDbGrPolysObjectList *list = fabric != nullptr ? fabric->listOfGroup(this) : nullptr;
    setErrorCode(error, list != nullptr ? k_no_error : k_error_missing);
    if (list == nullptr) {
        return;
    }
    if (masterGroup != 0) {
        *index = masterGroup;
        *relation = CDbBlockingObject::SlaveOf;
    } else {
        const auto own =
            static_cast<short>(list->indexOf(const_cast<CDbGrPolysObject *>(this)) + 1);
        const auto slave = std::find_if(list->begin(), list->end(),
            [own](const CDbGrPolysObject *group) { return group->masterGroup == own; });
        if (slave == list->end()) {
            return;
        }
        *index = static_cast<short>(slave - list->begin() + 1);
        *relation = CDbBlockingObject::MasterOf;
    }
    if (*type == CDbBlockingObject::NotBlocked) {
        *type = CDbBlockingObject::Tied;
    }
}

bool CDbPolygonIter::next(CDbPolygon **polygon)
{
    *polygon = m_next;
    if (m_next == nullptr) {
        return false;
    }
    m_next = m_next->nextPolygon;
    return true;
}

bool CDbGrPolysObjectIter::next(CDbGrPolysObject **group)
{
    if (m_list == nullptr || m_position >= m_list->size()) {
        *group = nullptr;
        return false;
    }
    *group = m_list->at(m_position);
    ++m_position;
    return true;
}

} // namespace KivSystem
