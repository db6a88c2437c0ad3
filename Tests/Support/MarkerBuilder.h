// MarkerBuilder: small markers in a few lines. Layers come first, then fabrics, then styles, then
// what is on them; everything counts from 1, lengths are centimetres.
//
//     const auto document = MarkerBuilder()
//                               .layer("Lower").fabric("Denim", {150})
//                               .style("Shirt", {"S", "M"}).garments(1, 1, 1, {2, 0})
//                               .piece(1, 1, "Back", 40, 60).place(1, 1, 1, 1, 0, 0)
//                               .take();

#ifndef KIVTESTS_MARKERBUILDER_H
#define KIVTESTS_MARKERBUILDER_H

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"

#include <QString>

#include <initializer_list>
#include <memory>
#include <vector>

namespace KivSystem {

class MarkerBuilder
{
public:
    MarkerBuilder();

    MarkerBuilder &layer(const QString &name);
    /// One width for each layer; those left out are 0.
    MarkerBuilder &fabric(const QString &name, const std::vector<double> &widths = {});
    /// Sizes with the numbers 1, 2, ...; a size "M/long" has the special text "long".
    MarkerBuilder &style(const QString &name, std::initializer_list<const char *> sizes = {});
    /// Garments of a style on a fabric in a layer, one number for each size.
    MarkerBuilder &garments(
        short style, short fabric, short layer, std::initializer_list<short> quantities);

    /// A rectangle of the same extent in every size of its style, its left bottom at its origin.
    MarkerBuilder &piece(
        short fabric, short style, const QString &name, double length = 10, double width = 5);
    /// Orders left-hand pieces of the fabric's piece.
    MarkerBuilder &order(short fabric, short piece, short size, short layer, short quantity);
    /// Puts one left-hand piece at x, y.
    MarkerBuilder &place(short fabric, short layer, short piece, short size, double x, double y,
        GroupPlace place = PlacedOnMarker);

    CDbMarkerDrawing &drawing() { return *m_drawing; }
    CDbFabricObject &fabricAt(short fabric);

    /// The document; the builder is empty afterwards.
    std::unique_ptr<DocumentMak> take();

private:
    std::unique_ptr<CDbMarkerDrawing> m_drawing;
};

} // namespace KivSystem

#endif
