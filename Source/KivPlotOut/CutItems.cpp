// The items of a configuration, and the commands that are made from a point.

#include "CutProcessor.h"

#include "CutConfig.h"
#include "CutShapePath.h"
#include "ExportTools.h"

#include "KivMarker/ShareGlobales.h"

#include <QFile>
#include <QFileInfo>

namespace KivSystem {
namespace NC {
namespace {

QString appendFileName(QIODevice *device, const QString &format)
{
    const auto *file = qobject_cast<QFile *>(device);
    if (file == nullptr) {
        return format;
    }
    const QString base = QFileInfo(*file).baseName();
    return format.isEmpty() ? base : format.arg(base);
}

// Appends a length of `data` in the user's unit if the line then stays shorter than `maxLen`.
bool appendItem(QString &line, const QDomElement &data, const QDomElement &condition,
    const QString &attribute, int maxLen, bool isX)
{
    if (condition.isNull()) {
        return false;
    }
    const double length = data.attribute(attribute).toDouble();
    const QString text = condition.attribute(QStringLiteral("out"))
                             .arg(ExportTools::Nombre_A_String_Regle_Affichage(length, isX));
    if (text.size() + line.size() >= maxLen) {
        return false;
    }
    line += text;
    return true;
}

} // namespace

void CutProcessor::exportItems(const QDomElement &data, const QDomElement &config, int n)
{
    const QString tag = QStringLiteral("item");
    QDomElement item = config.firstChildElement(tag);
    for (; !item.isNull(); item = item.nextSiblingElement(tag)) {
        stream << parseItem(data, item, n);
    }
}

QString CutProcessor::parseItem(const QDomElement &data, QDomElement &item, int n)
{
    return itemText(data, item, n, 0);
}

QString CutProcessor::itemText(
    const QDomElement &data, const QDomElement &item, int n, int numberWidth)
{
    const QString type = item.attribute(QStringLiteral("type"));
    const QString v = item.attribute(QStringLiteral("v"));
    QString text = item.attribute(QStringLiteral("out"));
    if (type == QLatin1String("bool")) {
        text = choiceText(data, item, text);
    } else if (type == QLatin1String("text")) {
        if (v == QLatin1String("name")) {
            text = appendFileName(stream.device(), text);
        }
    } else if (type == QLatin1String("No.")) {
        text = text.arg(n, numberWidth, 10, QLatin1Char(' '));
    } else if (type == QLatin1String("double")) {
        if (v == QLatin1String("occupy")) {
            const double length = data.attribute(QStringLiteral("tissuL")).toDouble();
            text = text.arg(scaledX(length), 0, 'f', precision, QLatin1Char(' '));
        }
    } else if (type == QLatin1String("LabelM31")) {
        const QString label = QStringLiteral("label");
        text = !data.hasAttribute(label)
                   ? QString()
                   : formatPoint(text, data.attribute(QStringLiteral("centreX")),
                         data.attribute(QStringLiteral("centreY")), data.attribute(label));
    } else if (type == QLatin1String("vecmatch")) {
        exportMatchPoints(data, text);
        text.clear();
    } else if (type == QLatin1String("M69")) {
        const QDomElement next = data.nextSiblingElement();
        if (next.tagName() == QLatin1String("M69")) {
            exportItems(next, item, 1);
        } else {
            text.clear();
        }
    } else if (type == QLatin1String("pieceinfo")) {
        const QDomElement information = data.firstChildElement(QStringLiteral("text"));
        if (!information.isNull()) {
            exportItems(information, item, n);
        } else {
            text.clear();
        }
    } else if (type == QLatin1String("info")) {
        exportPieceInfo(data, item, text);
    }
    if (!text.isEmpty() && isWrapped(item)) {
        text += QLatin1String("\r\n");
    }
    return text;
}

QString CutProcessor::choiceText(
    const QDomElement &data, const QDomElement &item, const QString &out)
{
    const QString v = item.attribute(QStringLiteral("v"));
    const auto *settings = CDbMarkerShareGlobales::instance();
    if (v == QLatin1String("consoleCmdM20")) {
        return settings->getCutCommandM20() ? consoleText(data, item, out) : QString();
    }
    if (v == QLatin1String("pento")) {
        exportPenMoves(data, item, out);
        return {};
    }
    const QString tag = QStringLiteral("option");
    const bool isOn = v == QLatin1String("synchro") && settings->getCutPenUpSynchro();
    const QDomElement option = isOn ? item.firstChildElement(tag) : item.lastChildElement(tag);
    if (option.isNull()) {
        return out;
    }
    const QString text = option.attribute(QStringLiteral("v"));
    return out.isEmpty() ? text : out.arg(text);
}

QString CutProcessor::consoleText(
    const QDomElement &data, const QDomElement &item, const QString &out)
{
    QString line = appendFileName(stream.device(), out);
    const int maxLen = item.attribute(QStringLiteral("maxLen")).toInt();
    const QString tag = QStringLiteral("condition");
    const QDomElement length = item.firstChildElement(tag);
    if (appendItem(line, data, length, QStringLiteral("tissuL"), maxLen, true)) {
        const QDomElement width = length.nextSiblingElement(tag);
        appendItem(line, data, width, QStringLiteral("tissuW"), maxLen, false);
    }
    return line + QLatin1Char('*');
}

// The pen goes to the start of each path.
void CutProcessor::exportPenMoves(
    const QDomElement &data, const QDomElement &item, const QString &out)
{
    const bool wrap = isWrapped(item);
    const auto penText = [&item, &out](const QDomElement &option) {
        const QString text = option.attribute(QStringLiteral("v"));
        return QString(out).replace(QLatin1String("%3"), text);
    };
    const QString optionTag = QStringLiteral("option");
    const QString on = penText(item.firstChildElement(optionTag));
    const QString off = penText(item.lastChildElement(optionTag));

    std::vector<GeoPoint2D> points;
    const QString tag = QStringLiteral("path");
    QDomElement path = data.firstChildElement(tag);
    for (; !path.isNull(); path = path.nextSiblingElement(tag)) {
        points.clear();
        parseShapePath(path.text(), points);
        if (!points.empty()) {
            exportPoint(points.front(), isSet(path, QStringLiteral("PenTo")) ? on : off, wrap);
        }
    }
}

void CutProcessor::exportMatchPoints(const QDomElement &data, const QString &format)
{
    const QString tag = QStringLiteral("match_point");
    QDomElement point = data.firstChildElement(tag);
    for (; !point.isNull(); point = point.nextSiblingElement(tag)) {
        stream << formatPoint(format, point.attribute(QStringLiteral("matchPointX")),
            point.attribute(QStringLiteral("matchPointY")), synchro);
    }
}

// --- Points -------------------------------------------------------------------------------------

double CutProcessor::scaledX(double x)
{
    if (xExpression.isEmpty()) {
        return x;
    }
    if (m_x.text() != xExpression) {
        m_x = CutExpression(xExpression);
    }
    return m_x.applied(x);
}

double CutProcessor::scaledY(double y)
{
    if (yExpression.isEmpty()) {
        return y;
    }
    if (m_y.text() != yExpression) {
        m_y = CutExpression(yExpression);
    }
    return m_y.applied(y);
}

QString CutProcessor::formatPoint(
    const QString &format, const QString &x, const QString &y, const QString &third)
{
    m_commands.clear();
    m_commands.appendFilled(
        format, scaledX(x.toDouble()), scaledY(y.toDouble()), {precision, 0}, &third);
    return m_commands.text().toString();
}

void CutProcessor::writePoint(const GeoPoint2D &point, const QString &format, bool wrap, int width)
{
    m_commands.clear();
    if (isNoPoint(point)) {
        // The letter in front of the coordinate goes with it: "G1 X%1 Y%2" leaves "G1 ".
        const int marker = format.indexOf(QLatin1Char('%'));
        m_commands.append(QStringView(format).left(marker > 0 ? marker - 1 : 0));
    } else {
        m_commands.appendFilled(format, scaledX(point.x), scaledY(point.y), {precision, width});
    }
    if (wrap) {
        m_commands.append(u"\r\n");
    }
    stream << m_commands.text();
}

void CutProcessor::exportPoint(const GeoPoint2D &point, const QString &format, bool wrap)
{
    writePoint(point, format, wrap, 0);
}

void CutProcessor::exportPoint(const GeoPoint2D &point, const QString &format, bool wrap,
    const QString &lift, const std::vector<int> &liftIndexes, int &pointIndex, int &liftIndex)
{
    m_commands.clear();
    const bool isNamed = liftIndex >= 0 && liftIndex < static_cast<int>(liftIndexes.size()) &&
                         pointIndex == liftIndexes[static_cast<std::size_t>(liftIndex)];
    if (isNamed) {
        m_commands.append(lift);
        ++liftIndex;
    }
    m_commands.appendFilled(format, scaledX(point.x), scaledY(point.y), {precision, 0});
    if (wrap) {
        m_commands.append(u"\r\n");
    }
    stream << m_commands.text();
    ++pointIndex;
}

void CutProcessor::exportPoints(const std::vector<GeoPoint2D> &points, const QString &first,
    const QString &second, const QString &rest, bool wrap)
{
    if (points.size() < 2 || isNoPoint(points.front())) {
        return;
    }
    exportPoint(points[0], first, wrap);
    exportPoint(points[1], second, wrap);
    for (std::size_t index = 2; index < points.size(); ++index) {
        exportPoint(points[index], rest, wrap);
    }
}

} // namespace NC
} // namespace KivSystem
