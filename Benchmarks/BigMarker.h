// Markers of any size for the benchmarks.

#ifndef KIV_BENCHMARKS_BIGMARKER_H
#define KIV_BENCHMARKS_BIGMARKER_H

#include <memory>

namespace KivSystem {

class DocumentMak;

// One style on one fabric and layer: `pieces` different pieces, each an outline of so many points
// with four notches, and each placed once.
std::unique_ptr<DocumentMak> markerOfPieces(int pieces, int pointsOfPiece = 100);

// Every style has one piece in all sizes on every fabric, with garments in every layer and size,
// and one polygon placed per style, fabric and layer.
struct ReportShape
{
    int styles = 1;
    int fabrics = 1;
    int layers = 1;
    int sizes = 1;
};
std::unique_ptr<DocumentMak> markerOfStyles(const ReportShape &shape);

} // namespace KivSystem

#endif
