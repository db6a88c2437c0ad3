// CutPicture: makes a cut document one that a browser shows, and writes it as text.
//
// The cut formats read the document by the names of its elements and attributes; what is added here
// has other names, and they pass over it.
#ifndef KIVHOST_CUTPICTURE_H
#define KIVHOST_CUTPICTURE_H

#include <QByteArray>

class QDomDocument;

namespace KivSystem {

/// Adds what SVG asks for: the name space, a viewBox, the path data and colours of each path, and
/// at the end one group with y upward that shows them, since a browser shows nothing inside of an
/// element that it does not know.
void addPicture(QDomDocument &document);

/// The document as XML in UTF-8. The attributes of an element stand in the order of their names:
/// the same document is the same text in every run.
QByteArray xmlText(const QDomDocument &document);

} // namespace KivSystem

#endif
