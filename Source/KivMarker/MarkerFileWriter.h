// From a drawing to the JSON text of a marker file.

#ifndef KIVMARKER_MARKERFILEWRITER_H
#define KIVMARKER_MARKERFILEWRITER_H

#include <QByteArray>

namespace KivSystem {

class CDbMarkerDrawing;

QByteArray writeDrawing(const CDbMarkerDrawing &drawing);

} // namespace KivSystem

#endif
