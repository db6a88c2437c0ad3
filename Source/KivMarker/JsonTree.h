// JSON text with the keys in the order in which they were added, laid out for people: an object or
// array of plain values stands on one line, every other has one member or item a line.

#ifndef KIVMARKER_JSONTREE_H
#define KIVMARKER_JSONTREE_H

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace KivSystem {

class JsonTree
{
public:
    // Plain values. Numbers take the shortest text that reads back to the same value, in the
    // precision of their type.
    static JsonTree number(double value);
    static JsonTree number(float value);
    static JsonTree integer(qint64 value);
    static JsonTree boolean(bool value);
    static JsonTree text(const QString &value);

    static JsonTree object();
    static JsonTree array();
    static JsonTree column(); // an array that has one item a line, whatever the items are

    JsonTree &add(const char *key, JsonTree value); // objects
    JsonTree &append(JsonTree value);               // arrays
    bool isEmpty() const { return m_children.empty(); }

    // The same on one line, which counts as a plain value from then on.
    JsonTree flattened() const;

    QByteArray toBytes() const; // ends with a line feed

private:
    enum class Kind
    {
        Plain,
        Object,
        Array,
        Column
    };

    explicit JsonTree(Kind kind, QByteArray text = QByteArray())
        : m_kind(kind)
        , m_text(std::move(text))
    {}

    void write(QByteArray &bytes, int depth, bool oneLine) const;
    bool fitsOneLine() const;

    Kind m_kind;
    QByteArray m_text;
    std::vector<std::pair<const char *, JsonTree>> m_children; // key null in arrays
};

} // namespace KivSystem

#endif
