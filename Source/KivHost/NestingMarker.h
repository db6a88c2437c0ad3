// NestingMarker: a marker made from a nesting instance and, if there is one, a layout of it.
#ifndef KIVHOST_NESTINGMARKER_H
#define KIVHOST_NESTINGMARKER_H

#include <QString>

#include <memory>

namespace KivSystem {

class DocumentMak;
struct NestingInstance;
struct NestingLayout;

/// The marker has one layer, to which it is set, and one plain fabric as wide as the strip is high.
/// The items are the single pieces, in one size, of one style, which makes one garment; their
/// demands are the chart. Style and fabric bear the instance's name.
struct NestingMarker
{
    std::unique_ptr<DocumentMak> document;
    int pieces = 0; ///< ordered in all
    int placed = 0;
    int outside = 0;            ///< placed pieces that reach out of the strip
    double farthestOutside = 0; ///< by how much the worst of them does, in cm
};

/// A null layout leaves everything to be placed.
NestingMarker makeNestingMarker(const NestingInstance &instance, const NestingLayout *layout);

} // namespace KivSystem

#endif
