#include "TextProcessor.h"

#include "ExportTools.h"
#include "Failures.h"
#include "TextIndexList.h"
#include "TextProcessorOptions.h"

#include "KivCore/Locale.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Symbols.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QIODevice>
#include <QLocale>
#include <QTextCodec>
#include <QTextStream>

#include <cmath>

namespace KivSystem {
namespace {

// --- Separators ---------------------------------------------------------------------------------

// A byte that the local encoding cannot express travels inside a text as a lone low surrogate,
// which no proper text holds, and becomes the byte again when the text is written.
constexpr ushort kRawByte = 0xDC00;

bool isRawByte(const QString &text, int position)
{
    const ushort unit = text[position].unicode();
    return unit >= kRawByte + 0x80 && unit <= kRawByte + 0xFF &&
           (position == 0 || !text[position - 1].isHighSurrogate());
}

// The text that writeText() turns into exactly these bytes.
QString textOfBytes(const QByteArray &bytes, const QTextCodec *codec)
{
    QString text = codec->toUnicode(bytes);
    if (codec->fromUnicode(text) == bytes) {
        return text;
    }
    text.clear();
    for (const char byte : bytes) {
        const auto value = static_cast<uchar>(byte);
        text += QChar(static_cast<ushort>(value < 0x80 ? value : kRawByte + value));
    }
    return text;
}

void writeText(QTextStream &stream, const QString &text)
{
    int written = 0;
    for (int position = 0; position < text.size(); ++position) {
        if (isRawByte(text, position)) {
            stream << text.mid(written, position - written);
            stream.flush();
            stream.device()->putChar(static_cast<char>(text[position].unicode() - kRawByte));
            written = position + 1;
        }
    }
    stream << text.mid(written);
}

// Keeps the file parsable when the fields are not separated by tabs.
QString quoted(const QString &value, const QByteArray &separator)
{
    const CMarkerSymbols symbols;
    const QChar quote = QLatin1Char(symbols.quoteSymbol);
    // Ends at the first zero byte, as constData() is read.
    const QString separatorText = QString::fromLocal8Bit(separator.constData());
    if (separatorText == QString(QLatin1Char(symbols.tabSymbol))) {
        return value; // wanted: nothing is quoted beside tabs, not even a tab
    }
    if (value.contains(quote)) {
        return quote + QString(value).replace(quote, QLatin1String("\"\"")) + quote;
    }
    // Case does not count here on purpose. An empty separator is in every value, so that all are
    // quoted.
    if (value.contains(separatorText, Qt::CaseInsensitive)) {
        return quote + value + quote;
    }
    return value;
}

// --- Fields -------------------------------------------------------------------------------------

// What one line is about. Numbers are 1-based, 0 for a level that is not walked.
struct Record
{
    CDbMarkerDrawing *drawing = nullptr;
    const TextProcessorOptions *options = nullptr;
    const QTextCodec *codec = nullptr;
    CDbStyleObject *styleObject = nullptr;   // null without a style
    CDbFabricObject *fabricObject = nullptr; // null without a fabric
    short style = 0;
    short fabric = 0;
    short layer = 0;
    short size = 0;
};

QString words(const char *text)
{
    return QCoreApplication::translate("TextProcessor", text);
}

QString dateText(const QDateTime &time)
{
    return QLocale::c().toString(time.date(), QStringLiteral("d/M/yyyy"));
}

// The date of the marker's file. A file that is missing leaves `value` as it is.
void fileDate(const QString &path, TextField field, QString &value)
{
    if (path.isEmpty()) {
        value.clear();
        return;
    }
    const QFileInfo file(path);
    if (!file.exists()) {
        return;
    }
    if (field == FieldModificationDate) {
        value = dateText(file.lastModified());
        return;
    }
    // A file system without times of birth gives the last change of the file's entry instead.
    const QDateTime birth = file.birthTime();
    value = dateText(birth.isNull() ? file.metadataChangeTime() : birth);
}

void markerField(const Record &record, short field, QString &value)
{
    const CDbMarkerDrawing &drawing = *record.drawing;
    const SummaryInfo &summary = drawing.summaryInfo();
    switch (field) {
    case FieldFileName:
        value = drawing.drawingName() + QLatin1String(".mar");
        break;
    case FieldLocation:
        value = drawing.filePath.isEmpty() ? QString() : QFileInfo(drawing.filePath).absolutePath();
        break;
    case FieldComments: // on one line: a vertical tab stands for each carriage return
        value = QString(summary.comments)
                    .remove(QLatin1Char('\n'))
                    .replace(QLatin1Char('\r'), QLatin1Char('\x0B'));
        break;
    case FieldKeywords:
        value = summary.keywords;
        break;
    case FieldCreationDate:
    case FieldModificationDate:
        fileDate(drawing.filePath, static_cast<TextField>(field), value);
        break;
    case FieldDateStamp:
        if (summary.dateStamp.isValid() && SummaryInfo::isValidStamped(summary.dateStamp)) {
            value = dateText(summary.dateStamp);
        }
        break;
    default: // FieldStyleName
        KIV_CHECK_OPERATION(record.styleObject != nullptr);
        value = record.styleObject->getStyleName();
        break;
    }
}

QString markerType(int fabricType)
{
    switch (fabricType) {
    case FoldOnBottom:
        return words(QT_TRANSLATE_NOOP("TextProcessor", "Fold on Bottom"));
    case FoldOnTop:
        return words(QT_TRANSLATE_NOOP("TextProcessor", "Fold on Top"));
    case TubularFabric:
        return words(QT_TRANSLATE_NOOP("TextProcessor", "Tubular"));
    default:
        return words(QT_TRANSLATE_NOOP("TextProcessor", "Plain"));
    }
}

QString spacing(double gapX, double gapY)
{
    const KivLocale locale;
    const QString textX = locale.formatLength(gapX, KivLocale::NoOption);
    return gapY < std::abs(gapX)
               ? textX + QLatin1Char(' ') + locale.formatLength(gapY, KivLocale::NoOption)
               : textX;
}

void fabricField(const Record &record, short field, QString &value)
{
    KIV_CHECK_OPERATION(record.fabricObject != nullptr);
    const CDbFabricObject &fabric = *record.fabricObject;
    switch (field) {
    case FieldFabricName:
        value = fabric.fabricName;
        break;
    case FieldMarkerType:
        value = markerType(fabric.fabricType);
        break;
    case FieldOneWay:
        value = fabric.oneWay ? words(QT_TRANSLATE_NOOP("TextProcessor", "Yes"))
                              : words(QT_TRANSLATE_NOOP("TextProcessor", "No"));
        break;
    case FieldSpacing:
        value = spacing(fabric.getGapInX(), fabric.getGapInY());
        break;
    default: // FieldWidth
        value = record.layer == 0 ? words(QT_TRANSLATE_NOOP("TextProcessor", "None"))
                                  : ExportTools::Nombre_A_String_Regle_Affichage(
                                        fabric.getFabricLayerWidth(record.layer), false);
        break;
    }
}

void layerName(const Record &record, QString &value)
{
    const CDbLayerObjectTable &layers = record.drawing->getLayerObjectTable();
    KIV_CHECK_OPERATION(record.layer > 0 && record.layer <= layers.size());
    value = layers[record.layer - 1]->layerName;
}

// The fields that are computed from what lies in the layer, anew for each of them.
void layerValueField(const Record &record, short field, QString &value)
{
    KIV_CHECK_OPERATION(record.fabricObject != nullptr);
    const CDbFabricObject &fabric = *record.fabricObject;
    short error = 0;
    short garments = 0;
    short toPlace = 0;
    short placed = 0;
    double length = 0;
    double area = 0;
    fabric.calculateTheValuesToDisplayInALayer(
        record.layer, &error, &garments, &toPlace, &placed, &length, &area);
    KIV_CHECK_OPERATION(error == 0);

    switch (field) {
    case FieldLength:
        value = ExportTools::Nombre_A_String_Regle_Affichage(length, true);
        break;
    case FieldEstimate:
        value = ExportTools::Nombre_A_String_Regle_Affichage(
            garments == 0 ? 0 : length / garments, true);
        break;
    case FieldEfficiency:
        value =
            KivLocale().formatNumber(fabric.returnPlacementEfficiencyFactor(
                                         fabric.getFabricLayerWidth(record.layer), length, area),
                KivLocale::NoOption);
        break;
    case FieldPlacedPieces:
        value = QString::number(placed);
        break;
    default: // FieldPiecesToBePlaced
        value = QString::number(toPlace);
        break;
    }
}

// The entry of one size with garments in a size field.
QString sizeEntry(const CDbPieceObject &piece, const CDbStyleSizeObjectTable &sizes, short size,
    short quantity, short field)
{
    QString sizeName;
    QString specialName;
    short error = 0;
    piece.returnsSizeAndNameAccordingTypeSize(&sizes, size, sizeName, specialName, &error);
    KIV_CHECK_OPERATION(error == 0);
    switch (field) {
    case FieldSize:
        return sizeName;
    case FieldSpecial:
        return specialName;
    default: // FieldBreakdownValue
        return QString::number(quantity);
    }
}

// False when the style has no sizes on the fabric: `value` is as it was and the line ends there.
bool sizeField(const Record &record, short field, QString &value)
{
    KIV_CHECK_OPERATION(record.styleObject != nullptr && record.fabricObject != nullptr);
    short error = 0;
    const CDbStyleSizeObjectTable *sizes =
        record.styleObject->findStyleSizeObjectTable(record.fabric, &error);
    if (error != 0 || sizes == nullptr) {
        return false;
    }
    error = 0;
    const CDbPieceObject *piece = record.fabricObject->firstPieceByStyle(record.style, &error);
    KIV_CHECK_OPERATION(error == 0 && piece != nullptr);
    const short count = piece->getNumberOfSizes();
    const auto quantityOf = [&](short size) {
        return sizes->quantityClothingBySize(record.fabricObject, record.layer, piece, size);
    };

    value.clear();
    if (record.size != 0) {
        const short quantity = quantityOf(record.size);
        if (quantity > 0) {
            value = sizeEntry(*piece, *sizes, record.size, quantity, field);
        }
        return true;
    }

    short last = count;
    while (last > 0 && quantityOf(last) <= 0) {
        --last;
    }
    for (int number = 1; number <= count; ++number) {
        const auto size = static_cast<short>(number);
        const short quantity = quantityOf(size);
        if (quantity > 0) {
            value += sizeEntry(*piece, *sizes, size, quantity, field);
            if (size != last) {
                value += textOfBytes(record.options->repeatSeperator(), record.codec);
            }
        }
    }
    return true;
}

// --- Lines --------------------------------------------------------------------------------------

// Computes one field. A number that is no field leaves `value` as it is. False ends the line.
bool computeField(const Record &record, short field, QString &value)
{
    if (field < FieldFileName || field > FieldBreakdownValue) {
        return true;
    }
    if (field >= FieldSize) {
        return sizeField(record, field, value);
    }
    if (field <= FieldStyleName) {
        markerField(record, field, value);
    } else if (field <= FieldWidth) {
        fabricField(record, field, value);
    } else if (field == FieldLayerName) {
        layerName(record, value);
    } else {
        layerValueField(record, field, value);
    }
    return true;
}

// Writes one line. Numbers are 1-based, 0 for a level that is not walked.
void Export_TextFile_Une_Ligne(QTextStream &stream, CDbMarkerDrawing *drawing,
    const TextIndexList &list, bool /*unused*/, short style, short fabric, short layer,
    const TextProcessorOptions &options, short size)
{
    Record record{drawing, &options, stream.codec(), nullptr, nullptr, style, fabric, layer, size};
    if (style != 0) {
        record.styleObject = drawing->getStyle(static_cast<short>(style - 1));
        KIV_CHECK_OPERATION(record.styleObject != nullptr);
    }
    if (fabric != 0) {
        record.fabricObject = drawing->getFabric(static_cast<short>(fabric - 1));
        KIV_CHECK_OPERATION(record.fabricObject != nullptr);
    }

    // Lives for the whole line on purpose: a field that sets nothing repeats its left neighbour.
    QString value;
    for (int position = 0; position < list.size(); ++position) {
        if (position > 0) {
            writeText(stream, textOfBytes(options.filedSeperator(), record.codec));
        }
        const auto field = static_cast<short>(list[position]);
        if (!computeField(record, field, value)) {
            return; // wanted: the line stays unfinished and the next record goes on in it
        }
        writeText(stream, quoted(value, options.filedSeperator()));
    }
    stream << '\n';
}

// --- Walk ---------------------------------------------------------------------------------------

// The levels that the fields of a list need.
struct WantedLevels
{
    explicit WantedLevels(const TextIndexList &list)
    {
        for (const int index : list) {
            style |= index == FieldStyleName;
            fabric |= index >= FieldFabricName && index <= FieldWidth;
            layer |= index >= FieldLayerName && index <= FieldBreakdownValue;
            layerValues |= index >= FieldLength && index <= FieldPiecesToBePlaced;
            size |= index >= FieldSize && index <= FieldBreakdownValue;
        }
    }

    bool style = false;
    bool fabric = false;
    bool layer = false;
    bool layerValues = false; // computed for a layer on a fabric
    bool size = false;
};

// Calls visit with 1 to count(), or once with 0 when the level is not walked.
template <class Count, class Visit>
void walkLevel(bool walked, Count count, Visit visit)
{
    if (!walked) {
        visit(short{0});
        return;
    }
    for (int index = 1; index <= count(); ++index) {
        visit(static_cast<short>(index));
    }
}

// The lines of one style on one fabric in one layer, one for each size that has garments.
void exportLinePerSize(QTextStream &stream, CDbMarkerDrawing *drawing, const TextIndexList &list,
    const TextProcessorOptions &options, short style, short fabric, short layer)
{
    const CDbFabricObject *fabricObject = drawing->getFabric(static_cast<short>(fabric - 1));
    short error = 0;
    const CDbPieceObject *piece = fabricObject->firstPieceByStyle(style, &error);
    KIV_CHECK_OPERATION(error == 0 && piece != nullptr);
    const short count = piece->getNumberOfSizes();
    const CDbStyleSizeObjectTable *sizes =
        drawing->findSizesList(static_cast<short>(style - 1), fabric, &error);
    KIV_CHECK_OPERATION(error == 0 && sizes != nullptr);
    for (int number = 1; number <= count; ++number) {
        const auto size = static_cast<short>(number);
        if (sizes->quantityClothingBySize(fabricObject, layer, piece, size) > 0) {
            Export_TextFile_Une_Ligne(
                stream, drawing, list, false, style, fabric, layer, options, size);
        }
    }
}

// The lines of one style on one fabric, which the style need not have pieces on.
void exportSizes(QTextStream &stream, CDbMarkerDrawing *drawing, const TextIndexList &list,
    const TextProcessorOptions &options, short style, short fabric, int layersQty)
{
    const CDbFabricObject *fabricObject = drawing->getFabric(static_cast<short>(fabric - 1));
    KIV_CHECK_OPERATION(fabricObject != nullptr);
    if (layersQty <= 0 || !fabricObject->isFabricInvolvedByStyle(style)) {
        return;
    }
    for (int number = 1; number <= layersQty; ++number) {
        const auto layer = static_cast<short>(number);
        if (options.oneLine()) {
            exportLinePerSize(stream, drawing, list, options, style, fabric, layer);
        } else {
            Export_TextFile_Une_Ligne(
                stream, drawing, list, false, style, fabric, layer, options, 0);
        }
    }
}

// Chooses the walk: the smallest level of detail that the fields need.
void Export_TextFile(QTextStream &stream, CDbMarkerDrawing *const drawing,
    const TextIndexList &list, const TextProcessorOptions &options)
{
    KIV_CHECK_OPERATION(drawing != nullptr);
    const WantedLevels wanted(list);
    short error = 0;
    const int layersQty = drawing->getLayersQty(&error);
    KIV_CHECK_OPERATION(error == 0);

    const auto styles = [drawing] { return static_cast<int>(drawing->stylesList.size()); };
    const auto fabrics = [drawing] { return drawing->getFabricsTable().size(); };
    const auto layers = [drawing] { return drawing->getLayerObjectTable().size(); };
    if (wanted.size) {
        walkLevel(true, styles, [&](short style) {
            walkLevel(true, fabrics, [&](short fabric) {
                exportSizes(stream, drawing, list, options, style, fabric, layersQty);
            });
        });
        return;
    }
    const bool walkFabrics = wanted.fabric || wanted.layerValues;
    walkLevel(wanted.style, styles, [&](short style) {
        walkLevel(walkFabrics, fabrics, [&](short fabric) {
            walkLevel(wanted.layer, layers, [&](short layer) {
                Export_TextFile_Une_Ligne(
                    stream, drawing, list, false, style, fabric, layer, options, 0);
            });
        });
    });
}

} // namespace

void TextProcessor::exportDocument(const DocumentMak &doc, QIODevice *device,
    const TextIndexList &list, const TextProcessorOptions &options)
{
    device->setTextModeEnabled(true);
    QTextStream stream(device);
    Export_TextFile(stream, doc.drawing(), list, options);
}

} // namespace KivSystem
