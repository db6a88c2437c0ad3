// The rules that every drawing keeps, whatever file it was read from.

#ifndef KIV_TESTS_MARKERRULES_H
#define KIV_TESTS_MARKERRULES_H

#include <QString>

namespace KivSystem {
class CDbMarkerDrawing;
}

// The first rule that the drawing breaks; empty when it keeps all of them.
QString brokenRule(const KivSystem::CDbMarkerDrawing &drawing);

#endif
