/// Bundles: which garment a cut piece belongs to.

#ifndef KIVMARKER_BUNDLE_H
#define KIVMARKER_BUNDLE_H

namespace KivSystem {

class CDbFabricObject;
class CDbPieceObject;

/// The garments of a size are numbered from 1 in each layer. A piece that leaves the chart belongs
/// to the first garment that lacks it; when all have it, to the first that lacks a second one, and
/// so on. Layers and sizes (of the piece) count from 1.
class CDBundleUtility
{
public:
    /// Takes the place of a piece in a garment: `index` receives the garment's number, `copy` which
    /// of its pieces of that side it is, both from 1. Without a fabric or a piece: k_error_missing,
    /// and both are 0.
    static void takeBundleIndex(const CDbFabricObject *fabric, short layer, CDbPieceObject *piece,
        short size, bool left, short *index, short *copy, short *error);
    /// Gives a place back that takeBundleIndex gave. One that is not taken is passed over.
    static void releaseBundleIndex(const CDbFabricObject *fabric, short layer,
        CDbPieceObject *piece, short size, bool left, short index, short copy);
};

} // namespace KivSystem

#endif
