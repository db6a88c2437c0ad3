// Checked reading of JSON: a node knows where it stands, and whatever is not as expected is thrown
// as a JsonFault that names the place, what was found and what is expected.

#ifndef KIVMARKER_JSONNODE_H
#define KIVMARKER_JSONNODE_H

#include <QJsonValue>
#include <QLatin1String>
#include <QString>

#include <initializer_list>
#include <optional>
#include <stdexcept>

namespace KivSystem {

// `PATH: what is wrong, what is expected`, in UTF-8.
class JsonFault : public std::runtime_error
{
public:
    JsonFault(const QString &path, const QString &wrong, const QString &expected);
};

// One value with its place. A node refers to the node it came from, which must outlive it; the
// deleted overloads refuse to take a child from a temporary.
class JsonNode
{
public:
    explicit JsonNode(const QJsonValue &root) : m_value(root) {}

    [[noreturn]] void fail(const QString &wrong, const QString &expected) const;
    [[noreturn]] void failType(const QString &expected) const; // names the value as what is wrong

    // `$.fabrics[0].name`
    QString path() const;
    const QJsonValue &value() const { return m_value; }

    // The value itself. Ranges include both ends.
    double asNumber(double lowest, double highest) const;
    int asInteger(int lowest, int highest) const;
    QString asLine() const; // a text without control characters

    // Objects. `allow` fails when this is no object, or holds a key that is not in the list.
    void allow(std::initializer_list<const char *> keys) const;
    bool has(const char *key) const;
    JsonNode member(const char *key) const &; // fails when it is missing
    JsonNode member(const char *key) && = delete;

    // Members by key: a missing one gives the fallback, or fails when there is none.
    double number(const char *key, double lowest, double highest,
        std::optional<double> fallback = std::nullopt) const;
    int integer(
        const char *key, int lowest, int highest, std::optional<int> fallback = std::nullopt) const;
    bool boolean(const char *key, bool fallback) const;
    QString line(const char *key, std::optional<QString> fallback = std::nullopt) const;
    QString paragraph(const char *key) const; // a text with line breaks; empty when missing

    // Arrays. `count` fails when this is no array, or its size is out of the range.
    int count(int lowest, int highest) const;
    JsonNode item(int index) const &;
    JsonNode item(int index) && = delete;

private:
    JsonNode(const QJsonValue &value, const JsonNode *parent, const char *key, int index)
        : m_value(value)
        , m_parent(parent)
        , m_key(key)
        , m_index(index)
    {}

    QString checkedText(bool lineBreaks) const;

    QJsonValue m_value;
    const JsonNode *m_parent = nullptr;
    const char *m_key = nullptr; // null for the item of an array
    int m_index = -1;
};

} // namespace KivSystem

#endif
