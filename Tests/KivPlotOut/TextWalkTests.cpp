// Which lines a list of fields leads to, in which order.

#include "Support.h"

#include <QStringList>

namespace KivSystem {
namespace {

constexpr short kStyles = 2;
constexpr short kFabrics = 3;
constexpr short kLayers = 4;

// Fabric f in layer l is 100 f + l wide and has 10 f + l pieces to place; style s has pieces on the
// fabrics from s on.
std::unique_ptr<DocumentMak> walkMarker()
{
    MarkerBuilder builder;
    for (int layer = 1; layer <= kLayers; ++layer) {
        builder.layer(QStringLiteral("L%1").arg(layer));
    }
    for (int fabric = 1; fabric <= kFabrics; ++fabric) {
        std::vector<double> widths;
        for (int layer = 1; layer <= kLayers; ++layer) {
            widths.push_back(100 * fabric + layer);
        }
        builder.fabric(QStringLiteral("F%1").arg(fabric), widths);
    }
    builder.style("S1", {"36/short", "38", "40/long"}).style("S2", {"x"});
    for (short fabric = 1; fabric <= kFabrics; ++fabric) {
        for (short style = 1; style <= std::min(fabric, kStyles); ++style) {
            builder.piece(fabric, style, "Back");
        }
        for (short layer = 1; layer <= kLayers; ++layer) {
            builder.order(fabric, 1, 1, layer, static_cast<short>(10 * fabric + layer));
        }
    }
    return builder.take();
}

std::string expectedField(int field, int style, int fabric, int layer)
{
    switch (field) {
    case FieldFileName:
        return "Untitled.mar";
    case FieldKeywords:
        return "";
    case FieldStyleName:
        return "S" + std::to_string(style);
    case FieldFabricName:
        return "F" + std::to_string(fabric);
    case FieldWidth:
        return layer == 0 ? "None" : std::to_string(100 * fabric + layer) + ".00";
    case FieldLayerName:
        return "L" + std::to_string(layer);
    default: // FieldPiecesToBePlaced
        return std::to_string(10 * fabric + layer);
    }
}

// All lines of a walk over the levels that are named: S, F and L, always in this order.
std::string expectedLines(const TextIndexList &list, const std::string &levels)
{
    const auto bounds = [&levels](char level, int count) {
        const bool walked = levels.find(level) != std::string::npos;
        return std::make_pair(walked ? 1 : 0, walked ? count : 0);
    };
    const auto styles = bounds('S', kStyles);
    const auto fabrics = bounds('F', kFabrics);
    const auto layers = bounds('L', kLayers);
    std::string lines;
    for (int style = styles.first; style <= styles.second; ++style) {
        for (int fabric = fabrics.first; fabric <= fabrics.second; ++fabric) {
            for (int layer = layers.first; layer <= layers.second; ++layer) {
                for (int position = 0; position < list.size(); ++position) {
                    lines += position == 0 ? "" : "\t";
                    lines += expectedField(list[position], style, fabric, layer);
                }
                lines += "\n";
            }
        }
    }
    return lines;
}

TEST(TextWalk, GoesNoDeeperThanTheFieldsNeed)
{
    const struct
    {
        TextIndexList list;
        const char *levels;
    } rows[] = {
        {{}, ""},
        {{0, 3}, ""},
        {{7}, "S"},
        {{7, 0}, "S"},
        {{8}, "F"},
        {{12}, "F"},
        {{7, 8}, "SF"},
        {{8, 7}, "SF"},
        {{13}, "L"},
        {{18}, "FL"},
        {{13, 18}, "FL"},
        {{8, 13}, "FL"},
        {{13, 12}, "FL"},
        {{8, 18}, "FL"},
        {{7, 13}, "SL"},
        {{7, 18}, "SFL"},
        {{13, 7, 18}, "SFL"},
        {{13, 8, 7}, "SFL"},
        {{7, 12, 18}, "SFL"},
    };
    const auto document = walkMarker();
    for (int field = FieldLength; field <= FieldPiecesToBePlaced; ++field) {
        const std::string text = exportedText(*document, {field});
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), kFabrics * kLayers) << field;
    }
    for (const auto &row : rows) {
        EXPECT_EQ(exportedText(*document, row.list), expectedLines(row.list, row.levels))
            << row.levels << ", " << row.list.size() << " fields, first "
            << (row.list.isEmpty() ? -1 : row.list[0]);
    }
}

// S1 has garments on F1 and F2, S2 on F2; S1 on F3 none at all.
std::unique_ptr<DocumentMak> sizeMarker()
{
    return MarkerBuilder()
        .layer("L1")
        .layer("L2")
        .fabric("F1")
        .fabric("F2")
        .fabric("F3")
        .style("S1", {"S/slim", "M", "L/long"})
        .style("S2", {"x"})
        .garments(1, 1, 1, {2, 0, 1})
        .garments(1, 1, 2, {0, 3, 0})
        .garments(1, 2, 2, {1, 1, 1})
        .garments(2, 2, 1, {5})
        .garments(2, 1, 1, {7}) // without a piece on F1
        .piece(1, 1, "Back")
        .piece(2, 2, "Front")
        .piece(2, 1, "Back")
        .piece(3, 1, "Back")
        .take();
}

TEST(TextWalk, SizesAreListedInOneFieldOrOneOnALine)
{
    const auto document = sizeMarker();
    TextProcessorOptions options;
    options.setFiledSeperator(",");
    options.setrepeatSeperator("|");
    const TextIndexList list{7, 8, 13, 19, 20, 21};
    EXPECT_EQ(exportedText(*document, list, options), "S1,F1,L1,S|L,slim|long,2|1\n"
                                                      "S1,F1,L2,M,,3\n"
                                                      "S1,F2,L1,,,\n"
                                                      "S1,F2,L2,S|M|L,slim||long,1|1|1\n"
                                                      "S1,F3,L1,,,\n"
                                                      "S1,F3,L2,,,\n"
                                                      "S2,F2,L1,x,,5\n"
                                                      "S2,F2,L2,,,\n");

    options.setOneLine(true);
    EXPECT_EQ(exportedText(*document, list, options), "S1,F1,L1,S,slim,2\n"
                                                      "S1,F1,L1,L,long,1\n"
                                                      "S1,F1,L2,M,,3\n"
                                                      "S1,F2,L2,S,slim,1\n"
                                                      "S1,F2,L2,M,,1\n"
                                                      "S1,F2,L2,L,long,1\n"
                                                      "S2,F2,L1,x,,5\n");
    // The walk is the same when no other field asks for its levels.
    EXPECT_EQ(exportedText(*document, {21}, options), "2\n1\n3\n1\n1\n1\n5\n");
}

TEST(TextWalk, MarkerWithoutLayersHasNoSizeLines)
{
    const auto document = MarkerBuilder().fabric("F").style("S", {"S"}).piece(1, 1, "Back").take();
    EXPECT_EQ(exportedText(*document, {19}), "");
    EXPECT_EQ(exportedText(*document, {13}), "");
    EXPECT_EQ(exportedText(*document, {7}), "S\n");
}

TEST(TextWalk, EndsWithTheLargestNumberOfSizes)
{
    constexpr short kMost = 32767;
    auto drawing = std::make_unique<CDbMarkerDrawing>();
    drawing->addLayer("L1");
    CDbFabricObject *fabric = drawing->addFabric("F1");
    auto piece = std::make_unique<CDbPieceObject>("Back", short(1));
    std::vector<StyleSize> sizes;
    for (int number = 1; number <= kMost; ++number) {
        sizes.push_back({static_cast<short>(number), QString::number(number), QString()});
        piece->addSize(static_cast<short>(number), PieceShape());
    }
    fabric->addPiece(std::move(piece));
    drawing->addStyle("S1", QString(), sizes);
    drawing->findSizesList(0, 1, nullptr)->setQuantity(1, kMost, 2);
    const DocumentMak document(std::move(drawing));
    TextProcessorOptions options;
    EXPECT_EQ(exportedText(document, {19, 21}, options), "32767\t2\n");
    options.setOneLine(true);
    EXPECT_EQ(exportedText(document, {19, 21}, options), "32767\t2\n");
}

TEST(TextWalk, LineWithoutSizesStaysUnfinishedAndTheNextRecordGoesOnInIt)
{
    MarkerBuilder builder;
    builder.layer("L1").fabric("F1").style("S1", {"S"}).style("S2", {"x"});
    builder.garments(1, 1, 1, {1}).garments(2, 1, 1, {1}).piece(1, 1, "Back").piece(1, 2, "Back");
    CDbFabricObject late("F2", 1); // not known to the styles, which have no sizes for it
    late.addPiece(std::make_unique<CDbPieceObject>("Back", short(1)));
    builder.drawing().getFabricsTable().append(&late);
    EXPECT_EQ(exportedText(*builder.take(), {8, 19, 8}), "F1\tS\tF1\nF2\tF1\tx\tF1\n");
}

} // namespace
} // namespace KivSystem
