// The parts that cut commands are made from: numbers, formats, expressions, paths.

#include "CutCommands.h"
#include "CutExpressions.h"
#include "CutOutlineSearch.h"
#include "CutShapePath.h"

#include "KivMarker/ShareGlobales.h"

#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace KivSystem {
namespace NC {
namespace {

const QLatin1Char kBlank(' ');

// Numbers of all sizes, and those that lie on or beside the half of a last digit.
std::vector<double> numbers()
{
    std::vector<double> values = {0, -0.0, 0.5, -0.5, 1.5, 2.5, 0.125, 2.675, 1.005, -0.0004,
        4503599627370495.5, 4503599627370496, 1e15, 1e21, 1e300, 5e-324, 0.1, 999999.9999999,
        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()};
    std::mt19937_64 random(5);
    for (int index = 0; index < 4000; ++index) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        values.push_back(value);
        const double units = static_cast<double>(random() % 20000000) - 1e7;
        for (const double step : {1.0, 2.0, 8.0, 20.0, 200.0, 2000.0, 2e5, 1024.0}) {
            const double place = units / step;
            values.push_back(place);
            values.push_back(std::nextafter(place, 1e9));
            values.push_back(std::nextafter(place, -1e9));
        }
    }
    return values;
}

TEST(CutCommands, WriteNumbersAsQStringDoes)
{
    CutCommands commands;
    for (const double value : numbers()) {
        for (const CutNumberForm form :
            {CutNumberForm{0, 0}, {1, 0}, {2, 9}, {3, 0}, {5, 12}, {9, 0}, {10, 0}, {-1, 0}}) {
            commands.clear();
            commands.appendNumber(value, form);
            const QString expected =
                QString("%1").arg(value, form.width, 'f', form.precision, kBlank);
            ASSERT_EQ(commands.text().toString(), expected) << value << ' ' << form.precision;
        }
    }
}

// All texts of up to five of these letters, filled as QString::arg() fills them.
TEST(CutCommands, FillEveryFormatAsQStringDoes)
{
    const auto previous = qInstallMessageHandler([](auto, const auto &, const QString &) {});
    const QString letters = QString::fromUtf8("%123L٣x");
    const QString third = "%1";
    CutCommands commands;
    std::vector<QString> formats = {""};
    for (std::size_t index = 0; index < formats.size(); ++index) {
        const QString format = formats[index];
        const QString two = format.arg(12.5, 0, 'f', 1, kBlank).arg(-3.0, 0, 'f', 1, kBlank);
        commands.clear();
        commands.appendFilled(format, 12.5, -3, {1, 0});
        commands.append(u"|");
        commands.appendFilled(format, 12.5, -3, {1, 0}, &third);
        ASSERT_EQ(commands.text().toString(), two + '|' + two.arg(third)) << format.toStdString();
        for (const QChar letter : letters) {
            if (format.size() < 5) {
                formats.push_back(format + letter);
            }
        }
    }
    qInstallMessageHandler(previous);
}

TEST(CutExpression, ChangesAValueWordByWord)
{
    CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    settings.setCutScaleX(50);
    settings.setCutScaleY(200);
    const struct
    {
        const char *expression;
        double value;
        double expected;
    } rows[] = {
        {"", 7, 7},
        {"* 10", 1.5, 15},
        {" *\t2\n3 ", 1, 6},
        {"5 + 1", 7, 8}, // an operand in front of the first operator
        {"+ 1 * 2", 3, 8},
        {"- 1 / 4", 3, 0.5},
        {"/ 0", 3, 3},
        {"/ abc", 3, 3},
        {"* abc", 3, 0},
        {"*2", 3, 3}, // one word, and no operator
        {"long", -2.7, -2},
        {"long", 2.7, 2},
        {"* 10 long / 4", 0.57, 1.25},
        {"+ long 1", 2.5, 3}, // "long" leaves the operator
        {"* scaleX / 100 long", 7, 3},
        {"/ scaleY", 3, 0.015},
        {"* scalex", 3, 0},
        {"+ 1e3 -2", 0, 998},
        {"long", 1e30, -9223372036854775808.0},
        {"long", std::nan(""), -9223372036854775808.0},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(calcExpression(row.expression, row.value), row.expected) << row.expression;
    }
    EXPECT_FALSE(std::signbit(calcExpression("long", -0.3)));

    const CutExpression scaled("* scaleX");
    settings.setCutScaleX(3);
    EXPECT_EQ(scaled.applied(2), 6) << "a scale counts as it is when a value is computed";
    settings.setCutSettings(CutSettings());
}

TEST(ParseNumbers, AppendsWholeNumbersAndZeroForOtherWords)
{
    std::vector<int> numbers = {7};
    parseNumbers(" 1\t-22 x 3.5 0x10 99999999999 ", numbers);
    EXPECT_EQ(numbers, (std::vector<int>{7, 1, -22, 0, 0, 0, 0}));
}

using Numbers = std::vector<double>;

Numbers parsed(const QString &text)
{
    std::vector<GeoPoint2D> points;
    parseShapePath(text, points);
    Numbers numbers;
    for (const GeoPoint2D &point : points) {
        numbers.insert(numbers.end(), {point.x, point.y});
    }
    return numbers;
}

// The language as it is defined.
Numbers splitAndRead(const QString &text)
{
    Numbers numbers;
    const QRegularExpression letters("M|L");
    const QRegularExpression separators(";|\\s|,");
    for (const QString &part : text.split(letters, Qt::SkipEmptyParts)) {
        const QStringList words = part.split(separators, Qt::SkipEmptyParts);
        if (words.size() == 2) {
            numbers.insert(numbers.end(), {words[0].toDouble(), words[1].toDouble()});
        }
    }
    return numbers;
}

TEST(ParseShapePath, TakesPartsOfExactlyTwoNumbers)
{
    const struct
    {
        const char *text;
        Numbers expected;
    } rows[] = {
        {"", {}},
        {"M 10.5,3 L 12 3;L 12,7", {10.5, 3, 12, 3, 12, 7}},
        {"L1 2M3 4", {1, 2, 3, 4}},
        {"1 2", {1, 2}},
        {"M 0 0 M 1 2 3 L 4 5 L 6", {0, 0, 4, 5}},
        {"m 1 2", {}},
        {"m 1", {0, 1}},
        {"M1.5e1,+2L.5;,;5.", {15, 2, 0.5, 5}},
        {"M1,5 x", {}},
        {"Mx 1-", {0, 0}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parsed(row.text), row.expected) << row.text;
    }
    std::vector<GeoPoint2D> points = {{1, 2}};
    parseShapePath("M3 4", points);
    EXPECT_EQ(points.size(), 2u) << "points are appended";
}

class Dice
{
public:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_engine); }

private:
    std::mt19937 m_engine{7};
};

TEST(ParseShapePath, IsTheSplitOfItsDefinitionForAnyText)
{
    QString letters = "MMMLLL   ,;\t\n\v0123456789.-+eEmlinfa\"";
    letters.append(QChar(0)).append(QChar(0xA0)).append(QChar(0x2003)).append(QChar(0x0663));
    const auto same = [](const QString &text) {
        const Numbers left = parsed(text);
        const Numbers right = splitAndRead(text);
        const auto bits = [](double value) {
            return std::isnan(value) ? QString("nan")
                                     : QString::number(value, 'g', 17) + QString::number(1 / value);
        };
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
            [&bits](double a, double b) { return bits(a) == bits(b); });
    };
    Dice dice;
    for (int round = 0; round < 20000; ++round) {
        // Most texts stay within ASCII; a few hold one half of a surrogate pair.
        const int last = round % 4 == 0 ? letters.size() : letters.size() - 3;
        QString text;
        for (int length = dice.below(24); length > 0; --length) {
            text += letters[dice.below(last)];
        }
        if (round % 40 == 0) {
            text += QString("M1,2") + QChar(0xD800);
        }
        ASSERT_TRUE(same(text)) << text.toStdString();
    }
    for (int round = 0; round < 20000; ++round) {
        const double value = std::ldexp(1e9 + dice.below(1000000000), -dice.below(60));
        const QString number = QString::number(value, 'g', 1 + dice.below(17));
        ASSERT_TRUE(same("M-" + number + ' ' + number + "L0" + number + "," + number + "0"))
            << number.toStdString();
    }
    EXPECT_TRUE(same("M-0,0L-0.0,00L" + QString(60, '1') + "," + QString(60, '0') + "1"));
}

TEST(CutOutlineSearch, FindsTheSameVertexHoweverOftenItIsAsked)
{
    Dice dice;
    std::vector<GeoPoint2D> points;
    points.reserve(500);
    for (int index = 0; index < 500; ++index) {
        points.emplace_back(dice.below(12), dice.below(12) / 10.0);
    }
    points[7] = {std::nan(""), 1};
    points[8] = {std::numeric_limits<double>::infinity(), 1};
    const auto anyIndex = [&] { return static_cast<std::size_t>(dice.below(500)); };
    CutOutlineSearch search(points);
    for (int round = 0; round < 5000; ++round) {
        GeoPoint2D place = points[anyIndex()];
        place.x += dice.below(3) * 0.9e-12; // up to a place that is just too far off
        const std::size_t from = anyIndex();
        boost::optional<std::size_t> expected;
        for (std::size_t index = from; index < points.size(); ++index) {
            if (std::abs(points[index].x - place.x) <= 1e-12 &&
                std::abs(points[index].y - place.y) <= 1e-12) {
                expected = index;
            }
        }
        const auto found = search.vertexAt(place, from);
        ASSERT_EQ(found.has_value(), expected.has_value()) << round;
        ASSERT_EQ(found.value_or(0), expected.value_or(0)) << round;
    }
}

TEST(CutOutlineSearch, FindsTheFirstSegmentUnderAPlace)
{
    const std::vector<GeoPoint2D> points = {{0, 0}, {10, 0}, {10, 10}, {4, 0}, {4, 0}, {-5e5, 0}};
    const struct
    {
        GeoPoint2D place;
        std::size_t from;
        int expected; // -1 for none
    } rows[] = {
        {{4, 0}, 0, 1},
        {{4, 0}, 1, 3},
        {{4, 0}, 4, 5},
        {{10, 3}, 0, 2},
        {{7, 5}, 0, 3},
        {{7, 5 + 1e-7}, 0, 3}, // beside a long segment the way is hardly longer
        {{7, 5.001}, 0, -1},
        {{10 + 1e-11, 0}, 0, -1},
        {{-2e5, 0}, 0, 5},
        {{-6e5, 0}, 0, -1},
        {{4, 0}, 5, -1},
        {{4, 0}, 9, -1},
        {{std::nan(""), 0}, 0, -1},
    };
    for (const auto &row : rows) {
        const auto found = CutOutlineSearch(points).segmentThrough(row.place, row.from);
        EXPECT_EQ(found ? static_cast<int>(*found) : -1, row.expected)
            << row.place.x << ',' << row.place.y << " from " << row.from;
    }
}

} // namespace
} // namespace NC
} // namespace KivSystem
