/// Groups: polygons that are placed together, and the blocks and relations that they form.

#ifndef KIVMARKER_GROUP_H
#define KIVMARKER_GROUP_H

#include "KivMarker/Polygon.h"

#include <QVector>

#include <memory>
#include <vector>

namespace KivSystem {

class CDbFabricObject;

/// Values of CDbGrPolysObject::groupPlace.
enum GroupPlace : int
{
    PlacedOnMarker = 1,
    PlacedInStandBy = 2, ///< taken out of the chart and parked beside the layout
};

/// How groups block each other, and how the polygons of a group do.
struct CDbBlockingObject
{
    enum RelationshipType : short
    {
        NoRelationship = 0,
        MasterOf = 1, ///< another group follows this one
        SlaveOf = 2,  ///< this group follows another one
    };
    enum BlockingType : short
    {
        NotBlocked = 0,
        Fused = 1, ///< the polygons are one contour
        Tied = 2,  ///< the group is master or slave of another one
    };
};

/// The contours of a group that was fused: first the outline of all its polygons, last the one that
/// is used for them, which is wider when they were fused with a gap.
struct BlockingFusion
{
    std::vector<CDbVectorsObjectTable> contours; ///< one or two
};

/// Polygons that move together. Layers count from 1.
class CDbGrPolysObject
{
public:
    CDbGrPolysObject(); ///< an empty group on the marker
    explicit CDbGrPolysObject(GroupPlace place);
    virtual ~CDbGrPolysObject();
    CDbGrPolysObject(const CDbGrPolysObject &) = delete;
    CDbGrPolysObject &operator=(const CDbGrPolysObject &) = delete;

    CDbPolygon *firstPolygon = nullptr;       ///< head of the chain; owned by the group
    BlockingFusion *blockingFusion = nullptr; ///< null until the group is fused; owned
    short masterGroup = 0; ///< 1-based number in the layer of the group that it follows; 0 for none
    std::vector<std::unique_ptr<CDbTextObject>> texts;

    virtual int groupPlace() const { return m_place; } ///< a GroupPlace

    /// Adds a polygon at the end of the chain.
    void addPolygon(std::unique_ptr<CDbPolygon> polygon);
    /// Adds a polygon and takes it over. A null one is left out: k_error_missing.
    void insertPolygon(CDbPolygon *polygon, short *error);
    int polygonCount() const { return static_cast<int>(m_polygons.size()); }
    bool hasMultiPolygon() const { return polygonCount() > 1; }

    /// Bring the measures up to date: the area of the polygons in square cm, and their bounding
    /// rectangle. An empty group has neither: k_error_missing.
    void estimateArea(short *error);
    void estimateBounding(short *error);
    double area() const { return m_area; }
    const GeoRectangle &boundingRect() const { return m_bounding; }

    /// Fuses the polygons into one contour, blockingFusion.
    ///
    /// `withSpacing` takes their current contours, which may be spacing contours, instead of the
    /// cut contours. `contour` is the 1-based contour to take of each polygon's list, 0 for that
    /// choice. With `fillHoles` the room that the polygons enclose belongs to the block; without it
    /// a block with a hole is none. Polygons that are no further apart than `tolerance` touch. The
    /// last contour is `gapX` and `gapY` wider to each side, and without points that change it by
    /// less than `reduction`. Lengths are cm.
    ///
    /// Polygons that do not all join leave the group as it was, without an error. An empty group:
    /// k_error_missing; a contour that a polygon lacks: k_error_index.
    void fusion(bool withSpacing, short contour, bool fillHoles, double tolerance, double gapX,
        double gapY, double reduction, short *error);
    /// All polygons are in the one contour of the fusion.
    bool isAllPolysInFusion() const { return blockingFusion != nullptr; }
    /// Owned by the group; null before it is fused.
    CDbVectorsObjectTable *getFirstContourBlockingFusion() const;
    CDbVectorsObjectTable *getLastContourBlockingFusion() const;

    /// What may be done to the whole group on that fabric: what may be done to each of its pieces.
    /// The turn is the smallest one that is a step of every piece; the tilt the smallest.
    bool permittedSymmetryX(const CDbFabricObject *fabric, short layer) const;
    bool permittedSymmetryY(const CDbFabricObject *fabric, short layer) const;
    short permittedRotationValue(const CDbFabricObject *fabric, short layer) const;
    double permittedFineRotationValue(const CDbFabricObject *fabric, short layer) const;

    /// How the group stands to others of its layer: `index` receives the 1-based number of its
    /// master, or of its first slave, and 0 when it is neither. A group that is not on the fabric:
    /// k_error_missing.
    void getGrPolysIndexSlaveMasterOrAnotherAndItsType(const CDbFabricObject *fabric, short *index,
        CDbBlockingObject::RelationshipType *relation, CDbBlockingObject::BlockingType *type,
        short *error) const;

private:
    PlacementRules permissions(const CDbFabricObject *fabric) const;

    std::vector<std::unique_ptr<CDbPolygon>> m_polygons;
    std::unique_ptr<BlockingFusion> m_fusion;
    GeoRectangle m_bounding;
    double m_area = 0;
    GroupPlace m_place = PlacedOnMarker;
};

/// Groups that belong to others.
using CDbGrPolysObjectList = QVector<CDbGrPolysObject *>;

/// A walk over the polygons of a group.
class CDbPolygonIter
{
public:
    explicit CDbPolygonIter(const CDbGrPolysObject &group) : m_next(group.firstPolygon) {}
    /// Delivers the next polygon; false at the end.
    bool next(CDbPolygon **polygon);

private:
    CDbPolygon *m_next;
};

/// A walk over a list of groups, which outlives it; a null list is an empty one.
class CDbGrPolysObjectIter
{
public:
    explicit CDbGrPolysObjectIter(const CDbGrPolysObjectList *list) : m_list(list) {}
    /// Delivers the next group; false at the end.
    bool next(CDbGrPolysObject **group);

private:
    const CDbGrPolysObjectList *m_list;
    int m_position = 0;
};

} // namespace KivSystem

#endif
