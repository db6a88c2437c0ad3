#include "KivCore/Init.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>
#include <vector>

namespace KivSystem {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<int> early;
const bool registeredEarly =
    (KivInit::instance()->registerRunOnce([]() { early.push_back(1); }, KivInit::StageAfterQt, 0),
        true);

class KivInitTest : public testing::Test
{
protected:
    void add(int mark, KivInit::RunStage stage, int priority)
    {
        KivInit::instance()->registerRunOnce(
            [this, mark]() { ran.push_back(mark); }, stage, priority);
    }

    std::vector<int> runStage(KivInit::RunStage stage)
    {
        ran.clear();
        KivInit::instance()->run(stage);
        return ran;
    }

    std::vector<int> ran;
};

TEST_F(KivInitTest, RunsByPriorityThenByRegistrationEachStageByItselfAndOnce)
{
    add(1, KivInit::StageAfterQt, 5);
    add(2, KivInit::StagePluginsLoaded, 0);
    add(3, KivInit::StageAfterQt, -1);
    add(4, KivInit::StageAfterQt, 5);
    add(5, KivInit::StageAfterQt, 0);
    KivInit::instance()->registerRunOnce(boost::function<void()>(), KivInit::StageAfterQt, 0);
    EXPECT_THAT(runStage(KivInit::StageAfterQt), ElementsAre(3, 5, 1, 4));
    EXPECT_THAT(runStage(KivInit::StageAfterQt), IsEmpty());
    EXPECT_THAT(runStage(KivInit::StagePluginsLoaded), ElementsAre(2));
    add(6, KivInit::StageAfterQt, 0);
    EXPECT_THAT(runStage(KivInit::StageAfterQt), ElementsAre(6)) << "a plug-in loaded late";
    EXPECT_THAT(early, ElementsAre(1)) << "registered by a static initialiser";
    std::vector<int> many(40);
    std::iota(many.begin(), many.end(), 0);
    for (const int mark : many) {
        add(mark, KivInit::StageAfterQt, 0);
    }
    EXPECT_EQ(runStage(KivInit::StageAfterQt), many);
}

TEST_F(KivInitTest, WhatIsRegisteredWhileRunningOrBehindAFailureWaitsForTheNextRun)
{
    add(2, KivInit::StageAfterQt, 2);
    KivInit::instance()->registerRunOnce(
        [this]() {
            add(1, KivInit::StageAfterQt, 1);
            throw std::runtime_error("start-up");
        },
        KivInit::StageAfterQt, 0);
    EXPECT_THROW(runStage(KivInit::StageAfterQt), std::runtime_error);
    EXPECT_THAT(ran, IsEmpty());
    EXPECT_THAT(runStage(KivInit::StageAfterQt), ElementsAre(1, 2));
    KivInit::instance()->registerRunOnce(
        [this]() { add(3, KivInit::StageAfterQt, -9); }, KivInit::StageAfterQt, 0);
    EXPECT_THAT(runStage(KivInit::StageAfterQt), IsEmpty());
    EXPECT_THAT(runStage(KivInit::StageAfterQt), ElementsAre(3));
}

} // namespace
} // namespace KivSystem
