// The factory's formats, and the library as the host sees it.

#include "Support.h"

#include "MarkerExporter.h"
#include "MarkerExporterFactory.h"
#include "ScriptedUserInterface.h"

#include "KivCore/Application.h"

#include <QDir>
#include <QLibrary>
#include <QProcess>

#include <boost/pointer_cast.hpp>

namespace KivSystem {
namespace {

const char kTextAndCut[] = "Text File (*.txt)\tCut File (*.cut)";

const struct
{
    const char *key;
    int id;
    const char *tag;
    const char *filter;
} kFormats[] = {
    {"KIV System Manager (txt)", 1, "kiv_txt", kTextAndCut},
    {"Text File", 2, "txt", kTextAndCut},
    {"Cut File ANSI", 50, "cut_ansi", kTextAndCut},
    {"Cut File Eastman", 51, "cut_eastman", kTextAndCut},
    {"Cut Labels", 53, "cut_labels", kTextAndCut},
    {"DXF-NESTER", 54, "dxf_nester", "DXF File (*.dxf)"},
    {"Illustrator(TM)", 56, "ill_tm", kTextAndCut},
};

TEST(MarkerExporterFactory, DescribesTheSevenFormatsInTheirOrder)
{
    // Panels belong to the host's window.
    const KivApplication application(std::make_unique<ScriptedUserInterface>(), QDir());
    MarkerExporterFactory *factory = MarkerExporterFactory::instance();
    const std::vector<QString> keys = factory->supportedFormats();
    ASSERT_EQ(keys.size(), std::size(kFormats));
    std::size_t position = 0;
    for (const auto &row : kFormats) {
        EXPECT_EQ(keys[position++], row.key);
        FileFormat format;
        EXPECT_TRUE(factory->describeFormat(row.key, format));
        EXPECT_EQ(format.name, row.key);
        EXPECT_EQ(format.id, row.id);
        EXPECT_EQ(format.tag, row.tag);
        EXPECT_EQ(format.filter, row.filter);
        EXPECT_NE(factory->createExporter(row.key), nullptr) << row.key;
    }
    EXPECT_STREQ(factory->metaObject()->className(), "KivSystem::MarkerExporterFactory");
}

TEST(MarkerExporterFactory, UnknownKeySetsTheNameAlone)
{
    MarkerExporterFactory *factory = MarkerExporterFactory::instance();
    for (const char *key : {"Cut File", "text file", "", "Text File "}) {
        FileFormat format{"before", "filter", "tag", 4711};
        EXPECT_FALSE(factory->describeFormat(key, format)) << key;
        EXPECT_EQ(format.name, key);
        EXPECT_EQ(format.filter, "filter");
        EXPECT_EQ(format.tag, "tag");
        EXPECT_EQ(format.id, 4711);
        EXPECT_EQ(factory->createExporter(key), nullptr);
    }
}

TEST(MarkerExporterFactory, GivesANewJobForEachCall)
{
    MarkerExporterFactory *factory = MarkerExporterFactory::instance();
    auto first = factory->createExporter("KIV System Manager (txt)");
    const auto second = factory->createExporter("KIV System Manager (txt)");
    EXPECT_NE(first, second);
    const auto job = boost::reinterpret_pointer_cast<Exporter<DocumentMak>>(first);
    EXPECT_NE(boost::dynamic_pointer_cast<MarkerExporter>(job), nullptr);
    first.reset();
    EXPECT_TRUE(job->canExport(DocumentMak(nullptr)));
    EXPECT_EQ(job->optionsPanel(), nullptr);
    EXPECT_FALSE(job->prompt());
}

TEST(Plugin, ShowsNothingButItsEntry)
{
    QProcess nm;
    nm.start(KIV_NM, {"-D", "--defined-only", "--format=posix", KIV_PLUGIN_FILE});
    ASSERT_TRUE(nm.waitForFinished());
    const QByteArray symbols = nm.readAllStandardOutput().trimmed();
    EXPECT_TRUE(symbols.startsWith("markerplugin T ") && !symbols.contains('\n'))
        << symbols.toStdString();
}

// A host that links nothing of the plug-in gets along with its exporters and its exceptions.
TEST(Plugin, ExportsAndFailsAcrossTheBorderOfTheLibrary)
{
    QLibrary library(KIV_PLUGIN_FILE);
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    const auto entry = reinterpret_cast<ExporterFactory *(*)()>(library.resolve("markerplugin"));
    ASSERT_NE(entry, nullptr);
    ASSERT_NE(entry(), MarkerExporterFactory::instance()) << "the test has to see the library's";
    EXPECT_EQ(entry(), entry());
    const auto job = boost::reinterpret_pointer_cast<Exporter<DocumentMak>>(
        entry()->createExporter("KIV System Manager (txt)"));

    const auto document =
        MarkerBuilder().layer("L").fabric("F").style("S", {"S"}).piece(1, 1, "Back").take();
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    job->exportDocument(*document, &device, "");
    EXPECT_EQ(device.data().toStdString(), exportedText(*document, TextIndexList::loadDefault()));

    try {
        job->exportDocument(DocumentMak(nullptr), &device, "");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const boost::exception &error) {
        expectThrowSite(error, "TextProcessor.cpp");
        EXPECT_NE(dynamic_cast<const std::logic_error *>(&error), nullptr);
    }
}

} // namespace
} // namespace KivSystem
