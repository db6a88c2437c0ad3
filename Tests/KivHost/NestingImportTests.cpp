#include "HostTestSupport.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerFile.h"
#include "KivMarker/Polygon.h"
#include "Verbs.h"

namespace KivSystem {
namespace {

// An L and a square; the strip is 10 units high.
const char *const kInstance = R"({
"name": "demo", "strip_height": 10.0, "items": [
{"id": 4, "demand": 2, "allowed_orientations": [0.0, 180.0], "dxf": "no/such.dxf",
 "shape": {"type": "simple_polygon",
           "data": [[0, 0], [6, 0], [6, 2], [2, 2], [2, 4], [0, 4], [0, 0], [0, 0]]}},
{"id": 7, "demand": 1,
 "shape": {"type": "simple_polygon", "data": [[-1, -1], [1, -1], [1, 1], [-1, 1]]}}
]})";

const char *const kLayout = R"svg(<svg xmlns="http://www.w3.org/2000/svg">
<g id="container_0"><path d="M0,0 L12,0 L12,10 L0,10 z"/></g>
<g id="items"><defs><g id="item_4"><path d="M0,0 L6,0 L6,2 L2,1.9999998 L2,4 L0,4 z"/></g><g id="cd"><path/></g></defs>
<use href="#item_4" transform="translate(6.5 4.25), rotate(-180)"><title>t</title></use>
<use href="#item_7" transform="translate(9,9) rotate(450)"/>
<use href="#cd_shape_4" transform="skewX(3)"/>
</g>
<g id="overlap_lines" transform="matrix(1)"><use href="#item_9"/></g>
</svg>)svg";

class NestingImportTest : public testing::Test
{
protected:
    int import(const QByteArray &instance, const QByteArray &layout = QByteArray())
    {
        ImportOptions options;
        options.instance = folder.write("i.json", instance);
        options.layout = layout.isNull() ? QString() : folder.write("l.svg", layout);
        options.unit = 2;
        options.output = folder.path("o.mar");
        QFile::remove(options.output);
        kept.err.clear();
        return runReporting(kept.console, [&] { return importMarker(options, kept.console); });
    }

    /// The message of a failed import without program and folder.
    QString faultOfImport(const QByteArray &instance, const QByteArray &layout = QByteArray())
    {
        EXPECT_EQ(import(instance, layout), ExitUnreadable);
        EXPECT_FALSE(QFile::exists(folder.path("o.mar")));
        return kept.err.trimmed().remove("kivhost: ").remove(folder.path() + "/");
    }

    Folder folder;
    KeptConsole kept;
};

TEST_F(NestingImportTest, MakesAMarkerOfInstanceAndLayout)
{
    ASSERT_EQ(import(kInstance, kLayout), ExitDone) << kept.err;
    EXPECT_EQ(
        kept.err, "kivhost: " + folder.path("i.json") + ": 2 items, 3 pieces ordered, 2 placed\n");

    const auto document = MarkerFile::load(folder.path("o.mar"));
    const CDbMarkerDrawing &drawing = *document->drawing();
    const CDbFabricObject &fabric = *drawing.getFabric(0);
    EXPECT_EQ(fabric.fabricName, "demo");
    EXPECT_EQ(drawing.getStyle(0)->getStyleName(), "demo");
    EXPECT_EQ(fabric.getFabricLayerWidth(1), 20);
    EXPECT_EQ(drawing.garmentsInLayer(&fabric, 1), 1);
    short single = 0;
    EXPECT_TRUE(drawing.isSetToSingleLayer(nullptr, &single));
    EXPECT_EQ(single, 1);

    const CDbPieceObject &el = *fabric.findPieceAccordingIndex(1, nullptr);
    EXPECT_EQ(el.getName(), "Item 4");
    EXPECT_TRUE(el.getKIVPieceSingle());
    EXPECT_EQ(el.orderedQuantity({1, 1, true}), 2);
    EXPECT_EQ(el.ownRules()->rotationStep, 180);
    EXPECT_EQ(el.getPieceSize(1).shape.contour.size(), 6);
    EXPECT_EQ(fabric.findPieceAccordingIndex(2, nullptr)->ownRules()->fineRotation, 180);

    const auto &groups = fabric.findLayer(1)->groups;
    ASSERT_EQ(groups.size(), 2U);
    const CDbPolygon &turned = *groups[0]->firstPolygon;
    EXPECT_EQ(turned.placement().rotation, 180);
    EXPECT_FALSE(turned.placement().mirrored);
    EXPECT_TRUE(turned.polygonRect.equals({1, 13, 0.5, 8.5}, 1e-9));
    EXPECT_TRUE(turned.currentContour()->contains({12, 8}));
    EXPECT_FALSE(turned.currentContour()->contains({2, 1})); // the corner that the L lacks
    EXPECT_EQ(groups[1]->firstPolygon->placement().rotation, 90);
    EXPECT_EQ(fabric.getLengthOccupiedLayer(1), 20);
}

TEST_F(NestingImportTest, ReadsTheOlderDialect)
{
    const QByteArray older = R"svg(<svg xmlns:xlink="http://www.w3.org/1999/xlink">
<g id="bin_0"><path d="M0,0 L12,0 L12,10.000001 L0,10.000001 z"/></g>
<g id="items"><use transform="translate(1,0) rotate(0)" xlink:href="#item_4"/></g></svg>)svg";
    ASSERT_EQ(import(kInstance, older), ExitDone) << kept.err;
    const auto document = MarkerFile::load(folder.path("o.mar"));
    EXPECT_EQ(document->drawing()->getFabric(0)->getLengthOccupiedLayer(1), 14);
}

TEST_F(NestingImportTest, WithoutALayoutAllIsToBePlaced)
{
    ASSERT_EQ(import(kInstance), ExitDone);
    const auto document = MarkerFile::load(folder.path("o.mar"));
    short toPlace = 0;
    document->drawing()->getFabric(0)->calculateTheValuesToDisplayInALayer(
        1, nullptr, nullptr, &toPlace, nullptr, nullptr, nullptr);
    EXPECT_EQ(toPlace, 3);
}

TEST_F(NestingImportTest, PiecesOutsideTheStripAreToldAndKept)
{
    const QByteArray layout = QByteArray(kLayout).replace("translate(9,9)", "translate(9,10.5)");
    ASSERT_EQ(import(kInstance, layout), ExitDone);
    EXPECT_TRUE(kept.err.contains(
        "l.svg: warning: 1 of the pieces reach out of the strip, by up to 3.00 cm\n"))
        << kept.err;
}

TEST_F(NestingImportTest, TransformsWorkFromRightToLeft)
{
    const std::pair<const char *, GeoRectangle> cases[] = {
        {"translate(3 5)", {4, 8, 8, 12}},
        {"translate(3)", {4, 8, -2, 2}},
        {"rotate(90), translate(3 5)", {-12, -8, 4, 8}},
        {"rotate(180 2 2)", {6, 10, 6, 10}},
        {" translate( 1 , 1 )translate(2 4) ", {4, 8, 8, 12}},
        {"", {-2, 2, -2, 2}},
    };
    for (const auto &[transform, rect] : cases) {
        const QByteArray layout =
            QByteArray(kLayout).replace("translate(9,9) rotate(450)", transform);
        ASSERT_EQ(import(kInstance, layout), ExitDone) << kept.err;
        const auto document = MarkerFile::load(folder.path("o.mar"));
        const auto &groups = document->drawing()->getFabric(0)->findLayer(1)->groups;
        EXPECT_TRUE(groups[1]->firstPolygon->polygonRect.equals(rect, 1e-9)) << transform;
    }
}

TEST_F(NestingImportTest, FaultsOfTheInstanceAreToldWithTheirPlace)
{
    const struct
    {
        const char *replaced;
        const char *by;
        const char *fault;
    } cases[] = {
        {"\"items\": [", "\"items\": [,",
            "i.json: line 2: illegal value, expected a nesting instance in JSON"},
        {"\"demo\"", "7", "i.json: $.name: found 7, expected a text of 1 to 10000 characters"},
        {"\"demo\"", "\"\"",
            "i.json: $.name: found 0 characters, expected a text of 1 to 10000 characters"},
        {"\"demo\"", "\"a\\nb\"",
            "i.json: $.name: found control characters, expected a text on one line"},
        {"10.0", "\"10\"",
            "i.json: $.strip_height: found a text, expected a number that stands for no more than "
            "100000 cm"},
        {"10.0", "-10", "i.json: $.strip_height: found -10, expected a height above 0"},
        {"10.0", "50001",
            "i.json: $.strip_height: found 50001, expected a number that stands for no more than "
            "100000 cm"},
        {"\"items\"", "\"item\"",
            "i.json: $.items: it is missing, expected an array of 1 to 32767 items"},
        {"\"id\": 7", "\"id\": 4",
            "i.json: $.items[1].id: found a second item 4, expected each id once"},
        {"\"id\": 7", "\"id\": 7.5",
            "i.json: $.items[1].id: found 7.5, expected a whole number from 0 to 32767"},
        {"\"demand\": 1", "\"demand\": -1",
            "i.json: $.items[1].demand: found -1, expected a whole number from 0 to 32767"},
        {"\"demand\": 1", "\"demand\": 32766",
            "i.json: $.items[1].demand: all demands so far come to 32768, expected no more than "
            "32767 pieces in all"},
        {"0.0, 180.0", "0, 90",
            "i.json: $.items[0].allowed_orientations: the angles are not evenly spaced from 0 on, "
            "expected such as 0, 180 or 0, 90, 180, 270"},
        {"0.0, 180.0", "0, true",
            "i.json: $.items[0].allowed_orientations[1]: found true, expected whole degrees from "
            "-360 to 360"},
        {"[0.0, 180.0]", "[]",
            "i.json: $.items[0].allowed_orientations: found 0 entries, expected an array of at "
            "least one angle in degrees"},
        {"simple_polygon", "multi_polygon",
            "i.json: $.items[0].shape.type: found another one, expected \"simple_polygon\""},
        {"[6, 2]", "[6]",
            "i.json: $.items[0].shape.data[2]: found 1 numbers, expected a point "
            "[x, y]"},
        {"[6, 2]", "[6, null]",
            "i.json: $.items[0].shape.data[2][1]: found null, expected a number that stands for no "
            "more than 100000 cm"},
        {"[[-1, -1], [1, -1], [1, 1], [-1, 1]]", "[[0, 0], [1, 1], [0, 0]]",
            "i.json: $.items[1].shape.data: the outline encloses no area, expected at least three "
            "points around one"},
    };
    for (const auto &entry : cases) {
        const QByteArray broken = QByteArray(kInstance).replace(entry.replaced, entry.by);
        EXPECT_EQ(faultOfImport(broken), entry.fault);
    }
    EXPECT_EQ(faultOfImport("[]"),
        "i.json: $: found an array, expected an object with name, strip_height and items");
    EXPECT_EQ(faultOfImport(QByteArray(2000000, '[')),
        "i.json: line 1: too deeply nested document, expected a nesting instance in JSON");
}

TEST_F(NestingImportTest, FaultsOfTheLayoutAreToldWithTheirPlace)
{
    const struct
    {
        const char *replaced;
        const char *by;
        const char *fault;
    } cases[] = {
        {"</svg>", "", "l.svg: line 9: Premature end of document, expected a layout in SVG"},
        {"container_0", "box",
            "l.svg: <g id=\"container_0\">: it is missing, expected it or \"bin_0\" with the "
            "strip's outline"},
        {"\"items\"", "\"things\"",
            "l.svg: <g id=\"items\">: it is missing, expected it with the placed pieces"},
        {"L12,10 L0,10", "L12,10.5 L0,10.5",
            "l.svg: line 2: <path>: the strip reaches from 0 to 10.5, expected 0 to 10, the height "
            "of the instance"},
        {"L12,10 L0,10 z", "C1,1 2,2 3,3",
            "l.svg: line 2: <path>: found another outline, expected M, L and z with points"},
        {"L2,4 L0,4", "L2,4.01 L0,4",
            "l.svg: line 3: <path>: found another outline for item 4, expected that of the "
            "instance"},
        {"L2,4 L0,4", "L2,4",
            "l.svg: line 3: <path>: found another outline for item 4, expected that of the "
            "instance"},
        {"#item_7", "#item_8",
            "l.svg: line 5: <use>: found item \"8\", expected an item of the instance"},
        {"#cd_shape_4\" transform=\"skewX(3)\"", "#item_7\"",
            "l.svg: line 6: <use>: found piece 2 of item 7, expected no more than its demand of 1"},
        {"rotate(450)", "scale(-1 1)",
            "l.svg: line 5: <use>: the transform is not understood, expected translate(x, y) and "
            "rotate(degrees)"},
        {"rotate(450)", "rotate(nan)",
            "l.svg: line 5: <use>: the transform is not understood, expected translate(x, y) and "
            "rotate(degrees)"},
        {"rotate(450)", "rotate(45",
            "l.svg: line 5: <use>: the transform is not understood, expected translate(x, y) and "
            "rotate(degrees)"},
        {"<use href=\"#item_7\"", "<use x=\"3\" href=\"#item_7\"",
            "l.svg: line 5: <use>: the transform is not understood, expected translate(x, y) and "
            "rotate(degrees)"},
        {"translate(9,9)", "translate(9,9e9)",
            "l.svg: line 5: <use>: found 9e+09, expected a number that stands for no more than "
            "100000 cm"},
        {"<g id=\"items\">", "<g id=\"items\" transform=\"rotate(1)\">",
            "l.svg: line 4: <use>: it lies in a group with a transform, expected transforms on "
            "<use> alone"},
    };
    for (const auto &entry : cases) {
        const QByteArray broken = QByteArray(kLayout).replace(entry.replaced, entry.by);
        EXPECT_EQ(faultOfImport(kInstance, broken), entry.fault);
    }
    QByteArray deep("<svg>");
    for (int depth = 0; depth < 200000; ++depth) {
        deep += "<g>";
    }
    EXPECT_EQ(faultOfImport(kInstance, deep),
        "l.svg: line 1: <g>: the elements are nested too deeply, expected no more than 1000 of "
        "them");
    const QByteArray large(33 * 1024 * 1024, ' ');
    EXPECT_EQ(faultOfImport(kInstance, large),
        "l.svg: file: found 34603008 bytes, expected no more than 33554432");
}

TEST_F(NestingImportTest, AMarkerThatCannotBeWrittenIsTold)
{
    ImportOptions options{folder.write("i.json", kInstance), QString(), 1, folder.path("no/o.mar")};
    const QString fault = faultOf([&] { importMarker(options, kept.console); });
    EXPECT_TRUE(fault.startsWith("1 " + folder.path("no/o.mar") + ": ")) << fault;
    options.output = folder.path("../") + QFileInfo(folder.path()).fileName() + "/i.json";
    EXPECT_EQ(faultOf([&] { importMarker(options, kept.console); }),
        "2 " + options.output + ": is read, expected another file to write");
    options.unit = 0;
    EXPECT_EQ(faultOf([&] { importMarker(options, kept.console); }),
        "2 --unit: expected a length in centimetres above 0");
}

} // namespace
} // namespace KivSystem
