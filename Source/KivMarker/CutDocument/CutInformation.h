// CutInformation: what an operator is told of a piece, and how fast it is cut.

#ifndef KIVMARKER_CUTINFORMATION_H
#define KIVMARKER_CUTINFORMATION_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

class PieceNames;
struct CutRequest;

/// The smallest outlines, in square cm, of the classes 0, 1 and 2; all smaller ones are of class 3:
/// a small piece is cut more slowly, since it holds less firmly on the table. The smallest outline
/// of a block tells its class.
constexpr double kVelocityAreas[] = {400, 100, 25};

/// A label that a cutter prints holds no more characters, and no character that ends a block.
constexpr int kCutterLabelLength = 36;

/// Gives objects their labels, pen texts and speed, as far as they are asked for.
class CutInformation
{
public:
    /// Both outlive it.
    CutInformation(const PieceNames &names, const CutRequest &request);

    void addTo(CutObject &object) const;

private:
    void addLabel(CutObject &object) const;
    QStringList linesOf(const CDbPolygon &polygon) const;

    const PieceNames &m_names;
    const CutRequest &m_request;
};

} // namespace KivSystem

#endif
