// The format DXF-NESTER: what a block tells of its piece or group, and what the file tells of the
// fabric. Whole files are compared in the golden tests.

#include "Support.h"

#include "DXFNESTERProcessor.h"
#include "DxfGenerator.h"
#include "DxfGroups.h"
#include "Failures.h"
#include "MarkerBuilder.h"
#include "ScriptedUserInterface.h"

#include "KivCore/Application.h"
#include "KivMarker/AutoMarkerOptions.h"
#include "KivMarker/Bundle.h"

#include <QBuffer>
#include <QLocale>
#include <QRegularExpression>
#include <QTextStream>

#include <cmath>
#include <random>

namespace KivSystem {
namespace DxfNester {
namespace {

using Nester = t_Generateur_Fichier_DXF_Nester;

// The strings of a file's keywords and comments, a block's after BLOCK name, the fabric's after
// ENTITIES, and INSERT name for each insertion.
QStringList outline(const QByteArray &file)
{
    QStringList lines = QString::fromUtf8(file).split(QLatin1Char('\n'));
    QStringList told;
    for (int at = 0; at + 1 < lines.size(); at += 2) {
        if (lines[at] == Code__1 || lines[at] == Code_999) {
            told << lines[at + 1];
        } else if (lines[at] == Code__2) {
            const QString entity =
                at < 4 || lines[at - 1] == "SECTION" ? lines[at - 1] : lines[at - 3];
            told << entity + QLatin1Char(' ') + lines[at + 1];
        } else if (lines[at] == Code_42) {
            told << QStringLiteral("sign ") + lines[at + 1];
        }
    }
    return told;
}

class DxfNesterTest : public testing::Test
{
protected:
    // A fabric of 150 cm with one style "size" in the sizes 1 and 2, a garment of each.
    DxfNesterTest()
    {
        builder.layer("1").fabric("Linen", {150}).style("size", {"S", "M"});
        builder.garments(1, 1, 1, {1, 1});
        builder.drawing().setSingleLayer(1);
        fabric = &builder.fabricAt(1);
    }
    ~DxfNesterTest() override
    {
        CAutoMarkerOptions::instance()->setSettings({});
        Nester::Les_Groupes_Blockes_Tempo.clear();
        Nester::sizes_list.clear();
        Nester::marker_section = false;
    }

    // A piece of 10 x 5 of which `left` and `right` wait in size 1.
    CDbPieceObject &piece(const char *name, short left = 1, short right = 0)
    {
        builder.piece(1, 1, name);
        auto number = static_cast<short>(fabric->pieceCount());
        CDbPieceObject *added = fabric->findPieceAccordingIndex(number, nullptr);
        added->setOrderedQuantity({1, 1, true}, left);
        added->setOrderedQuantity({1, 1, false}, right);
        return *added;
    }
    CDbGrPolysObject &standBy(std::initializer_list<std::pair<short, double>> pieces)
    {
        auto group = std::make_unique<CDbGrPolysObject>(PlacedInStandBy);
        for (const auto &[number, x] : pieces) {
            CDbPieceObject *of = fabric->findPieceAccordingIndex(number, nullptr);
            of->setOrderedQuantity(
                {1, 1, true}, static_cast<short>(of->orderedQuantity({1, 1, true}) + 1));
            auto polygon = std::make_unique<CDbPolygon>(number, short(1), true);
            polygon->place(of->getPieceSize(1), {x, 0, 0, false});
            group->addPolygon(std::move(polygon));
        }
        return *fabric->addGroup(1, std::move(group));
    }
    QByteArray file()
    {
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        QTextStream stream(&buffer);
        stream.setCodec("UTF-8");
        {
            Nester generator(stream, &builder.drawing(), fabric, 1);
            generator.Genere_Fichier(false);
        }
        return buffer.data();
    }
    QStringList told() { return outline(file()); }
    // The keywords of one block.
    QStringList block(const QString &name)
    {
        const QStringList all = told();
        const int start = all.indexOf("BLOCK " + name);
        EXPECT_GE(start, 0) << name.toStdString() << " is missing in\n"
                            << all.join('\n').toStdString();
        int end = start + 1;
        while (
            end < all.size() && !all[end].startsWith("BLOCK ") && all[end] != "SECTION ENTITIES") {
            ++end;
        }
        return all.mid(start + 1, end - start - 1);
    }
    QStringList globals()
    {
        QStringList all = told();
        all = all.mid(all.indexOf("SECTION ENTITIES") + 1);
        const int end = static_cast<int>(std::find_if(all.begin(), all.end(), [](const QString &l) {
            return l.startsWith("INSERT");
        }) - all.begin());
        return all.mid(0, end);
    }

    KivApplication application{std::make_unique<ScriptedUserInterface>(), QDir()};
    MarkerBuilder builder;
    CDbFabricObject *fabric;
};

TEST_F(DxfNesterTest, ABlockIsWhatItsPieceOrGroupIsAndHowTheClothLies)
{
    CDbPieceObject &front = piece("Front", 3, 2);
    CDbPieceObject &back = piece("Back", 1);
    back.setSingle(true);
    CDbPieceObject &collar = piece("Collar", 1);
    collar.setSingle(true);
    collar.setTwoPieceCutDown(MirroredPartner);
    standBy({{1, 0}});
    standBy({{2, 0}, {1, 10}});
    standBy({{1, 0}, {1, 20}}); // too far apart for one contour
    standBy({{2, 0}});
    fabric->fabricType = FoldOnBottom;

    const QStringList whole = told();
    const auto common = [](const char *name, int size, const char *foldable, const char *preFlip) {
        return QStringList{QStringLiteral("NAME:") + name, QStringLiteral("SIZE:%1").arg(size),
            "STYLE:sizeSTYLE", "NGROUP:FALSE", "FGROUP:FALSE",
            QStringLiteral("FOLDABLE:") + foldable, "OPTIONAL:0",
            QStringLiteral("PREFLIP:") + preFlip, "PREROT:0"};
    };
    const auto insert = [](const char *name, int sign, int bundle) {
        return QStringList{QStringLiteral("INSERT ") + name, QStringLiteral("sign %1").arg(sign),
            QStringLiteral("BUNDLE:%1").arg(bundle), "PLACEHOLDER:TRUE", "SECTION_ID:1"};
    };
    const QStringList blocks =
        QStringList{"SECTION BLOCKS", "BLOCK Front$0"} + common("Front", 1, "FALSE", "FALSE") +
        QStringList{"BLOCK Front$0$0"} + common("Front", 1, "FALSE", "TRUE") +
        QStringList{"BLOCK Back$0"} + common("Back", 1, "TRUE", "FALSE") +
        QStringList{"BLOCK Collar$0"} + common("Collar", 1, "FALSE", "FALSE") +
        QStringList{"BLOCK POLYSTANDBY1"} + common("POLYSTANDBY1", 1, "FALSE", "FALSE") +
        QStringList{"BLOCK POLYSTANDBY2"} + common("POLYSTANDBY2", 2, "FALSE", "FALSE") +
        QStringList{"BLOCK POLYSTANDBY4"} + common("POLYSTANDBY4", 4, "FALSE", "FALSE") +
        QStringList{"SECTION ENTITIES"};
    EXPECT_EQ(whole.mid(0, blocks.size()).join('\n'), blocks.join('\n'));
    const QStringList inserts = insert("Front$0", 1, 0) + insert("Front$0", 1, 1) +
                                insert("Front$0", 1, 2) + insert("Front$0$0", -1, 0) +
                                insert("Front$0$0", -1, 1) + insert("Back$0", 1, 0) +
                                insert("Collar$0", 1, 0) + insert("POLYSTANDBY1", 1, 0) +
                                insert("POLYSTANDBY2", 1, 0) + insert("POLYSTANDBY4", 1, 0);
    EXPECT_EQ(whole.mid(whole.size() - inserts.size()).join('\n'), inserts.join('\n'));
    EXPECT_TRUE(whole.contains("NPIECE:7") && whole.contains("NINSTANCE:7"));

    // The chart is as it was, and so are the places in garments.
    EXPECT_EQ(front.getQtyPieceSizeLayer(1, true, 1), 3);
    EXPECT_EQ(front.getQtyPieceSizeLayer(1, false, 1), 2);
    short index = 0;
    short copy = 0;
    CDBundleUtility::takeBundleIndex(fabric, 1, &front, 1, false, &index, &copy, nullptr);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(copy, 1);

    // Both groups that were to be fused are in the list, the one that gave no block, too.
    EXPECT_EQ(Nester::Les_Groupes_Blockes_Tempo.size(), 2U);
    EXPECT_DEATH(file(), "Avoir_Liste_Groupes_Blocking\\(\\).empty\\(\\)");
    Nester::Les_Groupes_Blockes_Tempo.clear();
    EXPECT_TRUE(told().contains("BLOCK POLYSTANDBY2"));
}

TEST_F(DxfNesterTest, MirroredOutlineAndFusedOutlineAreWritten)
{
    piece("Front", 0, 1);
    piece("Gore", 0);
    standBy({{2, 100}, {2, 110.00005}});
    const QByteArray bytes = file();
    const auto vertices = [](std::initializer_list<const char *> points) {
        QByteArray text;
        for (const QByteArray point : points) {
            text += "  0\nVERTEX\n  8\n1\n 10\n" + QByteArray(point).replace(' ', "\n 20\n") + "\n";
        }
        return text + "  0\nSEQEND\n  8\n1\n  0\nENDBLK\n";
    };
    EXPECT_TRUE(bytes.contains(
        vertices({"0.0000 0.0000", "10.0000 0.0000", "10.0000 -5.0000", "0.0000 -5.0000"})))
        << bytes.toStdString();
    EXPECT_TRUE(bytes.contains(" 10\n120.0001\n 20\n5.0000\n")) << bytes.toStdString();
    EXPECT_FALSE(bytes.contains(" 10\n110.0000\n")) << bytes.toStdString();
}

TEST_F(DxfNesterTest, FoldNeedsASinglePieceThatIsSymmetricalUnlessAnyPieceMay)
{
    CDbPieceObject &back = piece("Back");
    back.setSingle(true);
    PieceShape skew;
    skew.contour = CDbVectorsObjectTable({{0, 0}, {10, 0}, {8, 5}, {0, 5}});
    CDbPieceObject &yoke = *fabric->addPiece(std::make_unique<CDbPieceObject>("Yoke", short(1)));
    yoke.addSize(1, skew);
    yoke.setSingle(true);
    yoke.setOrderedQuantity({1, 1, true}, 1);

    const struct
    {
        int type;
        bool anyPiece;
        const char *back;
        const char *yoke;
    } cases[] = {{PlainFabric, true, "FALSE", "FALSE"}, {FoldOnTop, false, "TRUE", "FALSE"},
        {TubularFabric, false, "TRUE", "FALSE"}, {FoldOnBottom, true, "TRUE", "TRUE"}};
    for (const auto &each : cases) {
        fabric->fabricType = each.type;
        fabric->foldAnyPiece = each.anyPiece;
        EXPECT_EQ(block("Back$0")[5], QStringLiteral("FOLDABLE:") + each.back) << each.type;
        EXPECT_EQ(block("Yoke$0")[5], QStringLiteral("FOLDABLE:") + each.yoke) << each.type;
    }
}

TEST_F(DxfNesterTest, BlocksTellWhereTheirRulesDifferFromTheFabrics)
{
    fabric->rules = {180, 5, true, false};
    piece("Front").setOwnRules({90, 30, false, true});
    piece("Back").setOwnRules({180, 1.5, true, false});
    piece("Hem");
    standBy({{1, 0}});
    standBy({{1, 0}, {2, 10}});
    const QStringList front{"ROT:90", "HFLIP:FALSE", "VFLIP:TRUE", "LTILTLTILT:22", "RTILT:22"};
    EXPECT_EQ(block("Front$0").mid(6, 5), front);
    Nester::Les_Groupes_Blockes_Tempo.clear();
    EXPECT_EQ(block("Back$0").mid(6, 2), (QStringList{"LTILTLTILT:1.5", "RTILT:1.5"}));
    EXPECT_EQ(block("Hem$0")[6], "OPTIONAL:0");
    EXPECT_EQ(block("POLYSTANDBY1").mid(6, 5), front);
    // A group may do what each of its pieces may.
    EXPECT_EQ(block("POLYSTANDBY2").mid(6, 4),
        (QStringList{"HFLIP:FALSE", "LTILTLTILT:1.5", "RTILT:1.5", "OPTIONAL:0"}));
    fabric->setHybrid(true);
    EXPECT_EQ(
        block("POLYSTANDBY1").mid(2, 5), (QStringList{"STYLE:STYLE", "NGROUP:FALSE", "FGROUP:FALSE",
                                             "FOLDABLE:FALSE", "OPTIONAL:0"}));
    EXPECT_EQ(block("Front$0").mid(6, 5), front);
}

TEST_F(DxfNesterTest, TheFabricsFrameGoesByItsFoldItsGapsAndItsLines)
{
    EXPECT_EQ(globals().join('\n'),
        "MARKER:Linen\nSPREAD:SINGULAR\nNPIECE:0\nNINSTANCE:0\nUNIT:CM\nSCALE:1.0000\n"
        "WIDTH:149.9900\nGAP:0.0100\nTSALV:0.0100\nBSALV:0.0100\nLSALV:0.0100\nNAPACTIVE:FALSE\n"
        "FLIPACTIVE:FALSE\nROT:0\nHFLIP:FALSE\nVFLIP:FALSE\nLTILT:0.0000\nRTILT:0.0000");

    fabric->setGaps(-0.75, 0.5);
    fabric->rules = {90, 45, false, true};
    fabric->plaidInfo.xRepetition = 8;
    fabric->plaidInfo.xRepOffset = -1;
    fabric->plaidInfo.sampleVerLines.addLine(2);
    fabric->plaidInfo.yRepetition = 6;
    fabric->plaidInfo.sampleHorLines.addLine(0);
    const struct
    {
        int type;
        bool edge;
        const char *frame;
    } cases[] = {
        {FoldOnBottom, true, "SPREAD:BOOK_FOLD TSALV:0.7500 BSALV:0.0000 LSALV:0.7500"},
        {FoldOnTop, true, "SPREAD:BOOK_FOLD TSALV:0.0000 BSALV:0.7500 LSALV:0.7500"},
        {TubularFabric, true, "SPREAD:TUBULAR TSALV:0.0000 BSALV:0.0000 LSALV:0.7500"},
        {PlainFabric, false, "SPREAD:SINGULAR TSALV:0.0100 BSALV:0.0100 LSALV:0.0100"},
    };
    for (const auto &each : cases) {
        fabric->fabricType = each.type;
        fabric->edgeGapActive = each.edge;
        const QStringList lines = globals();
        EXPECT_EQ(
            (QStringList{lines[1], lines[8], lines[9], lines[10]}.join(' ')), QString(each.frame));
        EXPECT_EQ(lines[7], "GAP:0.7500");
        EXPECT_EQ(
            lines.mid(13), (QStringList{"ROT:90", "HFLIP:FALSE", "VFLIP:TRUE", "LTILT:22.0000",
                               "RTILT:22.0000", "X_REPETITION:8.0000", "X_REP_OFFSET:-1.0000",
                               "Y_REPETITION:6.0000", "Y_REP_OFFSET:0.0000"}));
    }
}

TEST_F(DxfNesterTest, LinkedPiecesShareANumberForEachDirectionOfThePattern)
{
    piece("Front", 1, 1);
    piece("Back", 1).setSingle(true);
    piece("Hem", 1);
    fabric->addLink({{1, 3}, {2, 2}}); // front's corner (10, 5) with back's (10, 0)
    fabric->addLink({{1, 1}, {1, 2}}); // the left front with the right one
    fabric->plaidInfo.plaidActive = true;
    const auto lines = [this](const char *name) {
        return block(name).filter("REFERENCE_LINE").join(' ').remove("REFERENCE_LINE:");
    };
    EXPECT_EQ(lines("Front$0"), ""); // no lines to be matched to
    fabric->plaidInfo.sampleVerLines.addLine(0);
    EXPECT_EQ(
        lines("Front$0"), "(0.0000,0.0000)(0.0000,0.1000),1 (10.0000,5.0000)(10.0000,5.1000),2");
    EXPECT_EQ(lines("Front$0$0"),
        "(10.0000,0.0000)(10.0000,0.1000),1 (10.0000,-5.0000)(10.0000,-4.9000),3");
    EXPECT_EQ(
        lines("Back$0"), "(10.0000,0.0000)(10.0000,0.1000),2 (10.0000,0.0000)(10.0000,0.1000),3");
    EXPECT_EQ(lines("Hem$0"), "");
    fabric->plaidInfo.sampleHorLines.addLine(0);
    EXPECT_EQ(lines("Front$0"),
        "(0.0000,0.0000)(0.1000,0.0000),1 (0.0000,0.0000)(0.0000,0.1000),2 "
        "(10.0000,5.0000)(10.1000,5.0000),3 (10.0000,5.0000)(10.0000,5.1000),4");
    EXPECT_EQ(globals().filter("SP_GROUP").size(), 6);
    EXPECT_EQ(globals().filter("SP_GROUP")[5], "SP_GROUP:6,ONGOING");
    fabric->plaidInfo.plaidActive = false;
    EXPECT_EQ(lines("Front$0"), "");
    EXPECT_EQ(globals().filter("SP_GROUP").size(), 0);
}

TEST_F(DxfNesterTest, ClothWithADirectionGivesEachPieceABlockAndSectionsNumberThem)
{
    piece("Front", 2, 1);
    fabric->oneWay = true;
    Nester::marker_section = true;
    Nester::section_interlock = 2.5;
    Nester::sizes_list.insert({"sizeSTYLE", 1, 0, GeoPoint2D(0, 7), 4});
    EXPECT_EQ(told().filter("BLOCK ").join(' '), "BLOCK Front$0 BLOCK Front$0$0 BLOCK Front$0$1");
    EXPECT_EQ(told().filter("SECTION_ID").join(' '), "SECTION_ID:5 SECTION_ID:5 SECTION_ID:5");
    EXPECT_EQ(globals()[2], "SECTIONAL_INTERLOCK:2.5000");
    fabric->oneWay = false;
    EXPECT_EQ(told().filter(QRegularExpression("^(BUNDLE|SECTION_ID)")).join(' '),
        "BUNDLE:0 SECTION_ID:5 BUNDLE:1 SECTION_ID:1 BUNDLE:0 SECTION_ID:5");
}

TEST_F(DxfNesterTest, OptionsAndGarmentsDecideWhatIsExported)
{
    piece("Front", 1).setOrderedQuantity({2, 1, true}, 1);
    standBy({{1, 0}});
    builder.garments(1, 1, 1, {0, 1});
    EXPECT_EQ(told().filter("SIZE:").join(' '), "SIZE:2 SIZE:1");
    CAutoMarkerOptions::instance()->setMarkerPiecesInCharte(false);
    EXPECT_EQ(
        told().filter(QRegularExpression("^N(PIECE|INSTANCE)")).join(' '), "NPIECE:1 NINSTANCE:0");
    CAutoMarkerOptions::instance()->setMarkerPiecesInStandby(false);
    EXPECT_EQ(told().filter("BLOCK ").size(), 0);
}

TEST_F(DxfNesterTest, RepeatedNamesAreRefusedInTheCurrentFabricOfASingleLayerAlone)
{
    const auto document = MarkerBuilder()
                              .layer("1")
                              .fabric("Linen", {150})
                              .fabric("Lining", {150})
                              .style("A", {"S"})
                              .style("B", {"S"})
                              .piece(1, 1, "Front")
                              .piece(1, 2, "FRONT")
                              .piece(2, 1, "Front")
                              .piece(2, 2, "Front")
                              .take();
    DXFNESTERProcessor processor;
    auto &user = static_cast<ScriptedUserInterface &>(application.userInterface());
    const auto prepares = [&](short currentFabric, short layer) {
        document->drawing()->currentFabric = currentFabric;
        document->drawing()->setSingleLayer(layer);
        return processor.prepare(*document, static_cast<short>(3 - currentFabric));
    };
    EXPECT_TRUE(processor.prepare(DocumentMak(nullptr), 0));
    EXPECT_TRUE(prepares(1, 1));
    EXPECT_TRUE(prepares(2, 0));
    EXPECT_TRUE(user.warnings.empty());
    EXPECT_FALSE(prepares(2, 1));
    ASSERT_EQ(user.warnings.size(), 1U);
    EXPECT_EQ(user.warnings[0].message, "Cannot export. One or more piece names are repeating.");
    EXPECT_THROW(prepares(1, 2), AssertionError); // a layer that the marker does not have
}

TEST_F(DxfNesterTest, AFailureGivesTheChartItsPiecesBack)
{
    CDbPieceObject &front = piece("Front", 2);
    piece("Back", 1);
    builder.drawing().currentFabric = 1;
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    QTextStream stream(&device);
    {
        Nester generator(stream, &builder.drawing(), fabric, 1);
        generator.Creer_Block_Nester(&front, 1, 1, true, 1, 2, 0);
        EXPECT_EQ(front.getQtyPieceSizeLayer(1, true, 1), 1);
        // The piece does not have that index, and there is no such group.
        EXPECT_THROW(generator.Creer_Block_Nester(&front, 2, 1, true, 2, 1, 0), AssertionError);
        EXPECT_THROW(generator.Creer_Block_Nester(nullptr, 1), AssertionError);
        EXPECT_EQ(front.getQtyPieceSizeLayer(1, true, 1), 1);
    }
    EXPECT_EQ(front.getQtyPieceSizeLayer(1, true, 1), 2);
}

TEST(DxfReal, IsWhatTheDefaultLocaleWritesWithFourDecimals)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> exponent(-7, 7);
    std::vector<double> values{
        0.0, -0.0, -0.00001, 0.00005, 998.99995, 999, 999.99995, -1000, 1234567.891, 0.1};
    for (int i = 0; i < 2000; ++i) {
        values.push_back(mantissa(random) * std::pow(10, exponent(random)));
        values.push_back((i - 1000) / 32.0); // half-way between two texts
    }
    for (const char *name : {"C", "en_US", "de_DE", "fr_FR", "hi_IN", "ar_EG", "sv_SE", "de_CH"}) {
        QLocale::setDefault(QLocale(name));
        for (const double value : values) {
            ASSERT_EQ(real(value), QLocale().toString(value, 'f', 4)) << name << ' ' << value;
        }
        EXPECT_EQ(shortReal(1.5), "1.5") << name;
    }
    QLocale::setDefault(QLocale::c());
}

} // namespace
} // namespace DxfNester
} // namespace KivSystem
