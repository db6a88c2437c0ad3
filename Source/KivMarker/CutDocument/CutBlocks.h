// CutBlocks: how groups are cut as blocks.
//
// A group of one polygon is a block of a single piece; with the block outline on, it is cut
// roughly: the piece's outline widened by the gap between pieces. A group of several polygons is a
// block of several pieces: cut piece by piece, or as one object that holds its pieces, or roughly
// by the one outline that encloses them all. With files of their own for blocks, its pieces stand
// in a document of their own, and the fabric's document holds no more of it than that rough
// outline.
//
// A rough outline never leaves the cloth of its layer and never enters a piece or the rough outline
// of another block; where two blocks lie nearer than the gap, each has half of the room.

#ifndef KIVMARKER_CUTBLOCKS_H
#define KIVMARKER_CUTBLOCKS_H

#include "CutDocument/CutPlan.h"
#include "CutDocument/CutSelection.h"

namespace KivSystem {

class CDbFabricObject;
struct CutRequest;

/// A block with the objects that its pieces make, in the order of its polygons.
struct ShapedBlock
{
    SelectedBlock selected;
    std::vector<CutObject> pieces;
};

/// The objects of the fabric's document, and behind them one list for each block that has a
/// document of its own.
std::vector<std::vector<CutObject>> arrangeBlocks(
    std::vector<ShapedBlock> blocks, const CDbFabricObject &fabric, const CutRequest &request);

} // namespace KivSystem

#endif
