// From the JSON of a marker file to a drawing.

#ifndef KIVMARKER_MARKERFILEREADER_H
#define KIVMARKER_MARKERFILEREADER_H

#include <memory>

class QJsonValue;

namespace KivSystem {

class CDbMarkerDrawing;

// Throws JsonFault at the first thing that is wrong.
std::unique_ptr<CDbMarkerDrawing> readDrawing(const QJsonValue &document);

} // namespace KivSystem

#endif
