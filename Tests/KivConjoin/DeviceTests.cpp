// The line drawer: which strokes a line becomes by its trait.

#include "KivConjoin/Device.h"
#include "KivConjoin/TraitLine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KivSystem {
namespace {

class Strokes : public CDbTraitParams
{
public:
    void drawingSingleLine(const GeoPoint2D &from, const GeoPoint2D &to) override
    {
        strokes.push_back({from, to});
    }
    GeoPoint2D Get_Translation() const override { return shift; }

    GeoPoint2D shift;
    std::vector<std::pair<GeoPoint2D, GeoPoint2D>> strokes;
};

struct Line
{
    TraitInfo trait;
    CDbPointKIV first{0, 0};
    CDbPointKIV second{10, 0};
    double aside = 0;

    Strokes drawn(const GeoPoint2D &shift = GeoPoint2D()) const
    {
        Strokes params;
        params.shift = shift;
        CDbPointKIV from = first;
        CDbPointKIV to = second;
        LineObject line;
        line.lineTrait->copyTraitInfo(trait);
        line.setV1AndV2(&from, &to);
        CDbDevice::drawKivLineObject(&line, &params, aside);
        return params;
    }
};

using Spans = std::vector<std::pair<double, double>>;

struct Case
{
    const char *name;
    TraitInfo trait;
    Spans spans; // of the way from 0 to 10 along x
};

TEST(Device, TheTraitTellsTheStrokes)
{
    const unsigned char unknown = 9;
    const double endless = std::numeric_limits<double>::infinity();
    const Case cases[] = {
        {"solid", {0, {1, 1, 1}, SolidTrait, 0}, {{0, 10}}},
        {"unknown", {0, {1, 1, 1}, unknown, 0}, {{0, 10}}},
        {"dashed", {0, {3, 1, 0}, DashedTrait, 0}, {{0, 3}, {4, 7}, {8, 10}}},
        {"begins with the gap", {0, {3, 1, 0}, DashedTrait, 1}, {{1, 4}, {5, 8}, {9, 10}}},
        {"repeats backwards", {0, {3, 1, 0}, DashedTrait, -1}, {{1, 4}, {5, 8}, {9, 10}}},
        {"ends in a gap", {0, {3, 4, 0}, DashedTrait, 0}, {{0, 3}, {7, 10}}},
        {"longer than the line", {0, {30, 4, 0}, DashedTrait, 0}, {{0, 10}}},
        {"nothing but gap", {0, {3, 40, 0}, DashedTrait, 1}, {}},
        {"chain", {0, {3, 1, 0.5}, ChainDottedTrait, 0}, {{0, 3}, {4, 4.5}, {5.5, 8.5}, {9.5, 10}}},
        {"chain from its dot", {0, {3, 1, 0.5}, ChainDottedTrait, 2},
            {{0, 0.5}, {1.5, 4.5}, {5.5, 6}, {7, 10}}},
        {"no gap", {0, {3, 0, 1}, DashedTrait, 0}, {{0, 10}}},
        {"no dash", {0, {0, 1, 1}, DashedTrait, 0}, {{0, 10}}},
        {"a negative dot", {0, {3, 1, -1}, ChainDottedTrait, 0}, {{0, 10}}},
        {"an endless gap", {0, {3, endless, 1}, DashedTrait, 0}, {{0, 10}}},
        {"too fine", {0, {1e-6, 1e-6, 1}, DashedTrait, 0}, {{0, 10}}},
    };
    for (const Case &entry : cases) {
        SCOPED_TRACE(entry.name);
        Line line;
        line.trait = entry.trait;
        const Strokes drawn = line.drawn();
        ASSERT_EQ(drawn.strokes.size(), entry.spans.size());
        for (std::size_t index = 0; index < entry.spans.size(); ++index) {
            const auto &[from, to] = drawn.strokes[index];
            EXPECT_TRUE(from.equals(entry.spans[index].first, 0, 1e-12)) << from.x;
            EXPECT_TRUE(to.equals(entry.spans[index].second, 0, 1e-12)) << to.x;
        }
    }
}

TEST(Device, ALineGoesAsideToTheLeftOfItsWayAndWithItsLayer)
{
    Line line;
    line.first = CDbPointKIV(1, 1, 7);
    line.second = CDbPointKIV(1, 4);
    line.trait.traitScalar = 0.5;
    line.aside = 0.25;
    const Strokes drawn = line.drawn({100, 20});
    ASSERT_EQ(drawn.strokes.size(), 1U);
    EXPECT_TRUE(drawn.strokes[0].first.equals(100.25, 21, 1e-12)); // upwards, so that left is -x
    EXPECT_TRUE(drawn.strokes[0].second.equals(100.25, 24, 1e-12));
}

TEST(Device, ALineWithoutEndsOrLengthDrawsNothing)
{
    Line line;
    line.trait = TraitInfo{0, {1, 1, 1}, DashedTrait, 0};
    line.second = line.first;
    EXPECT_TRUE(line.drawn().strokes.empty());
    for (const double wrong : {std::nan(""), HUGE_VAL}) {
        line.second.x = wrong;
        EXPECT_TRUE(line.drawn().strokes.empty());
    }
    Strokes params;
    LineObject bare;
    CDbDevice::drawKivLineObject(&bare, &params, 0);
    CDbDevice::drawKivLineObject(nullptr, &params, 0);
    CDbDevice::drawKivLineObject(&bare, nullptr, 0);
    EXPECT_TRUE(params.strokes.empty());
}

TEST(Device, TheMostStrokesThatALineMayHaveAreDrawn)
{
    Line line;
    const double period = 10.0 / CDbDevice::MostStrokes;
    line.trait = TraitInfo{0, {period / 2, period / 2, 0}, DashedTrait, 0};
    line.second.x = 9.99;
    EXPECT_GT(line.drawn().strokes.size(), 9900U);
    line.second.x = 10.01;
    EXPECT_EQ(line.drawn().strokes.size(), 1U);
}

} // namespace
} // namespace KivSystem
