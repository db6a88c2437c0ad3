// KivIllustrator: the walk over a marker in the order of the file: head, frame of the fabric,
// stripes, guide lines, separation lines, free texts, groups, tail. The layers of a fabric stand
// side by side along the length.

#ifndef KIVPLOTOUT_ILLUSTRATORMARKER_H
#define KIVPLOTOUT_ILLUSTRATORMARKER_H

class QString;
class QTextStream;

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;

namespace KivIllustrator {

/// Writes a whole file. The drawing changes in nothing but the lines of its links, which are
/// brought up to date. Throws AssertionError; what was written before stays.
void Export_Illustrator_Mk(
    QTextStream &out, const QString &title, CDbMarkerDrawing *drawing, CDbFabricObject *fabric);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
