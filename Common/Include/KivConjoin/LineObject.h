/// Straight lines across a marker: guide lines of a layer, stripes of a plaid.

#ifndef KIVCONJOIN_LINEOBJECT_H
#define KIVCONJOIN_LINEOBJECT_H

#include <QString>

#include <cstddef>
#include <vector>

namespace KivSystem {

/// One line, parallel to an axis of the marker.
class CDbLineObject
{
public:
    CDbLineObject(double position, const QString &text);

    double linePosition = 0; ///< centimetres across the line, from the left or from the bottom
    QString getText() const { return m_text; }

private:
    QString m_text;
};

/// Lines of one direction. Owns them.
class CDbLineObjectList
{
public:
    void addLine(double position, const QString &text = QString());
    int size() const { return static_cast<int>(m_lines.size()); }
    bool isEmpty() const { return m_lines.empty(); }

    std::vector<CDbLineObject>::const_iterator begin() const { return m_lines.begin(); }
    std::vector<CDbLineObject>::const_iterator end() const { return m_lines.end(); }

    /// Whether another line follows this one in the list; false for a line of another list.
    bool hasNextLine(const CDbLineObject *line) const;
    /// Position of the line that follows, without its fraction and within the range of a short; 0
    /// when none follows.
    short getNextLinePosition(const CDbLineObject *line) const;

private:
    friend class CDbLineObjectListIter;

    const CDbLineObject *nextLine(const CDbLineObject *line) const;

    std::vector<CDbLineObject> m_lines;
};

/// Walks the lines of a list, which must not change meanwhile. A null list is empty.
class CDbLineObjectListIter
{
public:
    explicit CDbLineObjectListIter(CDbLineObjectList *list) : m_list(list) {}

    /// Delivers the next line; false at the end, with `*line` null.
    bool next(CDbLineObject **line);

private:
    CDbLineObjectList *m_list;
    std::size_t m_position = 0;
};

} // namespace KivSystem

#endif
