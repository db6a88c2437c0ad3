// CutWriter: the XML document that the cut formats read.
//
//     <svg tissuL="180.5" tissuW="150" fabric="Denim" unit="cm">
//      <external outil="M43"><circle cx="3" cy="1"/></external>
//      <object velocity="1" label="Back M A Shirt" centreX="20" centreY="30">
//       <path t="M43" drill="M 15,20"/>
//       <path t="internal">M 3,4 L 9,4</path>
//       <path t="notch">M 5,0 L 5,0.5</path>
//       <path t="outline" LiftPlunge="3">M 0,0 L 5,0 L 10,0 L 0,0</path>
//       <text x="2" y="9" fontSize="18" angle="0">M A Back</text>
//       <match_point matchPointX="4" matchPointY="2"/>
//      </object>
//      <M69 frame="2" tissuL="160.25" advance="160.25"/>
//      <scrap><s>M 50,0</s><s>L 50,10</s></scrap>
//     </svg>
//
// Every coordinate goes through the scale and is rounded to 1 / kCoordinateSteps; none is exactly
// -1, which stands for no point.

#ifndef KIVMARKER_CUTWRITER_H
#define KIVMARKER_CUTWRITER_H

#include <QDomDocument>

namespace KivSystem {

struct CutPlan;
struct CutRequest;

/// Steps in a centimetre: finer than any cutter, coarse enough to be the same on every machine.
constexpr double kCoordinateSteps = 1e7;

QDomDocument writeCutDocument(
    const CutPlan &plan, const QString &fabricName, const CutRequest &request);

} // namespace KivSystem

#endif
