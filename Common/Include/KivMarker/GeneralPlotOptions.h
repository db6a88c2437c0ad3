/// The plot options that hold for every drawing: notches and the letters of piece information.

#ifndef KIVMARKER_GENERALPLOTOPTIONS_H
#define KIVMARKER_GENERALPLOTOPTIONS_H

#include <array>

namespace KivSystem {

/// The letter sizes, in points, among which a text is fitted into its place; a size that a setting
/// gives must be one of them.
constexpr std::array<short, 6> kLetterSizeLadder{10, 18, 24, 27, 30, 36};

class CDbGeneralPlotOptions
{
public:
    /// What holds in this process; used on the main thread.
    static CDbGeneralPlotOptions mGeneralPlotOptions;

    bool noNotchCrossBar = false; ///< simple and double notches go without their cross bar
    double notchFactor = 1;       ///< multiplies the vector of a notch
    /// One of kLetterSizeLadder. Piece information begins with it and becomes smaller where the
    /// piece is too narrow.
    short pieceInfoLetterSize = 18;
};

} // namespace KivSystem

#endif
