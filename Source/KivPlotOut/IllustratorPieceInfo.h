// KivIllustrator: the information of a placed piece for the cutter, a text of up to three lines at
// a place inside the piece: a line of marks, and size, ballot, names, codes and quantity in one
// line or in two:
//
//      Fold
//     42A/A 2 Paired

#ifndef KIVPLOTOUT_ILLUSTRATORPIECEINFO_H
#define KIVPLOTOUT_ILLUSTRATORPIECEINFO_H

class QString;
class QTextStream;

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class CDbPolygon;

namespace KivIllustrator {

/// What it says is up to the marker's options. `index` is the number of the group's partner, 0 for
/// none, and `relation` is 1 when the group is its master, 2 when it follows it. The polygon's
/// infoCentre is filled. Throws AssertionError.
void ILLMK_Piece_Info_Mk(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    CDbPolygon *polygon, double x0, short relation, short index);

/// Adds a blank and the addition, if it is wanted and not empty; a text that was empty begins with
/// the blank.
void Ajoute_A_String_Piece_Info(QString &text, bool wanted, const QString &addition);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
