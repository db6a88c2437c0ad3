#include "KivMarker/Polygon.h"

#include "KivMarker/Text.h"

namespace KivSystem {
namespace {

GeoAffine linearPart(const GeoAffine &affine)
{
    return GeoAffine(affine.a(), affine.b(), affine.c(), affine.d(), 0, 0);
}

// A notch's vector and a punch's figure turn with the piece, as its points do.
void moveMarks(CDbMarkerPointObject &point, const GeoAffine &linear)
{
    if (point.notchDx != 0.0F || point.notchDy != 0.0F) {
        const GeoPoint2D tip = linear.applyToPoint(
            GeoPoint2D(static_cast<double>(point.notchDx), static_cast<double>(point.notchDy)));
        point.notchDx = static_cast<float>(tip.x);
        point.notchDy = static_cast<float>(tip.y);
    }
    if (point.punch() != nullptr) {
        PunchFeature turned = *point.punch();
        const auto &m = turned.punchMatrix;
        const GeoAffine matrix = linear.multiplied(GeoAffine(m[0], m[1], m[2], m[3], 0, 0));
        turned.punchMatrix = {matrix.a(), matrix.b(), matrix.c(), matrix.d()};
        point.setPunch(turned);
    }
}

void moveTable(CDbVectorsObjectTable &table, const GeoAffine &affine)
{
    table.apply(affine);
    const GeoAffine linear = linearPart(affine);
    for (CDbMarkerPointObject &point : table) {
        moveMarks(point, linear);
    }
}

} // namespace

GeoAffine Placement::affine() const
{
    const GeoAffine turned = GeoAffine::translation(x, y).multiplied(GeoAffine::rotation(rotation));
    return mirrored ? turned.multiplied(GeoAffine::mirrorX()) : turned;
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
    moveTable(shape.contour, affine);
    moveTable(shape.internalPoints, affine);
    for (InternalLine &line : shape.internalLines) {
        moveTable(line.points, affine);
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

void CDbPolygon::setShape(PieceShape shape)
{
    m_contours.clear();
    m_contours.push_back(std::make_unique<CDbVectorsObjectTable>(std::move(shape.contour)));
    contourList = {m_contours.back().get()};
    contourKinds = {CutContour};
    internalPoints = std::move(shape.internalPoints);
    m_internalLines = std::move(shape.internalLines);
    polygonRect = currentContour()->boundingRect();
    m_area = currentContour()->area();
}

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

} // namespace KivSystem
