// The base of the formats, the failures, and the format "KIV System Manager (txt)".

#include "Support.h"

#include "ManagerTextProcessor.h"

#include <QFileDevice>
#include <QSettings>

namespace KivSystem {
namespace {

class PlainProcessor : public Processor
{
public:
    QWidget *optionsPanel() override { return nullptr; }
    bool buildDocument(const DocumentMak &, QIODevice *) override { return false; }
    using Processor::indexTiss;
};

std::unique_ptr<DocumentMak> threeFabrics()
{
    MarkerBuilder builder;
    builder.layer("L1").layer("L2").fabric("Placed").fabric("Parked").fabric("Closed");
    builder.style("S", {"S"});
    for (const short fabric : {short(1), short(2), short(3)}) {
        builder.piece(fabric, 1, "Back");
        builder.place(fabric, 2, 1, 1, 0, 0, fabric == 2 ? PlacedInStandBy : PlacedOnMarker);
    }
    builder.fabricAt(3).fabricStatus = 2;
    return builder.take();
}

TEST(Processor, PreparesOnlyAnOpenFabricWithSomethingOnTheMarker)
{
    const auto document = threeFabrics();
    PlainProcessor processor;
    EXPECT_EQ(processor.indexTiss, -1);
    const struct
    {
        short fabric;
        bool expected;
    } rows[] = {{1, true}, {2, false}, {3, false}, {0, true}, {-5, true}};
    for (const auto &row : rows) {
        EXPECT_EQ(processor.prepare(*document, row.fabric), row.expected) << row.fabric;
        EXPECT_EQ(processor.indexTiss, row.fabric);
    }
    EXPECT_TRUE(processor.prepare(DocumentMak(nullptr), 0));
    EXPECT_THROW(processor.prepare(DocumentMak(nullptr), 1), AssertionError);

    processor.setIndexTiss(7);
    EXPECT_EQ(processor.indexTiss, 7);
    EXPECT_EQ(processor.generateFileName(*document, 2), "Parked");
    EXPECT_TRUE(processor.initProcessing(nullptr, ""));
    EXPECT_FALSE(processor.checkPolygonOptimization());
    EXPECT_FALSE(processor.isNeedSelectFabirc());
    EXPECT_FALSE(processor.exportMoreFiles());
}

TEST(ProcessorDeathTest, FabricPastTheEndEndsTheProgram)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto document = threeFabrics();
    EXPECT_DEATH(PlainProcessor().prepare(*document, 4),
        "I_Fabric <= Liste_De_Fabrics.size\\(\\).*Source/KivPlotOut/Processor.cpp");
}

TEST(Failure, SpeaksUtf8AndHasNoThrowSiteBeforeItIsThrown)
{
    const AssertionError error(QString::fromUtf8("Größe"));
    EXPECT_STREQ(error.what(), "Größe");
    EXPECT_EQ(boost::get_error_info<boost::throw_line>(error), nullptr);
    for (const int code : {int(QFileDevice::WriteError), int(QFileDevice::OpenError), 13}) {
        EXPECT_EQ(IOError(code).what(), qt_error_string(code).toStdString());
    }
    try {
        KIV_THROW_INVALID_OPERATION();
    } catch (const std::logic_error &thrown) {
        EXPECT_STREQ(thrown.what(), "Invalid Operation");
        EXPECT_NE(dynamic_cast<const NonFatalError *>(&thrown), nullptr);
        EXPECT_NE(dynamic_cast<const boost::exception *>(&thrown), nullptr);
    }
}

TEST(ManagerTextProcessor, WritesAllFieldsWhateverIsStored)
{
    TextProcessorOptions stored;
    stored.setFiledSeperator(";");
    stored.setOneLine(true);
    stored.save("");
    TextIndexList({3}).saveAsPreferences();
    const auto document = threeFabrics();
    NC::ManagerTextProcessor processor;
    EXPECT_EQ(processor.optionsPanel(), nullptr);
    EXPECT_TRUE(processor.prepare(*document, 99));
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    EXPECT_TRUE(processor.buildDocument(*document, &device));
    QSettings().clear();

    EXPECT_EQ(device.data().toStdString(), exportedText(*document, TextIndexList::loadDefault()));
    EXPECT_EQ(device.data().count('\n'), 3 * 2);
    EXPECT_EQ(device.data().count('\t'), 3 * 2 * 21);
    EXPECT_TRUE(device.isTextModeEnabled());
}

} // namespace
} // namespace KivSystem
