#include "KivConjoin/LineObject.h"

namespace KivSystem {

CDbLineObject::CDbLineObject(double position, const QString &text)
    : linePosition(position)
    , m_text(text)
{}

void CDbLineObjectList::addLine(double position, const QString &text)
{
    m_lines.emplace_back(position, text);
}

} // namespace KivSystem
