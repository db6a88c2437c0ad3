// What is kept in the settings: numbered options, separators, the list of fields.

#include "TextIndexList.h"
#include "TextProcessorOptions.h"

#include "KivCore/Init.h"

#include <QDataStream>
#include <QScopeGuard>
#include <QSettings>

#include <gtest/gtest.h>

namespace KivSystem {
namespace {

class SettingsTest : public testing::Test
{
protected:
    void SetUp() override { QSettings().clear(); }
    void TearDown() override { QSettings().clear(); }
};

class KivOptionsTest : public SettingsTest
{};
class TextIndexListTest : public SettingsTest
{};

template <class T>
QByteArray streamedOut(const T &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

template <class T>
void streamIn(const QByteArray &bytes, T &value)
{
    QDataStream stream(bytes);
    stream >> value;
}

// Options whose numbers are not consecutive from 0.
class GappedOptions final : public KivOptions
{
public:
    GappedOptions() { m_options[2] = 7; }
    QString sectionName() const override { return QStringLiteral("gapped"); }
};

TEST_F(KivOptionsTest, NothingStoredLeavesTheDefaults)
{
    TextProcessorOptions options;
    options.restore("");
    EXPECT_EQ(options.filedSeperator(), QByteArray("\t"));
    EXPECT_EQ(options.repeatSeperator(), QByteArray("\x1D"));
    EXPECT_FALSE(options.oneLine());
    EXPECT_TRUE(QSettings().allKeys().isEmpty());
}

TEST_F(KivOptionsTest, SavedOptionsComeBackUnderTheirPrefix)
{
    const QByteArray bytes("\xFF\0;", 3);
    TextProcessorOptions saved;
    saved.setFiledSeperator("::");
    saved.setrepeatSeperator(bytes);
    saved.setOneLine(true);
    saved.save("");
    TextProcessorOptions other;
    other.setFiledSeperator(",");
    other.save("mine/");

    QStringList keys;
    for (const char *prefix : {"mine/", ""}) {
        for (const char *key : {"_0", "_1", "_2"}) {
            keys << prefix + QStringLiteral("text_export/option/") + key;
        }
    }
    EXPECT_EQ(QSettings().allKeys(), keys);

    TextProcessorOptions restored;
    restored.restore("");
    EXPECT_EQ(restored.filedSeperator(), QByteArray("::"));
    EXPECT_EQ(restored.repeatSeperator(), bytes);
    EXPECT_TRUE(restored.oneLine());
    restored.restore("mine/");
    EXPECT_EQ(restored.filedSeperator(), QByteArray(","));
}

TEST_F(KivOptionsTest, MissingKeyKeepsItsValue)
{
    QSettings().setValue("text_export/option/_2", true);
    TextProcessorOptions options;
    options.setFiledSeperator("#");
    options.restore("");
    EXPECT_EQ(options.filedSeperator(), QByteArray("#"));
    EXPECT_TRUE(options.oneLine());
}

TEST_F(KivOptionsTest, OptionsGoByPositionAndAGapIsNotFilled)
{
    GappedOptions().save("");
    const QSettings settings;
    EXPECT_TRUE(settings.contains("gapped/option/_0"));
    EXPECT_FALSE(settings.value("gapped/option/_0").isValid());
}

TEST_F(TextIndexListTest, DefaultIsAllFieldsInOrder)
{
    const TextIndexList list = TextIndexList::loadDefault();
    ASSERT_EQ(list.size(), 22);
    for (int position = 0; position < list.size(); ++position) {
        EXPECT_EQ(list[position], position);
    }
}

TEST_F(TextIndexListTest, IsStoredAsStringsAndReadWithoutJudgement)
{
    EXPECT_TRUE(TextIndexList::loadFromPreferences().isEmpty());

    const TextIndexList list{21, 3, 3, -4, 100000};
    list.saveAsPreferences();
    EXPECT_EQ(QSettings().value("marker_export_list").toStringList(),
        QStringList({"21", "3", "3", "-4", "100000"}));
    EXPECT_EQ(TextIndexList::loadFromPreferences(), list);

    QSettings().setValue("marker_export_list", QStringList({"3", "x", "7"}));
    EXPECT_EQ(TextIndexList::loadFromPreferences(), TextIndexList({3, 0, 7}));

    TextIndexList().saveAsPreferences();
    EXPECT_TRUE(QSettings().contains("marker_export_list"));
    EXPECT_TRUE(TextIndexList::loadFromPreferences().isEmpty());
}

TEST_F(TextIndexListTest, StreamsACountAndItsNumbersAndAppendsWhenRead)
{
    const TextIndexList list{1, -2, 300};
    const QByteArray bytes = streamedOut(list);
    EXPECT_EQ(bytes.toHex(), QByteArray("0000000300000001fffffffe0000012c"));

    TextIndexList read{9};
    streamIn(bytes, read);
    EXPECT_EQ(read, TextIndexList({9, 1, -2, 300}));
    streamIn(QByteArray::fromHex("fffffffe00000001"), read); // a count below zero
    EXPECT_EQ(read.size(), 4);
    streamIn(QByteArray::fromHex("7fffffff00000005"), read); // cut short
    EXPECT_EQ(read, TextIndexList({9, 1, -2, 300, 5}));
}

TEST_F(TextIndexListTest, TravelsInAVariantOnceTheHostHasStarted)
{
    KivInit::instance()->run(KivInit::StageAfterQt);
    EXPECT_EQ(QMetaType::type("KivSystem::TextIndexList"), qMetaTypeId<TextIndexList>());

    const TextIndexList list{4, 2};
    QVariant read;
    streamIn(streamedOut(QVariant::fromValue(list)), read);
    EXPECT_EQ(read.value<TextIndexList>(), list);
}

} // namespace
} // namespace KivSystem
