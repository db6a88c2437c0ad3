/// The line drawer: turns a line with its trait into single strokes, which whoever draws puts down.

#ifndef KIVCONJOIN_DEVICE_H
#define KIVCONJOIN_DEVICE_H

#include "KivGeo/Point2D.h"

namespace KivSystem {

class CDbPointKIV;
class LineObject;

/// What a drawing is made for.
enum e_Type_Preference : int
{
    PreferencePlot = 0,   ///< paper, cutters, exported files
    PreferenceScreen = 1, ///< with what helps at the screen alone
};

/// Where the drawer puts its strokes. Coordinates are centimetres.
class CDbTraitParams
{
public:
    CDbTraitParams();
    virtual ~CDbTraitParams();

    /// The zero point. The drawer shifts by Get_Translation() alone.
    virtual GeoPoint2D getTranslation() const;
    virtual e_Type_Preference preferenceOutput() const; ///< PreferencePlot
    /// Receives one straight stroke, shifted already.
    virtual void drawingSingleLine(const GeoPoint2D &from, const GeoPoint2D &to) = 0;
    /// The place of a point on the drawing, before it is shifted: its x and y.
    virtual GeoPoint2D gradedCoordinate(const CDbPointKIV &point) const;
    /// How far the drawing is shifted, as for a later layer; not at all here.
    virtual GeoPoint2D Get_Translation() const;

protected:
    CDbTraitParams(const CDbTraitParams &) = default;
    CDbTraitParams &operator=(const CDbTraitParams &) = default;
};

class CDbDevice
{
public:
    /// Most strokes that one line becomes; a pattern that is finer is drawn solid.
    static constexpr int MostStrokes = 10000;

    /// Draws the line by its trait, `aside` centimetres further to the left of its way than the
    /// trait tells. The strokes come in the order of the way from v1 to v2; the last may end in the
    /// midst of a dash. Nothing is drawn without both ends, without length, and of a line that is
    /// not finite.
    static void drawKivLineObject(LineObject *line, CDbTraitParams *params, double aside);
};

} // namespace KivSystem

#endif
