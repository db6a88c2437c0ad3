#include "KivMarker/Polygon.h"

#include "Clipping.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Fabric.h"
#include "KivMarker/Image.h"
#include "KivMarker/Links.h"
#include "KivMarker/Text.h"

#include <algorithm>
#include <cmath>

namespace KivSystem {
namespace {

// A notch's vector and a punch's figure turn with the piece.
void moveMarks(CDbMarkerPointObject &point, const GeoAffine &linear)
{
    if (point.notchDx != 0.0F || point.notchDy != 0.0F) {
        const GeoPoint2D tip = linear.applyToPoint(
            GeoPoint2D(static_cast<double>(point.notchDx), static_cast<double>(point.notchDy)));
        point.notchDx = static_cast<float>(tip.x);
        point.notchDy = static_cast<float>(tip.y);
    }
    if (point.ownPunch() != nullptr) {
        PunchFeature turned = *point.ownPunch();
        const auto &m = turned.punchMatrix;
        const GeoAffine matrix = linear.multiplied(GeoAffine(m[0], m[1], m[2], m[3], 0, 0));
        turned.punchMatrix = {matrix.a(), matrix.b(), matrix.c(), matrix.d()};
        point.setPunch(turned);
    }
}

void moveTable(CDbVectorsObjectTable &table, const GeoAffine &affine, const GeoAffine &direction)
{
    table.apply(affine);
    for (CDbMarkerPointObject &point : table) {
        moveMarks(point, direction);
    }
}

CDbVectorsObjectTable widened(const CDbVectorsObjectTable &contour, double width)
{
    CDbVectorsObjectTable wide;
    for (const GeoPoint2D &point : widened(Contour(contour.begin(), contour.end()), width)) {
        wide.append(CDbMarkerPointObject(point.x, point.y));
    }
    return wide;
}

bool isCurvePoint(const CDbMarkerPointObject &point)
{
    return point.pointType == CurvePoint && !point.matchPoint;
}

// Whether no point between the two positions is further from their straight line than is flat.
bool isFlat(const CDbVectorsObjectTable &contour, int from, int to)
{
    const GeoPoint2D &start = contour[from];
    const GeoPoint2D &end = contour[to];
    const double length = std::hypot(end.x - start.x, end.y - start.y);
    for (int position = from + 1; position < to; ++position) {
        const GeoPoint2D &point = contour[position];
        const double along =
            ((point.x - start.x) * (end.x - start.x) + (point.y - start.y) * (end.y - start.y)) /
            length;
        const double across =
            ((end.x - start.x) * (point.y - start.y) - (end.y - start.y) * (point.x - start.x)) /
            length;
        if (!(std::abs(across) <= kCurveFlatness && along >= 0 && along <= length)) {
            return false;
        }
    }
    return true;
}

} // namespace

GeoAffine Placement::direction() const
{
    const GeoAffine turned = GeoAffine::rotation(rotation);
    return mirrored ? turned.multiplied(GeoAffine::mirrorX()) : turned;
}

GeoAffine Placement::affine() const
{
    const GeoAffine moved = GeoAffine::translation(x, y).multiplied(direction());
    return isScaled() ? moved.multiplied(GeoAffine::scaling(scaleX, scaleY)) : moved;
}

CDbPolygon::CDbPolygon(short piece, short size, bool left)
    : pieceIndex(piece)
    , m_size(size)
    , m_left(left)
{}

CDbPolygon::~CDbPolygon() = default;

void CDbPolygon::place(const CDbPieceSizeObject &size, const Placement &placement)
{
    PieceShape shape = size.shape;
    const GeoAffine affine = placement.affine();
    const GeoAffine direction = placement.direction();
    moveTable(shape.contour, affine, direction);
    moveTable(shape.seam, affine, direction);
    moveTable(shape.internalPoints, affine, direction);
    for (InternalLine &line : shape.internalLines) {
        moveTable(line.points, affine, direction);
    }
    m_placement = placement;
    m_ownShape = false;
    setShape(std::move(shape));
}

void CDbPolygon::setOwnShape(PieceShape shape, const Placement &placement)
{
    m_placement = placement;
    m_ownShape = true;
    setShape(std::move(shape));
}

const CDbVectorsObjectTable *CDbPolygon::currentContour() const
{
    return contourList.empty() ? nullptr : contourList.back();
}

CDbVectorsObjectTable *CDbPolygon::findContour(ContourKind kind) const
{
    const auto found = std::find(contourKinds.begin(), contourKinds.end(), kind);
    return found != contourKinds.end()
               ? contourList[static_cast<std::size_t>(found - contourKinds.begin())]
               : nullptr;
}

bool CDbPolygon::isBlockingPoly(const CDbPolygon *polygon)
{
    return polygon != nullptr && polygon->blockingPolygon;
}

double CDbPolygon::calculateAreaOfPoly(bool clothIsFolded)
{
    const CDbVectorsObjectTable *cut = findContour(CutContour);
    m_area = cut != nullptr ? cut->area() : 0;
    return clothIsFolded && foldedPiece ? 2 * m_area : m_area;
}

void CDbPolygon::makeSymXOrYFromLeftPoly(const CDbFabricObject *fabric, short *error)
{
    Placement image = m_placement;
    image.mirrored = !image.mirrored;
    const std::optional<GeoAffine> back = m_placement.affine().inverted();
    if (fabric == nullptr || contourList.empty() || !back) {
        setErrorCode(error, k_error_missing);
        return;
    }
    setErrorCode(error, k_no_error);
    const GeoAffine affine = image.affine().multiplied(*back);
    const GeoAffine direction = image.direction().multiplied(*m_placement.direction().inverted());
    for (CDbVectorsObjectTable *contour : contourList) {
        moveTable(*contour, affine, direction);
    }
    moveTable(internalPoints, affine, direction);
    for (InternalLine &line : m_internalLines) {
        moveTable(line.points, affine, direction);
    }
    m_placement = image;
    polygonRect = findContour(CutContour)->boundingRect();
    if (m_cutDown != nullptr) {
        m_cutDown->makeSymXOrYFromLeftPoly(fabric, nullptr);
    }
}

void CDbPolygon::addSpacingContour(double width)
{
    const CDbVectorsObjectTable *cut = findContour(CutContour);
    if (cut != nullptr && width > 0) {
        addContour(widened(*cut, width), SpacingContour);
    }
}

void CDbPolygon::thinCurves(double step)
{
    CDbVectorsObjectTable &contour = *findContour(CutContour);
    CDbVectorsObjectTable kept;
    kept.reserve(contour.size());
    int lastKept = 0;
    for (int position = 0; position < contour.size(); ++position) {
        const CDbMarkerPointObject &point = contour[position];
        const bool inner = position > 0 && position + 1 < contour.size() && isCurvePoint(point);
        const GeoPoint2D &before = contour[lastKept];
        if (inner && std::hypot(point.x - before.x, point.y - before.y) < step &&
            isFlat(contour, lastKept, position + 1)) {
            continue;
        }
        kept.append(point);
        lastKept = position;
    }
    constexpr int triangle = 3;
    if (kept.size() >= triangle) {
        contour = std::move(kept);
    }
}

void CDbPolygon::setCutDownPolygon(std::unique_ptr<CDbPolygon> partner)
{
    m_cutDown = std::move(partner);
    cutDownPolygon = m_cutDown.get();
}

void CDbPolygon::setShape(PieceShape shape)
{
    keepContours(std::move(shape.seam), std::move(shape.contour));
    internalPoints = std::move(shape.internalPoints);
    m_internalLines = std::move(shape.internalLines);
    polygonRect = currentContour()->boundingRect();
    m_area = currentContour()->area();
}

void CDbPolygon::addContour(CDbVectorsObjectTable contour, ContourKind kind)
{
    m_contours.push_back(std::make_unique<CDbVectorsObjectTable>(std::move(contour)));
    contourList.push_back(m_contours.back().get());
    contourKinds.push_back(kind);
}

void CDbPolygon::keepContours(CDbVectorsObjectTable seam, CDbVectorsObjectTable contour)
{
    contourList.clear();
    contourKinds.clear();
    m_contours.clear();
    CDbVectorsObjectTable wide =
        m_spacing > 0 && !contour.isEmpty() ? widened(contour, m_spacing) : CDbVectorsObjectTable();
    if (!wide.isEmpty()) {
        addContour(std::move(wide), SpacingContour);
    }
    if (!seam.isEmpty()) {
        addContour(std::move(seam), SeamContour);
    }
    addContour(std::move(contour), CutContour);
}

void CDbPolygon::setSpacing(double spacing)
{
    m_spacing = spacing;
    if (const CDbVectorsObjectTable *contour = currentContour()) {
        const CDbVectorsObjectTable *seam = findContour(SeamContour);
        keepContours(seam != nullptr ? *seam : CDbVectorsObjectTable(), *contour);
    }
}

bool CDbPolygon::isPolygoneHybrid(short *error) const
{
    setErrorCode(error, pieceIndex < 0 ? k_error_index : k_no_error);
    return pieceIndex == 0;
}

QVector<CDbImage *> CDbPolygon::getImages() const
{
    QVector<CDbImage *> images;
    for (const auto &image : m_images) {
        images.append(image.get());
    }
    return images;
}

CDbImage *CDbPolygon::addImage(std::unique_ptr<CDbImage> image)
{
    m_images.push_back(std::move(image));
    return m_images.back().get();
}

void CDbPolygon::setLinks(std::unique_ptr<CDbLinksObjectTable> links)
{
    m_links = std::move(links);
    polygonLinks = m_links.get();
}

} // namespace KivSystem
