#include "CutShapePath.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <array>

namespace KivSystem {
namespace NC {
namespace {

using Text = const QChar *;

constexpr ushort kFirstBeyondAscii = 0x80;

bool isLetter(ushort unit)
{
    return unit == 'M' || unit == 'L';
}

bool isSeparator(ushort unit)
{
    return unit == ' ' || unit == ',' || unit == ';' || (unit >= '\t' && unit <= '\r');
}

// A quotient of two whole numbers below 2^53 is the double that is nearest to the decimal number.
constexpr int kMostDigits = 15;
constexpr std::array<double, kMostDigits + 1> kPowersOfTen = {
    1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool isTokenEnd(Text place, Text end)
{
    return place == end || isLetter(place->unicode()) || isSeparator(place->unicode());
}

// Takes a token and gives its number as QString::toDouble() reads it. What a document holds are
// short decimal numbers; all else is left to that function.
double takeNumber(Text &place, Text end)
{
    const Text begin = place;
    const bool isNegative = begin->unicode() == '-';
    qint64 units = 0;
    int digits = 0;
    int decimals = 0;
    int isDecimal = 0;
    for (place += isNegative ? 1 : 0; place != end; ++place) {
        const ushort unit = place->unicode();
        if (unit >= '0' && unit <= '9' && digits < kMostDigits) {
            units = units * 10 + (unit - '0');
            ++digits;
            decimals += isDecimal;
        } else if (unit == '.' && isDecimal == 0) {
            isDecimal = 1;
        } else {
            break;
        }
    }
    if (digits > 0 && isTokenEnd(place, end)) {
        const double size =
            static_cast<double>(units) / kPowersOfTen[static_cast<std::size_t>(decimals)];
        return isNegative ? -size : size;
    }
    while (!isTokenEnd(place, end)) {
        ++place;
    }
    return QString::fromRawData(begin, static_cast<int>(place - begin)).toDouble();
}

// The numbers of the part of the text that is being read.
class Part
{
public:
    void add(double number)
    {
        if (m_count < m_numbers.size()) {
            m_numbers[m_count] = number;
        }
        ++m_count;
    }

    void finish(std::vector<GeoPoint2D> &points)
    {
        if (m_count == m_numbers.size()) {
            points.emplace_back(m_numbers[0], m_numbers[1]);
        }
        m_count = 0;
    }

private:
    std::array<double, 2> m_numbers{};
    std::size_t m_count = 0;
};

// The points of a text within ASCII.
void scan(const QString &text, std::vector<GeoPoint2D> &points)
{
    Part part;
    const Text end = text.constData() + text.size();
    for (Text place = text.constData(); place != end;) {
        if (isLetter(place->unicode())) {
            part.finish(points);
            ++place;
        } else if (isSeparator(place->unicode())) {
            ++place;
        } else {
            part.add(takeNumber(place, end));
        }
    }
    part.finish(points);
}

// The language as it is defined. What the expressions make of characters beyond ASCII, broken
// surrogate pairs among them, is theirs to say.
void split(const QString &text, std::vector<GeoPoint2D> &points)
{
    static const QRegularExpression letters(QStringLiteral("M|L"));
    static const QRegularExpression separators(QStringLiteral(";|\\s|,"));
    for (const QString &part : text.split(letters, Qt::SkipEmptyParts)) {
        const QStringList numbers = part.split(separators, Qt::SkipEmptyParts);
        if (numbers.size() == 2) {
            points.emplace_back(numbers[0].toDouble(), numbers[1].toDouble());
        }
    }
}

} // namespace

void parseShapePath(const QString &text, std::vector<GeoPoint2D> &points)
{
    ushort allBits = 0;
    for (const QChar letter : text) {
        allBits = static_cast<ushort>(allBits | letter.unicode());
    }
    if (allBits < kFirstBeyondAscii) {
        scan(text, points);
    } else {
        split(text, points);
    }
}

} // namespace NC
} // namespace KivSystem
