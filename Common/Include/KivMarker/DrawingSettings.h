/// Settings of every drawing: the colours of its pieces, and how pieces become polygons.

#ifndef KIVMARKER_DRAWINGSETTINGS_H
#define KIVMARKER_DRAWINGSETTINGS_H

#include <QColor>

#include <array>

namespace KivSystem {

/// The colours of pieces whose colour index is not 0, which is black. Each can be told from white,
/// from black and from the others.
using ColorTable = std::array<QColor, 8>;

struct DrawingSettings
{
    ColorTable colors{QColor(0xc8, 0x1e, 0x1e), QColor(0x1f, 0x5f, 0xbf), QColor(0x1e, 0x8a, 0x3c),
        QColor(0xd0, 0x70, 0x00), QColor(0x7a, 0x2f, 0xa0), QColor(0x00, 0x86, 0x8b),
        QColor(0x7a, 0x4a, 0x1e), QColor(0xd6, 0x30, 0x8c)};
    double spaceNoOverlap = 0;     ///< cm that are kept around a piece
    double stepDigitalCurve = 0.5; ///< cm between the points that a curve becomes
};

} // namespace KivSystem

#endif
