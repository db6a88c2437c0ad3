// MarkerPicture: a fabric of a marker as a picture, arranged and coloured as on the scene of the
// window: layers side by side, groups in stand-by in rows above their layer.
#ifndef KIVHOST_MARKERPICTURE_H
#define KIVHOST_MARKERPICTURE_H

#include "Picture.h"
#include "Window/MarkerItems.h"

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;

/// The fabric is one of the drawing's. Pieces are filled, with their seams, internal lines, notches
/// and drills; each bears its name and its size. Coordinates are those of the marker.
Picture pictureOf(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
    const SceneOptions &options = {});

} // namespace KivSystem

#endif
