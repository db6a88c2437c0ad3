// Where texts lie, how large they are, and where a piece has room for one.

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Text.h"

#include <gtest/gtest.h>

namespace KivSystem {
namespace {

CDbTextObject text(const QStringList &lines, Qt::AlignmentFlag alignment, short letterSize = 10)
{
    CDbTextObject result;
    result.setLines(lines);
    result.textAlignment = alignment;
    result.textLetterSize = letterSize;
    result.textPosition = CDbMarkerPointObject(5, 7);
    return result;
}

// A letter of size 10 is 0.72 cm wide and its line 0.84 cm high.
TEST(TextBox, LiesBesideItsPositionByTheAlignmentAndStepsFromLineToLine)
{
    struct Case
    {
        QStringList lines;
        Qt::AlignmentFlag alignment;
        GeoRectangle placing; // left, right, bottom, top
        double textBottom;
    };
    const Case cases[] = {
        {{}, Qt::AlignLeft, {5, 5, 7, 7}, 7},
        {{""}, Qt::AlignHCenter, {5, 5, 7, 7.84}, 7},
        {{"abcd"}, Qt::AlignLeft, {5, 7.88, 7, 7.84}, 7},
        {{"abcd"}, Qt::AlignHCenter, {3.56, 6.44, 7, 7.84}, 7},
        {{"abcd"}, Qt::AlignRight, {2.12, 5, 7, 7.84}, 7},
        {{"ab", "abcd"}, Qt::AlignLeft, {5, 7.88, 7, 7.84}, 6.16},
        {{"abcd", "ab", "a"}, Qt::AlignLeft, {5, 7.88, 6.16, 7.84}, 5.32},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.lines.join('/').toStdString());
        const CDbTextObject object = text(each.lines, each.alignment);
        EXPECT_TRUE(object.boundingRect(PlacingRect).equals(each.placing, 1e-9));
        const GeoRectangle all = object.boundingRect(TextRect);
        EXPECT_NEAR(all.bottom(), each.textBottom, 1e-9);
        EXPECT_NEAR(all.top(), each.placing.top(), 1e-9);
    }
}

TEST(TextBox, IsThatOfTheLastMeasureUntilItIsMeasuredAgain)
{
    CDbTextObject object = text({"abcd"}, Qt::AlignLeft);
    short error = -1;
    object.setMinAndMax(&error);
    EXPECT_EQ(error, k_no_error);
    EXPECT_NEAR(object.textBoxWidth, 2.88, 1e-9);
    EXPECT_NEAR(object.textBoxHeight, 0.84, 1e-9);

    object.textLetterSize = 20;
    EXPECT_NEAR(object.boundingRect(PlacingRect).width(), 2.88, 1e-9);
    object.setMinAndMax(&error);
    EXPECT_NEAR(object.boundingRect(PlacingRect).width(), 5.76, 1e-9);
    EXPECT_NEAR(object.boundingRect(PlacingRect).bottom(), 7, 1e-9);

    object.textLetterSize = 0;
    object.setMinAndMax(&error);
    EXPECT_EQ(error, k_error_index);
    EXPECT_NEAR(object.textBoxWidth, 5.76, 1e-9);
}

TEST(TextSection, IsToldForTheThreePartsOfASheetOnly)
{
    CDbTextObject object;
    const std::pair<short, short> cases[] = {
        {0, k_error_index}, {1, k_no_error}, {3, k_no_error}, {4, k_error_index}};
    for (const auto &[section, expected] : cases) {
        object.textWorkSection = section;
        short error = -1;
        EXPECT_EQ(CDbTextObject::getWorkSection(object, &error), section);
        EXPECT_EQ(error, expected) << section;
    }
}

TEST(TextCentre, IsInsideTheOutlineWithTheWidthThatIsFreeOnBothSides)
{
    struct Case
    {
        const char *name;
        CDbVectorsObjectTable outline;
        double x, y;
        int percent;
    };
    const auto at = [](double x, double y) { return CDbMarkerPointObject(x, y); };
    const Case cases[] = {
        {"rectangle", {at(2, 1), at(12, 1), at(12, 5), at(2, 5)}, 7, 3, 100},
        // A diamond's middle line is all of its width.
        {"diamond", {at(10, 0), at(20, 5), at(10, 10), at(0, 5)}, 10, 5, 100},
        // At a third of the height the sides leave two thirds of the base, middle or not.
        {"triangle", {at(0, 0), at(12, 0), at(6, 9)}, 6, 3, 66},
        {"without area", {at(1, 1)}, 1, 1, 0},
        {"none", {}, 50, 20, 100},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.name);
        const GeoRectangle rect =
            each.outline.isEmpty() ? GeoRectangle(0, 100, 0, 40) : each.outline.boundingRect();
        CDbMarkerPointObject centre(3, 4);
        CDbTextObject::computationTextCenter(
            &centre, each.outline.isEmpty() ? nullptr : &each.outline, rect);
        EXPECT_NEAR(static_cast<double>(centre.notchDx), each.x, 1e-5);
        EXPECT_NEAR(static_cast<double>(centre.notchDy), each.y, 1e-5);
        EXPECT_EQ(centre.pointType, each.percent);
        EXPECT_TRUE(centre.equals(3, 4, 0));
    }
    CDbTextObject::computationTextCenter(nullptr, nullptr, GeoRectangle());
}

// The mean of the corners lies in the mouth of the U; its legs are 2 wide, its rectangle 10.
TEST(TextCentre, StaysInTheArmOfAHollowOutline)
{
    const auto at = [](double x, double y) { return CDbMarkerPointObject(x, y); };
    const CDbVectorsObjectTable outline{
        at(0, 0), at(10, 0), at(10, 20), at(8, 20), at(8, 1), at(2, 1), at(2, 20), at(0, 20)};
    CDbMarkerPointObject centre;
    CDbTextObject::computationTextCenter(&centre, &outline, outline.boundingRect());
    EXPECT_TRUE(outline.contains(
        {static_cast<double>(centre.notchDx), static_cast<double>(centre.notchDy)}));
    EXPECT_LE(centre.pointType, 20);
    EXPECT_GT(centre.pointType, 10);
}

} // namespace
} // namespace KivSystem
