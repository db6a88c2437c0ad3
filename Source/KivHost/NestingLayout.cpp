#include "Console.h"
#include "NestingFault.h"
#include "NestingFiles.h"

#include "KivGeo/Rectangle.h"

#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <optional>

namespace KivSystem {

namespace {

constexpr int kLongestAttribute = 10000; // of those that are looked into
constexpr int kDeepestElement = 1000;
constexpr char kItemPrefix[] = "item_";       // of the ids of items
constexpr double kHeightTolerance = 0.001;    // share of the strip's height
constexpr double kOutlineTolerance = 0.00001; // the same; layouts are written in single precision

struct Turn
{
    double x = 0;
    double y = 0;
    double rotation = 0; // degrees
};

// Numbers of a list with commas or blanks between; nothing when one of them is none.
std::optional<std::vector<double>> numbersIn(const QString &text)
{
    static const QRegularExpression separator(QStringLiteral("[\\s,]+"));
    std::vector<double> numbers;
    for (const QStringRef &word : text.splitRef(separator, Qt::SkipEmptyParts)) {
        bool isNumber = false;
        numbers.push_back(word.toDouble(&isNumber));
        if (!isNumber || !std::isfinite(numbers.back())) {
            return std::nullopt;
        }
    }
    return numbers;
}

void shift(Turn &turn, double dx, double dy)
{
    const GeoPoint2D way = GeoPoint2D(dx, dy).rotated(turn.rotation);
    turn.x += way.x;
    turn.y += way.y;
}

// Puts one function of the list inside those before it; false when it is neither a turn nor a
// shift.
bool addFunction(Turn &turn, const QString &name, const std::vector<double> &values)
{
    if (name == QLatin1String("translate") && (values.size() == 1 || values.size() == 2)) {
        shift(turn, values[0], values.size() == 2 ? values[1] : 0);
        return true;
    }
    if (name != QLatin1String("rotate") || (values.size() != 1 && values.size() != 3)) {
        return false;
    }
    const bool hasCentre = values.size() == 3;
    if (hasCentre) {
        shift(turn, values[1], values[2]);
    }
    turn.rotation = std::fmod(turn.rotation + values[0], 360);
    if (hasCentre) {
        shift(turn, -values[1], -values[2]);
    }
    return true;
}

// Transforms work from right to left: each function stands in the system of those before it.
std::optional<Turn> parseTransform(const QString &text)
{
    static const QRegularExpression function(
        QStringLiteral("\\G[\\s,]*([A-Za-z]+)\\s*\\(([^()]*)\\)[\\s,]*"));
    Turn turn;
    int end = 0;
    while (end < text.size()) {
        const QRegularExpressionMatch match = function.match(text, end);
        const auto values = match.hasMatch() ? numbersIn(match.captured(2)) : std::nullopt;
        if (!values || !addFunction(turn, match.captured(1), *values)) {
            return std::nullopt;
        }
        end = match.capturedEnd();
    }
    if (turn.rotation < 0) {
        turn.rotation += 360;
    }
    if (turn.rotation == 0 || turn.rotation >= 360) { // a negative zero, or a hair below it
        turn.rotation = 0;
    }
    return turn;
}

QString idOf(const QXmlStreamReader &xml)
{
    return xml.attributes().value(QLatin1String("id")).toString();
}

class LayoutReader
{
public:
    LayoutReader(const QString &path, double unit, const NestingInstance &instance)
        : m_fault(path)
        , m_unit(unit)
        , m_instance(instance)
        , m_file(path)
        , m_placed(instance.items.size(), 0)
    {
        for (std::size_t index = 0; index < instance.items.size(); ++index) {
            m_itemById.insert(QString::number(instance.items[index].id), static_cast<int>(index));
        }
    }

    NestingLayout read();

private:
    void startElement();
    void endElement();
    std::vector<GeoPoint2D> readPath() const;
    void readContainer();
    void checkOutline() const;
    void readUse();
    int itemOf(const QString &elementId) const;
    double toCentimetres(double value) const;

    QString attribute(const QLatin1String &name) const;
    [[noreturn]] void fail(const QString &what, const QString &expected) const;

    NestingFault m_fault;
    double m_unit;
    const NestingInstance &m_instance;
    QFile m_file;
    QXmlStreamReader m_xml;
    QHash<QString, int> m_itemById;
    std::vector<int> m_placed; // pieces so far, by item
    NestingLayout m_layout;

    // Depths of the open elements that matter, 0 for none.
    int m_depth = 0;
    int m_container = 0;
    int m_items = 0;
    int m_definitions = 0;
    int m_transformed = 0;
    int m_outline = 0; // of an item, in the definitions
    int m_outlineItem = 0;
    bool m_hasContainer = false;
    bool m_hasItems = false;
};

NestingLayout LayoutReader::read()
{
    m_fault.open(m_file);
    m_xml.setDevice(&m_file);
    while (!m_xml.atEnd()) {
        const QXmlStreamReader::TokenType token = m_xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            startElement();
        } else if (token == QXmlStreamReader::EndElement) {
            endElement();
        }
    }
    if (m_xml.hasError()) {
        QString what = m_xml.errorString().simplified();
        while (what.endsWith(QLatin1Char('.'))) {
            what.chop(1);
        }
        m_fault.fail(QStringLiteral("line %1").arg(m_xml.lineNumber()), what,
            QStringLiteral("a layout in SVG"));
    }
    if (!m_hasContainer) {
        m_fault.fail(QStringLiteral("<g id=\"container_0\">"), QStringLiteral("it is missing"),
            QStringLiteral("it or \"bin_0\" with the strip's outline"));
    }
    if (!m_hasItems) {
        m_fault.fail(QStringLiteral("<g id=\"items\">"), QStringLiteral("it is missing"),
            QStringLiteral("it with the placed pieces"));
    }
    return m_layout;
}

void LayoutReader::startElement()
{
    if (++m_depth > kDeepestElement) {
        fail(QStringLiteral("the elements are nested too deeply"),
            QStringLiteral("no more than %1 of them").arg(kDeepestElement));
    }
    const QStringRef name = m_xml.name();
    const QString transform = attribute(QLatin1String("transform"));
    if (name == QLatin1String("use")) {
        if (m_items != 0 && m_definitions == 0) {
            readUse();
        }
        return;
    }
    if (m_transformed == 0 && !transform.isEmpty()) {
        const auto turn = parseTransform(transform);
        const bool isIdentity = turn && turn->x == 0 && turn->y == 0 && turn->rotation == 0;
        m_transformed = isIdentity ? 0 : m_depth;
    }
    if (name == QLatin1String("defs") && m_definitions == 0) {
        m_definitions = m_depth;
    } else if (name == QLatin1String("path") && m_container != 0 && !m_hasContainer) {
        readContainer();
    } else if (name == QLatin1String("path") && m_outline != 0) {
        checkOutline();
    } else if (name == QLatin1String("g")) {
        const QString id = idOf(m_xml);
        if (m_items != 0 && m_definitions != 0 && id.startsWith(QLatin1String(kItemPrefix))) {
            m_outline = m_depth;
            m_outlineItem = itemOf(id);
            return;
        }
        if (id == QLatin1String("items") && m_items == 0) {
            m_items = m_depth;
            m_hasItems = true;
        } else if (id == QLatin1String("container_0") || id == QLatin1String("bin_0")) {
            m_container = m_depth;
        }
    }
}

void LayoutReader::endElement()
{
    for (int *depth : {&m_container, &m_items, &m_definitions, &m_transformed, &m_outline}) {
        if (*depth == m_depth) {
            *depth = 0;
        }
    }
    --m_depth;
}

// The points of a <path> of straight lines.
std::vector<GeoPoint2D> LayoutReader::readPath() const
{
    static const QRegularExpression commands(QStringLiteral("[MLz]"));
    const auto numbers =
        numbersIn(attribute(QLatin1String("d")).replace(commands, QStringLiteral(" ")));
    if (!numbers || numbers->size() < 6 || numbers->size() % 2 != 0) {
        fail(QStringLiteral("found another outline"), QStringLiteral("M, L and z with points"));
    }
    std::vector<GeoPoint2D> points;
    for (std::size_t index = 0; index < numbers->size(); index += 2) {
        points.emplace_back(toCentimetres((*numbers)[index]), toCentimetres((*numbers)[index + 1]));
    }
    return points;
}

// A layout of another instance may use the same numbers for its items.
void LayoutReader::checkOutline() const
{
    const NestingItem &item = m_instance.items[static_cast<std::size_t>(m_outlineItem)];
    const double tolerance = kOutlineTolerance * m_instance.height;
    const std::vector<GeoPoint2D> points = readPath();
    if (!std::equal(points.begin(), points.end(), item.outline.begin(), item.outline.end(),
            [tolerance](const GeoPoint2D &left, const GeoPoint2D &right) {
                return left.equals(right, tolerance);
            })) {
        fail(QStringLiteral("found another outline for item %1").arg(item.id),
            QStringLiteral("that of the instance"));
    }
}

void LayoutReader::readContainer()
{
    GeoRectangle strip;
    for (const GeoPoint2D &point : readPath()) {
        strip.setRect(std::min(strip.left(), point.x), std::max(strip.right(), point.x),
            std::min(strip.bottom(), point.y), std::max(strip.top(), point.y));
    }
    const double tolerance = kHeightTolerance * m_instance.height;
    if (strip.left() < 0 || strip.bottom() < 0 ||
        !(std::abs(strip.top() - m_instance.height) <= tolerance)) {
        fail(QStringLiteral("the strip reaches from %1 to %2")
                 .arg(strip.bottom() / m_unit)
                 .arg(strip.top() / m_unit),
            QStringLiteral("0 to %1, the height of the instance").arg(m_instance.height / m_unit));
    }
    m_layout.length = strip.right();
    m_hasContainer = true;
}

void LayoutReader::readUse()
{
    const QXmlStreamAttributes attributes = m_xml.attributes();
    const QString xlink = QStringLiteral("http://www.w3.org/1999/xlink");
    const QString reference = attributes.hasAttribute(QLatin1String("href"))
                                  ? attributes.value(QLatin1String("href")).toString()
                                  : attributes.value(xlink, QStringLiteral("href")).toString();
    const QString id = reference.mid(1);
    if (!reference.startsWith(QLatin1Char('#')) || !id.startsWith(QLatin1String(kItemPrefix))) {
        return; // a drawing aid
    }
    const int item = itemOf(id);
    if (m_transformed != 0) {
        fail(QStringLiteral("it lies in a group with a transform"),
            QStringLiteral("transforms on <use> alone"));
    }
    const auto turn = parseTransform(attribute(QLatin1String("transform")));
    const bool isShifted =
        attributes.hasAttribute(QLatin1String("x")) || attributes.hasAttribute(QLatin1String("y"));
    if (!turn || isShifted) {
        fail(QStringLiteral("the transform is not understood"),
            QStringLiteral("translate(x, y) and rotate(degrees)"));
    }
    const int demand = m_instance.items[static_cast<std::size_t>(item)].demand;
    if (++m_placed[static_cast<std::size_t>(item)] > demand) {
        fail(QStringLiteral("found piece %1 of item %2")
                 .arg(m_placed[static_cast<std::size_t>(item)])
                 .arg(m_instance.items[static_cast<std::size_t>(item)].id),
            QStringLiteral("no more than its demand of %1").arg(demand));
    }
    m_layout.places.push_back(
        {item, toCentimetres(turn->x), toCentimetres(turn->y), turn->rotation});
}

int LayoutReader::itemOf(const QString &elementId) const
{
    const QString id = elementId.mid(static_cast<int>(qstrlen(kItemPrefix)));
    const auto item = m_itemById.constFind(id);
    if (item == m_itemById.constEnd()) {
        fail(QStringLiteral("found item \"%1\"").arg(id.left(40)),
            QStringLiteral("an item of the instance"));
    }
    return *item;
}

double LayoutReader::toCentimetres(double value) const
{
    if (!(std::abs(value * m_unit) <= kLargestCoordinate)) {
        fail(QStringLiteral("found %1").arg(value),
            QStringLiteral("a number that stands for no more than %1 cm").arg(kLargestCoordinate));
    }
    return value * m_unit + 0.0; // never the negative zero
}

QString LayoutReader::attribute(const QLatin1String &name) const
{
    // What is looked into is short; only drawing aids are long, and nobody understands them.
    const QStringRef value = m_xml.attributes().value(name);
    return value.size() > kLongestAttribute ? QStringLiteral("?") : value.toString();
}

void LayoutReader::fail(const QString &what, const QString &expected) const
{
    m_fault.fail(
        QStringLiteral("line %1: <%2>").arg(m_xml.lineNumber()).arg(m_xml.name().toString()), what,
        expected);
}

} // namespace

NestingLayout readNestingLayout(const QString &path, double unit, const NestingInstance &instance)
{
    return LayoutReader(path, unit, instance).read();
}

} // namespace KivSystem
