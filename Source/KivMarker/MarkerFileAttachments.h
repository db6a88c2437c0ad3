// Reading and writing of what is attached to a polygon of a marker file: its links and its images.

#ifndef KIVMARKER_MARKERFILEATTACHMENTS_H
#define KIVMARKER_MARKERFILEATTACHMENTS_H

namespace KivSystem {

class CDbPolygon;
class JsonNode;
class JsonTree;

// The members `links` and `images` of a polygon that has its shape already; both may be missing.
void readAttachments(const JsonNode &node, CDbPolygon &polygon);
void writeAttachments(JsonTree &object, const CDbPolygon &polygon);

} // namespace KivSystem

#endif
