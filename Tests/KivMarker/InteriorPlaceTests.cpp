// Where labels and pen texts stand on a piece. The checks share nothing with what they check:
// inside is told by the winding number, boxes are crossed edge by edge.

#include "CutDocument/InteriorPlace.h"
#include "CutDocument/PieceTextFit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace KivSystem {
namespace {

using Outline = std::vector<GeoPoint2D>;

double turn(const GeoPoint2D &a, const GeoPoint2D &b, const GeoPoint2D &c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool winds(const Outline &outline, const GeoPoint2D &point)
{
    int winding = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const GeoPoint2D &a = outline[i];
        const GeoPoint2D &b = outline[(i + 1) % outline.size()];
        if (a.y <= point.y && b.y > point.y && turn(a, b, point) > 0) {
            ++winding;
        } else if (a.y > point.y && b.y <= point.y && turn(a, b, point) < 0) {
            --winding;
        }
    }
    return winding != 0;
}

double toBorder(const Outline &outline, const GeoPoint2D &point)
{
    double least = 1e300;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const GeoPoint2D &a = outline[i];
        const GeoPoint2D &b = outline[(i + 1) % outline.size()];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        const double along =
            ((point.x - a.x) * (b.x - a.x) + (point.y - a.y) * (b.y - a.y)) / length;
        least = std::min(least, along < 0        ? std::hypot(point.x - a.x, point.y - a.y)
                                : along > length ? std::hypot(point.x - b.x, point.y - b.y)
                                                 : std::abs(turn(a, b, point)) / length);
    }
    return least;
}

Outline star(unsigned seed, int corners)
{
    std::mt19937 random(seed);
    const auto upTo = [&](double most) {
        return static_cast<double>(random()) / 4294967296.0 * most;
    };
    const double stretch = 0.2 + upTo(2);
    const double least = upTo(1);
    Outline outline;
    for (int i = 0; i < corners; ++i) {
        const double radius = 8 * (least + 0.1 + upTo(1));
        const double angle = 2 * 3.14159265358979 * i / corners;
        outline.push_back({50 + radius * std::cos(angle), 70 + radius * stretch * std::sin(angle)});
    }
    return outline;
}

// A ring between the radii 8 and 10, open for five degrees.
Outline ring()
{
    Outline outline;
    for (int i = 0; i <= 142; ++i) {
        const double angle = (i < 71 ? i : 142 - i) * 5 * 3.14159265358979 / 180;
        const double radius = i < 71 ? 10 : 8;
        outline.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return outline;
}

const Outline rectangle{{1, 2}, {7, 2}, {7, 6}, {1, 6}};
const Outline cShape{{0, 0}, {10, 0}, {10, 2}, {2, 2}, {2, 8}, {10, 8}, {10, 10}, {0, 10}};
const Outline lShape{{0, 0}, {10, 0}, {10, 3}, {3, 3}, {3, 10}, {0, 10}};
const Outline bow{{0, 0}, {4, 4}, {0, 4}, {4, 0}};

TEST(InteriorPlace, IsTheCentroidWhereThatStandsWell)
{
    const std::pair<Outline, GeoPoint2D> cases[] = {
        {rectangle, {4, 4}},
        {{{0, 0}, {6, 0}, {0, 6}}, {2, 2}},
        {{{0, 0}, {100, 100}, {99.9, 100.1}, {-0.1, 0.1}}, {49.95, 50.05}},
        {{{0, 0}, {6, 0}, {6, 4}, {6, 4}, {3, 4}, {0, 4}}, {3, 2}},
    };
    for (auto [outline, centroid] : cases) {
        for (const char *direction : {"as given", "reversed"}) {
            const GeoPoint2D place = interiorPlace(outline);
            EXPECT_TRUE(place.equals(centroid, 1e-9))
                << place.x << ' ' << place.y << ' ' << direction;
            std::reverse(outline.begin(), outline.end());
        }
    }
}

TEST(InteriorPlace, IsFarFromTheBorderWhereTheCentroidIsNot)
{
    // The best clearance of the L is that of the circle in its corner: to the two long sides and
    // the inner corner; of the C likewise. In the tapering angle a little less will do.
    const double inCorner = 1 / (1 + std::sqrt(0.5));
    const Outline thin{{0, 0}, {20, 20}, {40, 0}, {20, 19.9}};
    const std::tuple<const char *, Outline, double> cases[] = {
        {"C", cShape, 2 * inCorner},
        {"L", lShape, 3 * inCorner},
        {"ring", ring(), 0.98},
        {"tapering angle", thin, 0.9 * 0.1 / (1 + std::sqrt(2.0))},
        {"bow", bow, 4 / (2 + 2 * std::sqrt(2.0))},
    };
    for (auto [name, outline, best] : cases) {
        for (const char *direction : {"as given", "reversed"}) {
            const GeoPoint2D place = interiorPlace(outline);
            SCOPED_TRACE(
                testing::Message() << name << ' ' << direction << ' ' << place.x << ' ' << place.y);
            EXPECT_TRUE(winds(outline, place));
            EXPECT_GE(toBorder(outline, place), 0.79 * best);
            std::reverse(outline.begin(), outline.end());
        }
    }
}

TEST(InteriorPlace, IsInsideAndNearlyTheBestOnAnyShape)
{
    for (unsigned seed = 1; seed <= 150; ++seed) {
        const Outline outline = star(seed, 5 + static_cast<int>(seed % 40));
        const GeoPoint2D place = interiorPlace(outline);
        ASSERT_TRUE(winds(outline, place)) << seed;
        double best = 0;
        for (double x = 30; x < 70; x += 0.5) {
            for (double y = 30; y < 110; y += 0.5) {
                if (winds(outline, {x, y})) {
                    best = std::max(best, toBorder(outline, {x, y}));
                }
            }
        }
        EXPECT_GE(toBorder(outline, place), 0.74 * best) << seed;
        EXPECT_NEAR(clearance(outline, place), toBorder(outline, place), 1e-9) << seed;
    }
}

TEST(InteriorPlace, IsInsideAHairAndTheMeanOfWhatEnclosesNothing)
{
    // Two tiny bodies at the ends of a bent seam that runs out and back.
    const Outline seam{{0, 0}, {0, 100}, {100, 100}, {100.01, 100}, {100.01, 100.01}, {100, 100},
        {0, 100}, {0, 0}, {-0.01, -0.01}, {0, -0.01}};
    const GeoPoint2D inBody = interiorPlace(seam);
    EXPECT_TRUE(winds(seam, inBody)) << inBody.x << ' ' << inBody.y;

    const std::pair<Outline, GeoPoint2D> flat[] = {
        {{}, {0, 0}},
        {{{3, 4}}, {3, 4}},
        {{{3, 4}, {5, 4}}, {4, 4}},
        {{{0, 0}, {3, 3}, {6, 6}, {3, 3}}, {3, 3}},
        {{{2, 2}, {2, 2}, {2, 2}}, {2, 2}},
    };
    for (const auto &[outline, mean] : flat) {
        EXPECT_TRUE(interiorPlace(outline).equals(mean, 1e-12)) << outline.size();
    }
}

TEST(InteriorPlace, ClearanceIsNegativeOutside)
{
    const std::pair<GeoPoint2D, double> cases[] = {
        {{1, 5}, 1}, {{1, 1}, 1}, {{5, 5}, -3}, {{-3, -4}, -5}, {{7, 2}, 0}, {{12, 1}, -2}};
    for (const auto &[point, expected] : cases) {
        EXPECT_NEAR(clearance(cShape, point), expected, 1e-12) << point.x << ' ' << point.y;
    }
    EXPECT_LT(clearance({}, {0, 0}), -1e300);
}

constexpr double kCellOfPoint = 0.03528 * 1.2; // cm

// Corners of a line's box, grown by a share of the letter height. The pen starts in the middle of
// the first cell.
std::array<GeoPoint2D, 4> boxOf(const FittedLine &line, double size, double angle, double margin)
{
    const double height = size * kCellOfPoint;
    double width = 0;
    for (const QChar character : line.text) {
        width += character.unicode() < 0x100 ? height / 2 : height;
    }
    const double more = margin * height;
    const GeoPoint2D middle(line.x, line.y);
    const double first = line.text.at(0).unicode() < 0x100 ? height / 2 : height;
    const GeoPoint2D start = middle.translated(-first / 2, -height / 2);
    std::array<GeoPoint2D, 4> corners{start.translated(-more, -more),
        start.translated(width + more, -more), start.translated(width + more, height + more),
        start.translated(-more, height + more)};
    for (GeoPoint2D &corner : corners) {
        corner.rotate(angle, middle);
    }
    return corners;
}

bool staysOn(const Outline &outline, const FittedText &text, double margin)
{
    for (const FittedLine &line : text.lines) {
        const auto box = boxOf(line, text.fontSize, text.angle, margin);
        for (std::size_t side = 0; side < 4; ++side) {
            const GeoPoint2D &from = box[side];
            const GeoPoint2D &to = box[(side + 1) % 4];
            if (!winds(outline, from)) {
                return false;
            }
            for (std::size_t i = 0; i < outline.size(); ++i) {
                const GeoPoint2D &a = outline[i];
                const GeoPoint2D &b = outline[(i + 1) % outline.size()];
                if (turn(from, to, a) * turn(from, to, b) < 0 &&
                    turn(a, b, from) * turn(a, b, to) < 0) {
                    return false;
                }
            }
        }
    }
    return true;
}

// Lines laid out as they have to stand.
FittedText laidOut(const QStringList &lines, const GeoPoint2D &centre, double size, double angle)
{
    FittedText text{size, angle, {}};
    const double height = size * kCellOfPoint;
    double up = 1.4 * height * (lines.size() - 1) / 2;
    for (const QString &line : lines) {
        const auto box = boxOf({line, 0, 0}, size, 0, 0);
        GeoPoint2D start(centre.x - (box[0].x + box[1].x) / 2, centre.y + up);
        start.rotate(angle, centre);
        text.lines.push_back({line, start.x, start.y});
        up -= 1.4 * height;
    }
    return text;
}

TEST(PieceTextFit, TakesTheFirstSizeAndAngleThatStaysOnThePiece)
{
    const QStringList lines{
        "JACKET FRONT", QString(QChar(0x524D)) + QChar(0xFF) + QChar(0x100), "38 / 2x"};
    const double margin = 0.2;
    int count[4] = {};
    int upright = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        Outline outline = star(seed, 4 + static_cast<int>(seed % 37));
        if (seed % 5 == 0) {
            for (GeoPoint2D &point : outline) {
                point.scale(0.1, 0.1, outline.front());
            }
        }
        const GeoPoint2D centre = interiorPlace(outline);
        const auto text = fitText(outline, centre, lines, 30);
        const int fitted = text ? static_cast<int>(text->lines.size()) : 0;
        SCOPED_TRACE(testing::Message() << seed << ": " << fitted);
        ++count[fitted];
        if (text) {
            EXPECT_TRUE(staysOn(outline, *text, margin - 1e-9));
            upright += text->angle == 90;
            const FittedText expected =
                laidOut(lines.mid(0, fitted), centre, text->fontSize, text->angle);
            for (std::size_t i = 0; i < expected.lines.size(); ++i) {
                EXPECT_EQ(text->lines[i].text, expected.lines[i].text);
                EXPECT_NEAR(text->lines[i].x, expected.lines[i].x, 1e-9);
                EXPECT_NEAR(text->lines[i].y, expected.lines[i].y, 1e-9);
            }
        }
        // Nothing that comes earlier would have done.
        for (int more = 3; more >= std::max(fitted, 1); --more) {
            const double least = text && more == fitted ? text->fontSize : 6;
            for (double size = 30; size >= least; --size) {
                for (const double angle : {0.0, 90.0}) {
                    if (more == fitted && size <= least && angle >= text->angle) {
                        break;
                    }
                    EXPECT_FALSE(staysOn(
                        outline, laidOut(lines.mid(0, more), centre, size, angle), margin + 1e-9))
                        << more << ' ' << size << ' ' << angle;
                }
            }
        }
    }
    // The shapes are such that all happens.
    EXPECT_GT(*std::min_element(std::begin(count), std::end(count)), 3);
    EXPECT_GT(upright, 20);
}

TEST(PieceTextFit, TurnsDropsLinesAndGivesUp)
{
    const auto box = [](double width, double height) {
        return Outline{{0, 0}, {1.2 * width, 0}, {1.2 * width, 1.2 * height}, {0, 1.2 * height}};
    };
    struct Case
    {
        const char *name;
        Outline outline;
        QStringList lines;
        double largest;
        int fitted;
        double size;
        double angle;
    };
    // In parts of 1.2 cm: letters of 6 points are 0.212 high; four of them with margin take 0.508
    // by 0.296.
    const Case cases[] = {
        {"wide", box(20, 5), {"ABCD"}, 20, 1, 20, 0},
        {"tall and narrow", box(1.5, 20), {"ABCDEFGHIJ"}, 20, 1, 20, 90},
        {"tall, but room enough", box(5, 20), {"ABCD"}, 20, 1, 20, 0},
        {"lines dropped", box(0.7, 0.7), {"AB", "CD", "EF"}, 10, 2, 7, 0},
        {"only the first line", box(0.55, 0.55), {"ABCD", "EF", "GH", "IJ"}, 10, 1, 6, 0},
        {"too small", box(0.5, 0.5), {"ABCD"}, 10, 0, 0, 0},
        {"wide letters", box(0.55, 0.55), {QString(4, QChar(0x100))}, 10, 0, 0, 0},
        {"blank lines", box(20, 5), {"", "  ", "AB", "\t"}, 20, 1, 20, 0},
        {"no line", box(20, 5), {" "}, 20, 0, 0, 0},
        {"whole points below a broken one", box(20, 0.7), {"ABC"}, 14.5, 1, 14, 0},
        {"a broken size that fits", box(20, 0.8), {"ABC"}, 14.5, 1, 14.5, 0},
        {"smaller than the smallest", box(20, 5), {"A"}, 4, 1, 4, 0},
        {"no size", box(20, 5), {"A"}, 0, 0, 0, 0},
        {"endless size", box(2, 2), {"A"}, 1e300, 1, 40, 0},
        {"C, outside its centre", cShape, {"A"}, 10, 0, 0, 0},
        {"bow at its knot", bow, {"A"}, 10, 0, 0, 0},
        {"no outline", {}, {"A"}, 10, 0, 0, 0},
    };
    for (const Case &expected : cases) {
        SCOPED_TRACE(expected.name);
        GeoPoint2D middle;
        for (const GeoPoint2D &point : expected.outline) {
            middle.translate(point.scaled(1. / static_cast<double>(expected.outline.size()),
                1. / static_cast<double>(expected.outline.size())));
        }
        const auto text = fitText(expected.outline, middle, expected.lines, expected.largest);
        ASSERT_EQ(text ? static_cast<int>(text->lines.size()) : 0, expected.fitted);
        if (text) {
            EXPECT_EQ(text->fontSize, expected.size);
            EXPECT_EQ(text->angle, expected.angle);
        }
    }
}

TEST(PieceTextFit, KeepsClearOfASlitThatEndsInTheText)
{
    // The slit enters between the corners of the box, which are all on the piece.
    const Outline slit{{0, 0}, {10, 0}, {10, 6}, {5.01, 6}, {5, 3.2}, {4.99, 6}, {0, 6}};
    const auto text = fitText(slit, {5, 3}, {"WAISTBAND"}, 40);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->angle, 0);
    EXPECT_LE(text->fontSize * kCellOfPoint * 0.7, 0.2);
    EXPECT_GT((text->fontSize + 1) * kCellOfPoint * 0.7, 0.2);
}

} // namespace
} // namespace KivSystem
