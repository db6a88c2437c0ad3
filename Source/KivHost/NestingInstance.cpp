#include "Console.h"
#include "NestingFault.h"
#include "NestingFiles.h"

#include "KivGeo/Polygon2D.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr int kLongestName = 10000;
constexpr double kSmallestArea = 1e-6; // square cm

QString found(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("found null");
    case QJsonValue::Bool:
        return QStringLiteral("found %1").arg(value.toBool() ? "true" : "false");
    case QJsonValue::Double:
        return QStringLiteral("found %1").arg(value.toDouble());
    case QJsonValue::String:
        return QStringLiteral("found a text");
    case QJsonValue::Array:
        return QStringLiteral("found an array");
    case QJsonValue::Object:
        return QStringLiteral("found an object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("it is missing");
}

class InstanceReader
{
public:
    InstanceReader(const QString &path, double unit) : m_fault(path), m_unit(unit), m_path(path) {}

    NestingInstance read() const;

private:
    QJsonObject readRoot() const;
    NestingItem readItem(const QString &place, const QJsonValue &value) const;
    void readOrientations(const QString &place, const QJsonValue &value, NestingItem &item) const;
    std::vector<GeoPoint2D> readOutline(const QString &place, const QJsonValue &shape) const;
    GeoPoint2D readPoint(const QString &place, const QJsonValue &value) const;

    double readLength(const QString &place, const QJsonValue &value) const;
    int readCount(const QString &place, const QJsonValue &value) const;
    QJsonArray readArray(
        const QString &place, const QJsonValue &value, int atLeast, const QString &expected) const;

    NestingFault m_fault;
    double m_unit;
    QString m_path;
};

NestingInstance InstanceReader::read() const
{
    const QJsonObject root = readRoot();
    NestingInstance instance;
    const QJsonValue name = root[QStringLiteral("name")];
    instance.name = name.toString();
    if (instance.name.isEmpty() || instance.name.size() > kLongestName) {
        m_fault.fail(QStringLiteral("$.name"),
            name.isString() ? QStringLiteral("found %1 characters").arg(instance.name.size())
                            : found(name),
            QStringLiteral("a text of 1 to %1 characters").arg(kLongestName));
    }
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (std::any_of(instance.name.begin(), instance.name.end(), isControl) ||
        !instance.name.isValidUtf16()) {
        m_fault.fail(QStringLiteral("$.name"), QStringLiteral("found control characters"),
            QStringLiteral("a text on one line"));
    }
    const QString heightPlace = QStringLiteral("$.strip_height");
    instance.height = readLength(heightPlace, root[QStringLiteral("strip_height")]);
    if (instance.height <= 0) {
        m_fault.fail(heightPlace, found(root[QStringLiteral("strip_height")]),
            QStringLiteral("a height above 0"));
    }

    const QJsonArray items = readArray(QStringLiteral("$.items"), root[QStringLiteral("items")], 1,
        QStringLiteral("an array of 1 to %1 items").arg(kLargestCount));
    QSet<int> ids;
    int pieces = 0;
    for (int index = 0; index < items.size(); ++index) {
        const QString place = QStringLiteral("$.items[%1]").arg(index);
        instance.items.push_back(readItem(place, items[index]));
        const NestingItem &item = instance.items.back();
        if (ids.contains(item.id)) {
            m_fault.fail(place + QStringLiteral(".id"),
                QStringLiteral("found a second item %1").arg(item.id),
                QStringLiteral("each id once"));
        }
        ids.insert(item.id);
        pieces += item.demand;
        if (pieces > kLargestCount) {
            m_fault.fail(place + QStringLiteral(".demand"),
                QStringLiteral("all demands so far come to %1").arg(pieces),
                QStringLiteral("no more than %1 pieces in all").arg(kLargestCount));
        }
    }
    return instance;
}

QJsonObject InstanceReader::readRoot() const
{
    QFile file(m_path);
    m_fault.open(file);
    const QByteArray bytes = file.readAll(); // the size was checked
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        const int line = bytes.left(error.offset).count('\n') + 1;
        m_fault.fail(QStringLiteral("line %1").arg(line), error.errorString(),
            QStringLiteral("a nesting instance in JSON"));
    }
    if (!document.isObject()) {
        m_fault.fail(QStringLiteral("$"), QStringLiteral("found an array"),
            QStringLiteral("an object with name, strip_height and items"));
    }
    return document.object();
}

NestingItem InstanceReader::readItem(const QString &place, const QJsonValue &value) const
{
    if (!value.isObject()) {
        m_fault.fail(place, found(value), QStringLiteral("an object"));
    }
    const QJsonObject object = value.toObject();
    NestingItem item;
    item.id = readCount(place + QStringLiteral(".id"), object[QStringLiteral("id")]);
    item.demand = readCount(place + QStringLiteral(".demand"), object[QStringLiteral("demand")]);
    readOrientations(place + QStringLiteral(".allowed_orientations"),
        object[QStringLiteral("allowed_orientations")], item);
    item.outline = readOutline(place + QStringLiteral(".shape"), object[QStringLiteral("shape")]);
    return item;
}

// A marker's turning rule is one step from 0 on, so that the angles must be its multiples.
void InstanceReader::readOrientations(
    const QString &place, const QJsonValue &value, NestingItem &item) const
{
    if (value.isUndefined()) {
        item.turnsFreely = true;
        return;
    }
    const QJsonArray list =
        readArray(place, value, 1, QStringLiteral("an array of at least one angle in degrees"));
    std::vector<int> angles;
    for (int index = 0; index < list.size(); ++index) {
        const double angle = list[index].toDouble(std::nan(""));
        if (!(std::abs(angle) <= 360) || angle != std::floor(angle)) {
            m_fault.fail(QStringLiteral("%1[%2]").arg(place).arg(index), found(list[index]),
                QStringLiteral("whole degrees from -360 to 360"));
        }
        angles.push_back((static_cast<int>(angle) + 360) % 360);
    }
    std::sort(angles.begin(), angles.end());
    angles.erase(std::unique(angles.begin(), angles.end()), angles.end());
    const int count = static_cast<int>(angles.size());
    for (int index = 0; index < count; ++index) {
        if (angles[static_cast<std::size_t>(index)] * count != 360 * index) {
            m_fault.fail(place, QStringLiteral("the angles are not evenly spaced from 0 on"),
                QStringLiteral("such as 0, 180 or 0, 90, 180, 270"));
        }
    }
    item.rotationStep = static_cast<short>(count > 1 ? 360 / count : 0);
}

std::vector<GeoPoint2D> InstanceReader::readOutline(
    const QString &place, const QJsonValue &shape) const
{
    const QJsonValue type = shape.toObject()[QStringLiteral("type")];
    if (type.toString() != QLatin1String("simple_polygon")) {
        m_fault.fail(place + QStringLiteral(".type"),
            type.isString() ? QStringLiteral("found another one") : found(type),
            QStringLiteral("\"simple_polygon\""));
    }
    const QString dataPlace = place + QStringLiteral(".data");
    const QJsonArray data = readArray(dataPlace, shape.toObject()[QStringLiteral("data")], 3,
        QStringLiteral("an array of 3 to %1 points").arg(kLargestCount));
    std::vector<GeoPoint2D> outline;
    outline.reserve(static_cast<std::size_t>(data.size()));
    for (int index = 0; index < data.size(); ++index) {
        outline.push_back(
            readPoint(QStringLiteral("%1[%2]").arg(dataPlace).arg(index), data[index]));
    }
    while (outline.size() > 1 && outline.front().equals(outline.back(), 0)) { // repeats the first
        outline.pop_back();
    }
    const double area = GeoPolygon2D<GeoPoint2D>(outline).area();
    if (outline.size() < 3 || !(area > kSmallestArea)) {
        m_fault.fail(dataPlace, QStringLiteral("the outline encloses no area"),
            QStringLiteral("at least three points around one"));
    }
    return outline;
}

GeoPoint2D InstanceReader::readPoint(const QString &place, const QJsonValue &value) const
{
    const QJsonArray pair = value.toArray();
    if (pair.size() != 2) {
        m_fault.fail(place,
            value.isArray() ? QStringLiteral("found %1 numbers").arg(pair.size()) : found(value),
            QStringLiteral("a point [x, y]"));
    }
    return {readLength(place + QStringLiteral("[0]"), pair[0]),
        readLength(place + QStringLiteral("[1]"), pair[1])};
}

double InstanceReader::readLength(const QString &place, const QJsonValue &value) const
{
    const double length = value.toDouble(std::nan("")) * m_unit;
    if (!(std::abs(length) <= kLargestCoordinate)) {
        m_fault.fail(place, found(value),
            QStringLiteral("a number that stands for no more than %1 cm").arg(kLargestCoordinate));
    }
    return length + 0.0; // never the negative zero
}

int InstanceReader::readCount(const QString &place, const QJsonValue &value) const
{
    const double count = value.toDouble(-1);
    if (!(count >= 0 && count <= kLargestCount) || count != std::floor(count)) {
        m_fault.fail(
            place, found(value), QStringLiteral("a whole number from 0 to %1").arg(kLargestCount));
    }
    return static_cast<int>(count);
}

QJsonArray InstanceReader::readArray(
    const QString &place, const QJsonValue &value, int atLeast, const QString &expected) const
{
    QJsonArray array = value.toArray();
    if (array.size() < atLeast || array.size() > kLargestCount) {
        m_fault.fail(place,
            value.isArray() ? QStringLiteral("found %1 entries").arg(array.size()) : found(value),
            expected);
    }
    return array;
}

} // namespace

void NestingFault::fail(const QString &place, const QString &what, const QString &expected) const
{
    throw HostError(ExitUnreadable,
        QStringLiteral("%1: %2: %3, expected %4").arg(m_path, place, what, expected));
}

void NestingFault::open(QFile &file) const
{
    requireReadableFile(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw HostError(ExitUnreadable,
            QStringLiteral("%1: cannot be read: %2").arg(m_path, file.errorString()));
    }
    if (file.size() > kLargestNestingFile) {
        fail(QStringLiteral("file"), QStringLiteral("found %1 bytes").arg(file.size()),
            QStringLiteral("no more than %1").arg(kLargestNestingFile));
    }
}

NestingInstance readNestingInstance(const QString &path, double unit)
{
    return InstanceReader(path, unit).read();
}

} // namespace KivSystem
