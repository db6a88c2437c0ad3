/// Polygons that are made of the chart's pieces.

#ifndef KIVMARKER_SEMIAUTOMATIC_H
#define KIVMARKER_SEMIAUTOMATIC_H

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class CDbPieceObject;
class CDbPolygon;

class SemiAutomatic
{
public:
    /// Makes a polygon for `quantity` pieces that wait in the chart, as it would leave it: in the
    /// shape that the piece's transformation gives, with a bundle index (CDBundleUtility) and, for
    /// a piece that is cut down in two, its partner. A right-hand piece (`left` is false) comes in
    /// the shape of the left-hand one; makeSymXOrYFromLeftPoly mirrors it. The chart itself stays
    /// as it is: see CDbPieceObject::modifyPolyInTableData.
    ///
    /// `layer`, `size` (of the piece) and `pieceIndex` (in the fabric) count from 1.
    /// `spaceNoOverlap`, in cm, is kept around the piece by a spacing contour, the polygon's last
    /// one; 0 for none. `stepDigitalCurve` is the distance in cm below which points of curves are
    /// left out that change nothing that could be cut.
    ///
    /// The caller owns `*polygon`. Errors, with a null polygon: k_error_missing for a null argument
    /// and for a piece that does not have the index; k_error_index for a size or layer past the
    /// end; k_error_state when fewer than `quantity` pieces wait.
    static void returnAPolyWithAllTransformationFromCharter(CDbMarkerDrawing *drawing,
        short quantity, CDbFabricObject *fabric, short layer, CDbPieceObject *piece, short size,
        short pieceIndex, bool left, double spaceNoOverlap, double stepDigitalCurve, short *error,
        CDbPolygon **polygon);
};

} // namespace KivSystem

#endif
