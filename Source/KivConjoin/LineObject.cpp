#include "KivConjoin/LineObject.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace KivSystem {

CDbLineObject::CDbLineObject(double position, const QString &text)
    : linePosition(position)
    , m_text(text)
{}

void CDbLineObjectList::addLine(double position, const QString &text)
{
    m_lines.emplace_back(position, text);
}

const CDbLineObject *CDbLineObjectList::nextLine(const CDbLineObject *line) const
{
    // Pointers into other lists have no order by < alone.
    const std::less<const CDbLineObject *> before;
    const CDbLineObject *end = m_lines.data() + m_lines.size();
    const bool isHere = !before(line, m_lines.data()) && before(line, end);
    return isHere && line + 1 != end ? line + 1 : nullptr;
}

bool CDbLineObjectList::hasNextLine(const CDbLineObject *line) const
{
    return nextLine(line) != nullptr;
}

short CDbLineObjectList::getNextLinePosition(const CDbLineObject *line) const
{
    using Limits = std::numeric_limits<short>;
    const CDbLineObject *next = nextLine(line);
    const double position = next != nullptr ? next->linePosition : 0;
    return static_cast<short>(
        std::clamp(position, double(Limits::lowest()), double(Limits::max())));
}

bool CDbLineObjectListIter::next(CDbLineObject **line)
{
    const bool found = m_list != nullptr && m_position < m_list->m_lines.size();
    *line = found ? &m_list->m_lines[m_position++] : nullptr;
    return found;
}

} // namespace KivSystem
