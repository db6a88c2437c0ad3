// Guide lines: what follows a line of a list, and the walk over the list.

#include "KivConjoin/LineObject.h"

#include <gtest/gtest.h>

namespace KivSystem {
namespace {

TEST(LineList, TheLineThatFollowsIsTheNextOfTheListAndItsPositionAWholeShort)
{
    CDbLineObjectList list;
    for (const double position : {30.0, -2.9, 12.75, 99999.0, -99999.0}) {
        list.addLine(position);
    }
    std::vector<CDbLineObject *> lines;
    CDbLineObjectListIter iterator(&list);
    for (CDbLineObject *line = nullptr; iterator.next(&line);) {
        lines.push_back(line);
    }
    ASSERT_EQ(lines.size(), 5U);
    const short following[] = {-2, 12, 32767, -32768};
    for (std::size_t index = 0; index < 4; ++index) {
        EXPECT_TRUE(list.hasNextLine(lines[index])) << index;
        EXPECT_EQ(list.getNextLinePosition(lines[index]), following[index]) << index;
    }
    CDbLineObject *line = lines[0];
    EXPECT_FALSE(iterator.next(&line));
    EXPECT_EQ(line, nullptr);

    const CDbLineObject stranger(1, QString());
    for (const CDbLineObject *last : {static_cast<const CDbLineObject *>(lines[4]), &stranger,
             static_cast<const CDbLineObject *>(nullptr)}) {
        EXPECT_FALSE(list.hasNextLine(last));
        EXPECT_EQ(list.getNextLinePosition(last), 0);
    }
    EXPECT_FALSE(CDbLineObjectList().hasNextLine(nullptr));
    EXPECT_FALSE(CDbLineObjectListIter(nullptr).next(&line));
}

} // namespace
} // namespace KivSystem
