// Whole Illustrator files of small markers, and the processor. Drawings are in hundredths of a
// centimetre, the places of texts in points.

#include "Dialogs/IllustratorExportOptionsWidget.h"
#include "Failures.h"
#include "IllustratorMarker.h"
#include "IllustratorProcessor.h"
#include "IllustratorSupport.h"
#include "MarkerBuilder.h"

#include "KivMarker/Group.h"
#include "KivMarker/Text.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QFont>
#include <QLineEdit>
#include <QTemporaryDir>

namespace KivSystem {
namespace KivIllustrator {
namespace {

class IllustratorMarker : public Illustrator
{
protected:
    IllustratorMarker()
    {
        QApplication::setFont(QFont("Sans Serif"));
        plot.pieceTrait = plot.pieceName = plot.styleName = plot.ballot = plot.taille = false;
    }

    /// One fabric with a layer for each width, a style of one size and its piece, 10 by 2 cm, at
    /// the origin of each layer.
    void build(const std::vector<double> &widths)
    {
        for (std::size_t layer = 0; layer < widths.size(); ++layer) {
            builder.layer("Layer");
        }
        builder.fabric("Denim", widths).style("Shirt", {"S"}).piece(1, 1, "Back", 10, 2);
        for (std::size_t layer = 1; layer <= widths.size(); ++layer) {
            builder.place(1, static_cast<short>(layer), 1, 1, 0, 0);
        }
    }
    CDbFabricObject &fabric() { return builder.fabricAt(1); }
    FabricLayer &layer(short number) { return *fabric().findLayer(number); }

    std::string drawing()
    {
        CDbMarkerOptions::mDefaultOptions.setValues(plot);
        return drawingOf([&](QTextStream &out) {
            Export_Illustrator_Mk(out, "a.ai", &builder.drawing(), &fabric());
        });
    }
    /// What stands between the frame and the groups.
    std::string lines()
    {
        const QString all = QString::fromStdString(drawing());
        const int frameEnd = all.indexOf(" s U ") + 5;
        return all.mid(frameEnd, all.indexOf(" u 0 0 0 10 k") - frameEnd).toStdString();
    }
    /// The groups.
    QString groups()
    {
        const QString all = QString::fromStdString(drawing());
        const int begin = all.indexOf(" u 0 0 0 10 k");
        return begin < 0 ? QString() : all.mid(begin + 1, all.indexOf(" %%Trailer") - begin - 1);
    }

    static std::unique_ptr<CDbTextObject> text(const QString &line, double x, double y)
    {
        auto object = std::make_unique<CDbTextObject>();
        object->setLines({line});
        object->textPosition = CDbMarkerPointObject(x, y);
        return object;
    }

    MarkerPlotOptions plot;
    MarkerBuilder builder;
};

TEST_F(IllustratorMarker, AFileGoesFromTheHeadOverTheFrameToTheGroups)
{
    build({5});
    PieceShape triangle;
    triangle.contour = {{1, 1}, {4, 1}, {1, 3}};
    fabric().layerFirstGrPolys(1)->firstPolygon->setOwnShape(triangle, Placement());
    const QStringList lines = linesOf([&](QTextStream &out) {
        CDbMarkerOptions::mDefaultOptions.setValues(plot);
        Export_Illustrator_Mk(out, "a.ai", &builder.drawing(), &fabric());
    });
    ASSERT_GT(lines.size(), 19);
    EXPECT_EQ(lines[2], "%%Title: (a.ai)");
    EXPECT_EQ(lines[6], "%%BoundingBox: 0 0 113 141");
    const QStringList expected{"0 0 0 10 k", "0 0 0 10 K",                            // head
        "u", "0 0 m", "0 141.75 L", "113.4 141.75 L", "113.4 0 L", "0 0 L", "s", "U", // frame
        "u", "U",                                                                     // guides
        "u", "U",                                                                     // separation
        "u", "0 0 0 10 k", "0 0 0 10 K",                                              // group
        "28.35 28.35 m", "113.4 28.35 L", "28.35 85.05 L", "s", "u", "U",             // contour
        "u", "0 0 0 10 k", "0 0 0 10 K",                                              // polygon
        "u", "/_Sans_Serif 2 2 0 1 z", "[1 0 0 1 56.7 47.25]e", "0 ()t", "T", "U",    // info
        "0 0 0 10 k", "0 0 0 10 K",                                                   // links
        "0 0 0 10 k", "0 0 0 10 K", "u", "U",                                         // texts
        "U", "u", "U", "U", "%%Trailer", "%%EOF"};
    EXPECT_EQ(lines.mid(19).join('\n').toStdString(), expected.join('\n').toStdString());
}

TEST_F(IllustratorMarker, AnEmptyFabricHasAHeadAndATail)
{
    builder.layer("Layer").fabric("Denim", {5});
    EXPECT_EQ(
        QString::fromStdString(drawing()).section(" ", -4).toStdString(), "10 K %%Trailer %%EOF");
    for (const bool noDrawing : {true, false}) {
        QString text;
        QTextStream out(&text);
        EXPECT_THROW(Export_Illustrator_Mk(out, "", noDrawing ? nullptr : &builder.drawing(),
                         noDrawing ? &fabric() : nullptr),
            AssertionError);
        EXPECT_EQ(text, "");
    }
}

TEST_F(IllustratorMarker, GuideLinesHaveFlagsWhereTheyMeetTheirLayer)
{
    build({5});
    for (const double p : {0.0, 2.0, 5.0, 5.1}) {
        layer(1).horizontalLines.addLine(p);
    }
    for (const double p : {0.0, 3.0, 10.0, 10.1}) {
        layer(1).verticalLines.addLine(p, p == 3 ? "abc" : "");
    }
    const std::string horizontal = "u 0,200m -150,100L -150,300L 0,200L s "
                                   "1000,200m 1150,100L 1150,300L 1000,200L s "
                                   "0,500m -150,400L -150,600L 0,500L s "
                                   "1000,500m 1150,400L 1150,600L 1000,500L s ";
    const std::string under3 = "300,0m 200,-150L 400,-150L 300,0L s ";
    const std::string over3 = "300,500m 200,650L 400,650L 300,500L s ";
    const std::string under10 = "1000,0m 900,-150L 1100,-150L 1000,0L s ";
    const std::string over10 = "1000,500m 900,650L 1100,650L 1000,500L s ";
    EXPECT_EQ(lines(), horizontal + under3 + over3 +
                           "/_Sans_Serif 2 2 0 1 z [1 0 0 1 113.4 155.925]e 3 (abc)t T " + under10 +
                           over10 + "U u U");

    plot.textInBottom = true;
    EXPECT_EQ(lines(), horizontal + over3 + under3 +
                           "/_Sans_Serif 2 2 0 1 z [1 0 0 1 113.4 -42.525]e 3 (abc)t T " + over10 +
                           under10 + "U u U");
}

// Letters of size 18 are 1.296 cm wide, of size 10 0.72 cm.
TEST_F(IllustratorMarker, ALabelHasTheRoomUpToTheNextLineOrToTheEndOfAllLayers)
{
    struct Case
    {
        const char *text;
        double next; // 0 for none
        const char *size;
    };
    const Case cases[] = {
        {"abcd", 9.3, "2 2"},    // 9 - 1 - 2 = 6, the fraction of the next position is not seen
        {"abcde", 9.3, "1 1"},   // 6.48
        {"abcde", 10.9, "2 2"},  // 10 is still within: 7
        {"abcdef", 10.9, "1 1"}, // 7.776
        {"abcdef", 11, "2 2"},   // past the end: 10 - 1 - 1 = 8
        {"abcdef", 0, "2 2"}, {"abcdefg", 0, "1 1"}, // 9.072
    };
    for (const Case &each : cases) {
        builder = MarkerBuilder();
        build({5});
        layer(1).verticalLines.addLine(1, each.text);
        if (each.next > 0) {
            layer(1).verticalLines.addLine(each.next);
        }
        const std::string fontLine = std::string("/_Sans_Serif ") + each.size + " 0 1 z [";
        EXPECT_NE(lines().find(fontLine), std::string::npos) << each.text << ' ' << each.next;
    }
}

TEST_F(IllustratorMarker, LayersStandSideBySideWithTheSpaceBetweenThem)
{
    build({5, 4});
    plot.spaceLayers = 2;
    layer(2).horizontalLines.addLine(1);
    layer(2).verticalLines.addLine(3, "abc");
    const std::string guides = "u 1200,100m 1050,0L 1050,200L 1200,100L s "
                               "2200,100m 2350,0L 2350,200L 2200,100L s "
                               "1500,0m 1400,-150L 1600,-150L 1500,0L s "
                               "1500,400m 1400,550L 1600,550L 1500,400L s "
                               // 3 + 2 * 12 + 1: a label counts its layer's place twice
                               "/_Sans_Serif 2 2 0 1 z [1 0 0 1 793.8 127.575]e 3 (abc)t T U ";
    EXPECT_EQ(lines(), guides + "u 1200,500m 1200,0L S 1000,500m 1000,0L S U");
    EXPECT_TRUE(groups().contains("1200,0m 2200,0L 2200,200L 1200,200L s"));
    EXPECT_NE(drawing().find(" 0,0m 0,500L 2200,500L 2200,0L 0,0L s "), std::string::npos);

    plot.spaceLayers = 0;
    EXPECT_NE(lines().find("U u 1000,500m 1000,0L S U"), std::string::npos);
}

TEST_F(IllustratorMarker, AnEmptyLayerTakesNoRoom)
{
    builder.layer("Empty");
    build({5, 5});
    plot.spaceLayers = 2;
    EXPECT_TRUE(groups().contains("u 0 0 0 10 k 0 0 0 10 K 0,0m 1000,0L"));
    // The first two layers are used, the last is not: only the line behind the space is drawn.
    EXPECT_EQ(lines(), "u U u 1200,500m 1200,0L S 2400,500m 2400,0L S U");
}

TEST_F(IllustratorMarker, SamplesOfStripesStandBesideTheirLayer)
{
    build({5, 5});
    plot.spaceLayers = 2;
    CDbPlaidAndStripesInfo &plaid = fabric().plaidInfo;
    plaid.plaidActive = true;
    plaid.yRepetition = 2;
    plaid.yRepOffset = 0.5;
    plaid.sampleHorLines.addLine(0.5);
    const std::string first = "u -150,100m 0,100L S -150,300m 0,300L S -150,500m 0,500L S ";
    // No vertical lines, and so no period.
    const std::string second =
        "u 1050,100m 1200,100L S 1050,300m 1200,300L S 1050,500m 1200,500L S ";
    const std::string rest = "u U u 1200,500m 1200,0L S 1000,500m 1000,0L S U";
    EXPECT_EQ(lines(), first + "U " + second + "U " + rest);

    plaid.sampleHorLines = CDbLineObjectList();
    plaid.sampleVerLines.addLine(1);
    plaid.xRepetition = 4;
    const std::string ofSecond =
        "1300,-150m 1300,0L S 1700,-150m 1700,0L S 2100,-150m 2100,0L S U ";
    EXPECT_EQ(lines(),
        "u 100,-150m 100,0L S 500,-150m 500,0L S 900,-150m 900,0L S U u " + ofSecond + rest);
    builder.drawing().setSingleLayer(2);
    plaid.xRepOffset = -1;
    EXPECT_EQ(lines(), "u 0,-150m 0,0L S 400,-150m 400,0L S 800,-150m 800,0L S U " + rest);
    plaid.plaidActive = false;
    EXPECT_EQ(lines(), rest);
}

TEST_F(IllustratorMarker, FreeTextsOfTheWorkAreaMoveWithTheirLayer)
{
    build({5, 5});
    plot.spaceLayers = 2;
    layer(2).texts.push_back(text("here", 1, 3));
    layer(2).texts.push_back(text("header", 1, 3));
    layer(2).texts.back()->textWorkSection = HeaderSection;
    const std::string before = "u U u 1200,500m 1200,0L S 1000,500m 1000,0L S U ";
    EXPECT_EQ(
        lines(), before + "u u /_Sans_Serif 2 2 0 1 z [1 0 0 1 368.55 85.05]e 4 (here)t T U U");
    layer(2).texts.back()->textWorkSection = 7;
    EXPECT_THROW(drawing(), AssertionError);
}

TEST_F(IllustratorMarker, AGroupIsDrawnWithItsBlockItsPartnersAndItsTexts)
{
    build({5});
    builder.place(1, 1, 1, 1, 20, 0, PlacedInStandBy);
    CDbGrPolysObject &group = *fabric().layerFirstGrPolys(1);
    auto partner = std::make_unique<CDbPolygon>(1, 1, true);
    PieceShape shape;
    shape.contour = {{0, 3}, {1, 3}, {1, 4}};
    partner->setOwnShape(shape, Placement());
    group.firstPolygon->setCutDownPolygon(std::move(partner));
    group.texts.push_back(text("of the group", 1, 3));
    const QString drawn = groups();
    EXPECT_FALSE(drawn.contains("s u U 0 0 0 10 k")); // no contour before the colour of a polygon
    EXPECT_EQ(drawn.count("0,0m 1000,0L 1000,200L 0,200L s"), 1);
    EXPECT_LT(drawn.indexOf("0,0m 1000,0L"), drawn.indexOf("0,300m 100,300L 100,400L s"));
    EXPECT_TRUE(drawn.endsWith("U u u /_Sans_Serif 2 2 0 1 z [1 0 0 1 28.35 85.05]e "
                               "12 (of the group)t T U U U"));
    EXPECT_FALSE(drawn.contains("2000,0m"));

    short error = -1;
    group.fusion(false, 0, true, 0.0001, 0, 0, 0, &error);
    ASSERT_EQ(error, 0);
    ASSERT_NE(group.blockingFusion, nullptr);
    EXPECT_EQ(QString::fromStdString(drawing()).count("s u U 0 0 0 10 k"), 1);
}

class IllustratorFile : public IllustratorMarker
{
protected:
    void SetUp() override
    {
        builder.layer("Layer").fabric("Denim", {5}).fabric("Lining", {5}).fabric("Closed", {5});
        builder.style("Shirt", {"S"}).piece(1, 1, "Back", 10, 2).place(1, 1, 1, 1, 0, 0);
        builder.piece(3, 1, "Back").place(3, 1, 1, 1, 0, 0);
        builder.fabricAt(3).fabricStatus = 2;
        document = builder.take();
    }

    IllustratorProcessor processor;
    std::unique_ptr<DocumentMak> document;
};

TEST_F(IllustratorFile, IsWrittenForAFabricWithStatusOneOnWhichSomethingLies)
{
    const std::pair<short, bool> cases[] = {
        {0, false}, {-1, false}, {1, true}, {2, false}, {3, false}};
    for (const auto &[number, accepted] : cases) {
        EXPECT_EQ(processor.prepare(*document, number), accepted) << number;
    }
    EXPECT_THROW(processor.prepare(*document, 4), AssertionError);
    EXPECT_TRUE(processor.isNeedSelectFabirc());
    EXPECT_FALSE(processor.exportMoreFiles());
    EXPECT_EQ(processor.generateFileName(*document, 1), "Denim");
    EXPECT_TRUE(processor.canExport(*document) && processor.prompt());
}

TEST_F(IllustratorFile, HasTheNameOfItsFileAndTheScaleOfThePanelAsItIsWritten)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_FALSE(processor.buildDocument(*document, &buffer));
    ASSERT_TRUE(processor.prepare(*document, 1));
    processor.optionsPanel()->findChild<QLineEdit *>("lineEditFactor")->setText("50%");
    EXPECT_TRUE(processor.buildDocument(*document, &buffer));
    const QByteArray half = buffer.data();
    EXPECT_TRUE(half.contains("\n%%Title: ()\n"));
    EXPECT_TRUE(half.contains("\n%%BoundingBox: 0 0 141 70\n"));
    EXPECT_TRUE(half.contains("\n141.75 28.35 L\n"));
    EXPECT_TRUE(half.contains("\n1 w\n") && half.contains(" 2 2 0 1 z\n"));
    EXPECT_TRUE(buffer.isTextModeEnabled());

    const QTemporaryDir folder;
    QFile file(folder.filePath("my (1).ai"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    processor.optionsPanel()->findChild<QLineEdit *>("lineEditFactor")->setText("100");
    EXPECT_TRUE(processor.buildDocument(*document, &file));
    file.seek(0);
    const QByteArray full = file.readAll();
    EXPECT_TRUE(full.contains("\n%%Title: (my (1).ai)\n%%Creation Date: ("));
    EXPECT_TRUE(full.contains("\n283.5 56.7 L\n") && full.endsWith("\n%%Trailer\n%%EOF\n"));
}

} // namespace
} // namespace KivIllustrator
} // namespace KivSystem
