// Pictures of markers and of exported files, written without a display.

#include "HostTestSupport.h"
#include "Verbs.h"

#include <QImage>
#include <QXmlStreamReader>

namespace KivSystem {

namespace {

const QString tree = QStringLiteral(KIV_SOURCE_DIR);

} // namespace

TEST(RenderVerb, WritesTheSamePictureOfTheSizeAskedForEachTime)
{
    const Folder folder;
    KeptConsole kept;
    for (const QString &file : {tree + "/Samples/tshirt.mar", tree + "/Samples/trousers.mar",
             tree + "/Tests/Golden/cut_ansi/tshirt/ZentRib 1x1.cut",
             tree + "/Tests/Golden/dxf_nester/plaid/plaid.dxf",
             tree + "/Tests/Golden/txt/tshirt/tshirt.txt"}) {
        RenderOptions options;
        options.file = file;
        options.size = "640x360";
        for (const char *name : {"a.png", "b.png", "a.svg", "b.svg"}) {
            options.output = folder.path(name);
            EXPECT_EQ(renderPicture(options, kept.console), ExitDone) << file;
        }
        EXPECT_EQ(folder.read("a.png"), folder.read("b.png")) << file;
        EXPECT_EQ(folder.read("a.svg"), folder.read("b.svg")) << file;
        const QImage image(folder.path("a.png"));
        EXPECT_EQ(image.size(), QSize(640, 360));
        int drawn = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                drawn += qGray(image.pixel(x, y)) < 200;
            }
        }
        EXPECT_GT(drawn, 500) << file;
        QXmlStreamReader svg(folder.read("a.svg"));
        int paths = 0;
        while (!svg.atEnd()) {
            paths += svg.readNext() == QXmlStreamReader::StartElement && svg.name() == "path";
        }
        EXPECT_FALSE(svg.hasError()) << file << svg.errorString();
        EXPECT_GT(paths, 2) << file;
        EXPECT_TRUE(folder.read("a.svg").contains("width=\"640\" height=\"360\"")) << file;
        EXPECT_FALSE(folder.read("a.svg").contains("non-scaling")); // few readers know that
    }
}

TEST(RenderVerb, RefusesWhatItCannotDrawAndLeavesNoFile)
{
    const Folder folder;
    KeptConsole kept;
    const QString sample = tree + "/Samples/tshirt.mar";
    const struct
    {
        const char *file;
        const char *output;
        const char *size;
        int fabric;
        const char *fault;
    } cases[] = {
        {nullptr, "a.jpg", "", 0, ".png or .svg"},
        {nullptr, "a.png", "0x10", 0, "--size"},
        {nullptr, "a.png", "30000x10", 0, "--size"},
        {nullptr, "a.png", "10", 0, "--size"},
        {nullptr, "a.png", "", 3, "there is no fabric 3; the marker has 2"},
        {nullptr, "none/a.png", "", 0, "cannot be written"},
        {"missing.cut", "a.png", "", 0, "no such file"},
        {"missing.cut", "a.png", "", 1, "is no marker"},
    };
    for (const auto &bad : cases) {
        RenderOptions options;
        options.file = bad.file == nullptr ? sample : folder.path(bad.file);
        options.output = folder.path(bad.output);
        options.size = bad.size;
        options.fabric = bad.fabric;
        const QString fault = faultOf([&] { renderPicture(options, kept.console); });
        EXPECT_TRUE(fault.contains(bad.fault)) << fault;
        EXPECT_EQ(folder.contents(), QStringList());
    }
}

} // namespace KivSystem
