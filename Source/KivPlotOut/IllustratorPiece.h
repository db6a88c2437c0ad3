// KivIllustrator: a placed piece: its contours in the piece's colour, images, information, links,
// points and texts.

#ifndef KIVPLOTOUT_ILLUSTRATORPIECE_H
#define KIVPLOTOUT_ILLUSTRATORPIECE_H

#include "KivConjoin/Device.h"
#include "KivGeo/Point2D.h"
#include "KivMarker/Links.h"

class QTextStream;

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class CDbPolygon;
class CDbVectorsObjectTable;

namespace KivIllustrator {

// `x0` is the place of the polygon's layer along the length, in cm. Null arguments throw
// AssertionError.

/// `relation` and `index` tell the partner of the polygon's group, for the piece's information.
void ILLMK_Polygone(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    CDbPolygon *polygon, double x0, short relation, short index);

/// A closed contour, and the symbols of its points but the first. Nothing for an empty one.
void ILLMK_L_Vect(QTextStream &out, const CDbVectorsObjectTable *table, double x0);

/// The polygon's links of that kind; the lines of tree links are brought up to date.
void ILLMK_Liens_Mk(
    QTextStream &out, CDbFabricObject *fabric, CDbPolygon *polygon, double x0, LinkObjectType type);

/// Lets the line drawer write into a file: each stroke in a group of its own.
class t_Trait_Params_Illustrator_Mk : public CDbTraitParams
{
public:
    /// The stream is borrowed. `translation` is how far the drawing is shifted.
    t_Trait_Params_Illustrator_Mk(QTextStream *stream, const GeoPoint2D &translation);
    ~t_Trait_Params_Illustrator_Mk() override;

    void drawingSingleLine(const GeoPoint2D &from, const GeoPoint2D &to) override;
    GeoPoint2D Get_Translation() const override;

private:
    GeoPoint2D mTranslation;
    QTextStream *mStream;
};

} // namespace KivIllustrator
} // namespace KivSystem

#endif
