// KivIllustrator: the lines around the pieces of a fabric: samples of its stripes, guide lines with
// their labels, lines between the layers.

#ifndef KIVPLOTOUT_ILLUSTRATORLINES_H
#define KIVPLOTOUT_ILLUSTRATORLINES_H

class QTextStream;

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;

namespace KivIllustrator {

// All of them throw AssertionError when the layers cannot be walked.

/// Samples of the stripes beside the layer that the marker is set to, or beside all.
void ILLMK_Plaid_Stripes(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric);
/// Flags at both ends of each guide line; `totalLength` is that of all layers in cm.
void ILLMK_Lignes_Guides(
    QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, double totalLength);
/// A line where a layer ends and one where the next begins.
void ILLMK_Lignes_Separation_Layers(
    QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
