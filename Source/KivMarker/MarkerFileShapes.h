// Reading and writing of the parts of a marker file that pieces, polygons and layers share.

#ifndef KIVMARKER_MARKERFILESHAPES_H
#define KIVMARKER_MARKERFILESHAPES_H

#include "JsonNode.h"
#include "JsonTree.h"
#include "KivMarker/Piece.h"
#include "KivMarker/PlaidAndStripes.h"
#include "KivMarker/Text.h"

#include <memory>
#include <vector>

namespace KivSystem {

using TextList = std::vector<std::unique_ptr<CDbTextObject>>;

// Each reads the member of that key, where "optional" ones may be missing; each writer gives what
// its reader reads.
PieceShape readShape(const JsonNode &node); // contour, seam, internalPoints, internalLines
void writeShape(JsonTree &object, const CDbVectorsObjectTable &contour,
    const CDbVectorsObjectTable *seam, // null or empty for none
    const CDbVectorsObjectTable &internalPoints, const std::vector<InternalLine> &internalLines);

TextList readTexts(const JsonNode &node, const char *key); // optional
void writeTexts(JsonTree &object, const char *key, const TextList &texts);

CDbLineObjectList readLines(const JsonNode &node, const char *key); // optional
void writeLines(JsonTree &object, const char *key, const CDbLineObjectList &lines);

PlacementRules readRules(const JsonNode &node); // the rules themselves
JsonTree writeRules(const PlacementRules &rules);

} // namespace KivSystem

#endif
