#include "KivCore/Log.h"

#include <QString>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace KivSystem {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordingLogger final : public TextLineComposer<char>
{
public:
    std::vector<std::string> lines;

protected:
    void writeLine(const std::string &line) override { lines.push_back(line); }
};

TEST(TextLineComposer, AStatementIsALineOfWordsWithSingleBlanks)
{
    RecordingLogger logger;
    logger << QStringLiteral("cannot read:") << QString::fromUtf8("Nähte.tbl");
    logger << "one" << 2 << 'c' << std::string("four") << 0.5;
    logger << "";
    EXPECT_THAT(logger.lines, ElementsAre("cannot read: N\xc3\xa4hte.tbl", "one 2 c four 0.5", ""));
}

TEST(TextLineComposer, ANullTextFailsItsOwnLineOnly)
{
    RecordingLogger logger;
    const char *const null = nullptr;
    logger.add("before");
    logger.add(null);
    EXPECT_TRUE(logger.fail());
    logger.add("lost");
    logger.flush();
    EXPECT_FALSE(logger.fail());
    logger << "next"
           << "line";
    EXPECT_THAT(logger.lines, ElementsAre("before ", "next line"));
}

TEST(TextLineComposer, TakesNothingWhileItIsNotEnabled)
{
    RecordingLogger logger;
    logger.setEnabled(false);
    logger << "unheard" << static_cast<const char *>(nullptr);
    EXPECT_THAT(logger.lines, IsEmpty());
    logger.setEnabled(true);
    logger << "heard";
    EXPECT_THAT(logger.lines, ElementsAre("heard"));
}

TEST(PrintQString, AQuotedTextStaysOneLine)
{
    std::ostringstream stream;
    Private::printQString(stream, "a \"b\" \\ é\n\t\x1b", true);
    EXPECT_EQ(stream.str(), "\"a \\\"b\\\" \\\\ é\\n\\t\\x1b\"");
}

TEST(DefaultLogger, IsTheHostsOfItsLevelOrNull)
{
    EXPECT_EQ(DefaultLogger(LogWarning), nullptr);
    auto recording = std::make_unique<RecordingLogger>();
    RecordingLogger *const recorder = recording.get();
    EXPECT_EQ(setDefaultLogger(LogWarning, std::move(recording)), nullptr);
    EXPECT_EQ(DefaultLogger(LogError), nullptr);
    EXPECT_EQ(DefaultLogger(static_cast<LogLevel>(7)), nullptr);
    *DefaultLogger(static_cast<LogLevel>(2)) << "broken";
    EXPECT_THAT(recorder->lines, ElementsAre("broken"));
    EXPECT_EQ(setDefaultLogger(LogWarning, nullptr).get(), recorder);

    logToStandardError(LogWarning);
    testing::internal::CaptureStderr();
    *DefaultLogger(LogWarning) << "font:"
                               << "missing";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "warning: font: missing\n");
    EXPECT_NE(DefaultLogger(LogFatal), nullptr);
    EXPECT_EQ(DefaultLogger(LogInfo), nullptr);
    for (int level = LogFatal; level <= LogDebug; ++level) {
        setDefaultLogger(static_cast<LogLevel>(level), nullptr);
    }
}

} // namespace
} // namespace KivSystem
