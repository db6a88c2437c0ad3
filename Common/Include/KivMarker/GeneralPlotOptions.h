/// The plot options that hold for every drawing: notches and the letters of piece information.

#ifndef KIVMARKER_GENERALPLOTOPTIONS_H
#define KIVMARKER_GENERALPLOTOPTIONS_H

namespace KivSystem {

class CDbGeneralPlotOptions
{
public:
    /// What holds in this process; used on the main thread.
    static CDbGeneralPlotOptions mGeneralPlotOptions;

    bool noNotchCrossBar = false; ///< simple and double notches go without their cross bar
    double notchFactor = 1;       ///< multiplies the vector of a notch
    /// Points. Piece information begins with it and becomes smaller where the piece is too narrow.
    short pieceInfoLetterSize = 18;
};

} // namespace KivSystem

#endif
