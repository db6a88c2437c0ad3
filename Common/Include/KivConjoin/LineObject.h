/// Straight lines across a marker: guide lines of a layer, stripes of a plaid.

#ifndef KIVCONJOIN_LINEOBJECT_H
#define KIVCONJOIN_LINEOBJECT_H

#include <QString>

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

private:
    std::vector<CDbLineObject> m_lines;
};

} // namespace KivSystem

#endif
