#include "JsonNode.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace KivSystem {
namespace {

constexpr int kLongestText = 10000;
constexpr int kShownText = 40;

QString numberText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString describe(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double:
        return QStringLiteral("the number ") + numberText(value.toDouble());
    case QJsonValue::String:
        return value.toString().size() <= kShownText
                   ? QStringLiteral("the text \"%1\"").arg(value.toString())
                   : QStringLiteral("a text");
    case QJsonValue::Array:
        return QStringLiteral("an array");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

} // namespace

JsonFault::JsonFault(const QString &path, const QString &wrong, const QString &expected)
    : std::runtime_error(
          QStringLiteral("%1: %2, expected %3").arg(path, wrong, expected).toStdString())
{}

void JsonNode::fail(const QString &wrong, const QString &expected) const
{
    throw JsonFault(path(), wrong, expected);
}

void JsonNode::failType(const QString &expected) const
{
    fail(QStringLiteral("found ") + describe(m_value), expected);
}

QString JsonNode::path() const
{
    if (m_parent == nullptr) {
        return QStringLiteral("$");
    }
    const QString step = m_key != nullptr ? QLatin1Char('.') + QLatin1String(m_key)
                                          : QStringLiteral("[%1]").arg(m_index);
    return m_parent->path() + step;
}

double JsonNode::asNumber(double lowest, double highest) const
{
    const double number = m_value.toDouble(std::nan(""));
    if (!(number >= lowest && number <= highest)) {
        failType(
            QStringLiteral("a number from %1 to %2").arg(numberText(lowest), numberText(highest)));
    }
    return number + 0.0; // -0 becomes 0
}

int JsonNode::asInteger(int lowest, int highest) const
{
    const double number = m_value.toDouble(std::nan(""));
    if (!(number >= lowest && number <= highest) || number != std::floor(number)) {
        failType(QStringLiteral("a whole number from %1 to %2").arg(lowest).arg(highest));
    }
    return static_cast<int>(number);
}

QString JsonNode::asLine() const
{
    return checkedText(false);
}

QString JsonNode::checkedText(bool lineBreaks) const
{
    if (!m_value.isString()) {
        failType(QStringLiteral("a text"));
    }
    QString text = m_value.toString();
    if (text.size() > kLongestText) {
        fail(QStringLiteral("found a text of %1 characters").arg(text.size()),
            QStringLiteral("at most %1").arg(kLongestText));
    }
    const auto forbidden = [lineBreaks](QChar character) {
        const bool lineBreak = character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
                               character == QLatin1Char('\t');
        return character.category() == QChar::Other_Control && !(lineBreaks && lineBreak);
    };
    const auto found = std::find_if(text.begin(), text.end(), forbidden);
    if (found != text.end()) {
        fail(QStringLiteral("found the control character U+%1 in a text")
                 .arg(uint(found->unicode()), 4, 16, QLatin1Char('0')),
            lineBreaks ? QStringLiteral("no control characters but line breaks and tabs")
                       : QStringLiteral("no control characters"));
    }
    if (!text.isValidUtf16()) {
        fail(QStringLiteral("found half of a surrogate pair in a text"),
            QStringLiteral("whole characters"));
    }
    return text;
}

void JsonNode::allow(std::initializer_list<const char *> keys) const
{
    if (!m_value.isObject()) {
        failType(QStringLiteral("an object"));
    }
    const QJsonObject object = m_value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        const QString key = member.key();
        if (std::none_of(keys.begin(), keys.end(),
                [&key](const char *known) { return key == QLatin1String(known); })) {
            QStringList known;
            for (const char *name : keys) {
                known << QString::fromLatin1(name);
            }
            fail(QStringLiteral("found the unknown key \"%1\"").arg(key.left(kShownText)),
                QStringLiteral("one of ") + known.join(QStringLiteral(", ")));
        }
    }
}

bool JsonNode::has(const char *key) const
{
    return m_value.toObject().contains(QLatin1String(key));
}

JsonNode JsonNode::member(const char *key) const &
{
    if (!m_value.isObject()) {
        failType(QStringLiteral("an object"));
    }
    const QJsonValue found = m_value.toObject().value(QLatin1String(key));
    if (found.isUndefined()) {
        fail(QStringLiteral("the key \"%1\" is missing").arg(QLatin1String(key)),
            QStringLiteral("it to be there"));
    }
    return JsonNode(found, this, key, -1);
}

double JsonNode::number(
    const char *key, double lowest, double highest, std::optional<double> fallback) const
{
    return fallback && !has(key) ? *fallback : member(key).asNumber(lowest, highest);
}

int JsonNode::integer(const char *key, int lowest, int highest, std::optional<int> fallback) const
{
    return fallback && !has(key) ? *fallback : member(key).asInteger(lowest, highest);
}

bool JsonNode::boolean(const char *key, bool fallback) const
{
    if (!has(key)) {
        return fallback;
    }
    const JsonNode found = member(key);
    if (!found.value().isBool()) {
        found.failType(QStringLiteral("true or false"));
    }
    return found.value().toBool();
}

QString JsonNode::line(const char *key, std::optional<QString> fallback) const
{
    return fallback && !has(key) ? *fallback : member(key).asLine();
}

QString JsonNode::paragraph(const char *key) const
{
    return has(key) ? member(key).checkedText(true) : QString();
}

int JsonNode::count(int lowest, int highest) const
{
    if (!m_value.isArray()) {
        failType(QStringLiteral("an array"));
    }
    const int found = m_value.toArray().size();
    if (found < lowest || found > highest) {
        const QString range = lowest == highest
                                  ? QString::number(lowest)
                                  : QStringLiteral("%1 to %2").arg(lowest).arg(highest);
        fail(QStringLiteral("found an array of %1").arg(found), range);
    }
    return found;
}

JsonNode JsonNode::item(int index) const &
{
    return JsonNode(m_value.toArray().at(index), this, nullptr, index);
}

} // namespace KivSystem
