#include "FontTable.h"

#include "KivCore/Application.h"
#include "KivCore/Log.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMessageLogger>
#include <QtEndian>

namespace KivSystem {

const char *const kFontTableFile = "KIVFNT.TBL";

namespace {

constexpr int headerSize = 4;
constexpr int recordSize = 6; // of the index
constexpr int codeSize = 2;
constexpr int stepSize = 3;

constexpr double cmPerPoint = 0.03528;
constexpr double lineFactor = 1.2;

enum Command
{
    MoveCommand = 0,
    LineCommand = 1,
    CurveCommand = 2,
};

bool isHalfWidth(QChar c)
{
    return c.unicode() <= 0xFF;
}

QString seekFailed()
{
    return QCoreApplication::translate("QCoreApplication", "cannot seek font table file:");
}

QString readFailed()
{
    return QCoreApplication::translate("QCoreApplication", "cannot read font table file:");
}

QPointF pointAt(const QByteArray &data, int index)
{
    return {double(static_cast<signed char>(data.at(index))),
        double(static_cast<signed char>(data.at(index + 1)))};
}

QPointF sampleBezier(const QPointF &start, const QPointF &control, const QPointF &end, double t)
{
    Q_ASSERT(t >= 0 && t <= 1);
    const double u = 1 - t;
    return u * u * start + 2 * t * u * control + t * t * end;
}

// The step at `i` holds the control point. The ends of the curve are those of its neighbours,
// whatever their commands are; the start is on the line already.
bool appendCurve(const QByteArray &data, int i, QListEx<QPointF> &line)
{
    if (i >= data.size() - 5 || i < 2) {
        if (TextLineComposer<char> *logger = DefaultLogger(LogWarning)) {
            *logger << QCoreApplication::translate(
                "QCoreApplication", "invalid glyph data length, failed to parse bezier point");
        }
        return false;
    }
    const QPointF start = pointAt(data, i - 2);
    const QPointF control = pointAt(data, i + 1);
    const QPointF end = pointAt(data, i + 4);
    QMessageLogger().debug("Glyph data: %d. %f  %d.  %f", i + 1, control.x(), i + 2, control.y());
    for (double t = 0.1; t < 1.0; t += 0.1) {
        line.append(sampleBezier(start, control, end, t));
    }
    return true;
}

bool hasCurve(const QByteArray &glyph)
{
    constexpr char curve = 2;
    constexpr int bytesOfStep = 3;
    for (int i = 1; i < glyph.size(); i += bytesOfStep) {
        if (glyph.at(i) == curve) {
            return true;
        }
    }
    return false;
}

} // namespace

FontTable::FontTable(const QString &name) : fileName(name)
{
    open();
}

FontTable::~FontTable() = default;

void FontTable::open()
{
    if (file) {
        return;
    }
    QDir directory = KivApplication::instance()->pluginsDir();
    if (!directory.cd(QStringLiteral("io"))) {
        return;
    }
    file = std::make_unique<QFile>(directory.filePath(fileName));
    if (!file->open(QIODevice::ReadOnly)) {
        file.reset();
        logFailure(QCoreApplication::translate("QCoreApplication", "cannot open font table file:"));
    }
}

void FontTable::logFailure(const QString &message) const
{
    if (TextLineComposer<char> *logger = DefaultLogger(LogWarning)) {
        *logger << message << fileName;
    }
}

// --- Reading ------------------------------------------------------------------------------------

bool FontTable::rewind()
{
    if (file->reset()) {
        return true;
    }
    logFailure(
        QCoreApplication::translate("QCoreApplication", "cannot reset font table file pointer:"));
    return false;
}

bool FontTable::seek(qint64 position)
{
    // QFile would complain about a place in front of the file, in its own words.
    if (position >= 0 && file->seek(position)) {
        return true;
    }
    logFailure(seekFailed());
    return false;
}

bool FontTable::readBytes(char *bytes, qint64 size)
{
    return file->read(bytes, size) == size;
}

QByteArray FontTable::readGlyphData(unsigned short code)
{
    if (!file || !rewind()) {
        return {};
    }
    char bytes[4];
    if (!readBytes(bytes, headerSize)) {
        logFailure(QStringLiteral("can not read font table file:"));
        return {};
    }
    const qint64 count = qFromLittleEndian<qint32>(bytes);
    qint64 record = 0;
    if (!findGlyph(code, count, record) || !rewind() || !seek(record + codeSize)) {
        return {};
    }
    if (!readBytes(bytes, 4)) {
        logFailure(readFailed());
        return {};
    }
    const qint64 offset = qFromLittleEndian<qint32>(bytes);
    if (!seek(headerSize + count * recordSize + offset)) {
        return {};
    }
    if (!readBytes(bytes, 1)) {
        logFailure(readFailed());
        return {};
    }
    const auto steps = static_cast<signed char>(bytes[0]);
    return steps < 0 ? QByteArray() : file->read(steps * stepSize + 1);
}

// Searches the index. `low` and `high` are places of records; the first record, at which the search
// starts, is looked at last, since no halving of a span comes down to its lower end.
bool FontTable::findGlyph(unsigned short code, qint64 count, qint64 &found)
{
    qint64 low = headerSize;
    qint64 high = headerSize + (count - 1) * recordSize;
    qint64 span = count;
    while (low <= high) {
        const qint64 middle = low + span / 2 * recordSize;
        char bytes[codeSize];
        if (!seek(middle)) {
            return false;
        }
        if (!readBytes(bytes, codeSize)) {
            logFailure(seekFailed());
            return false;
        }
        const auto present = qFromLittleEndian<quint16>(bytes);
        if (present == code) {
            found = middle;
            return true;
        }
        if (present < code) {
            low = middle;
            if (span <= 1) {
                return false;
            }
        } else if (middle == low) {
            return false;
        } else {
            high = middle == high ? low : middle;
        }
        span = (high - low) / recordSize + 1;
    }
    return false;
}

// --- Strokes ------------------------------------------------------------------------------------

FontTable::Polylines FontTable::parseGlyphData(const QByteArray &data)
{
    Polylines polylines;
    if (data.size() < 1 + stepSize) {
        return polylines;
    }
    QListEx<QPointF> current;
    for (int i = 1; i < data.size() - 2; i += stepSize) {
        const char command = data.at(i);
        if (command == CurveCommand) {
            if (!appendCurve(data, i, current)) {
                break;
            }
        } else if (command == LineCommand) {
            current.append(pointAt(data, i + 1));
        } else if (command == MoveCommand) {
            if (!current.isEmpty()) {
                polylines.append(current);
                current.clear();
            }
            current.append(pointAt(data, i + 1));
        }
    }
    if (!current.isEmpty()) {
        polylines.append(current);
    }
    return polylines;
}

FontTable::Polylines FontTable::charToPolylines(QChar c, double height, double *advance)
{
    constexpr double em = 100;
    const bool isHalf = isHalfWidth(c);
    const QPointF middle(isHalf ? 75 : 50, 50);
    *advance = isHalf ? height * 0.5 : height;
    Polylines polylines = m_glyphs.value(c.unicode());
    if (polylines.isEmpty()) {
        const QByteArray data = readGlyphData(c.unicode());
        polylines = parseGlyphData(data);
        // What can fail as it is read or parsed is not kept: a failure is told each time.
        if (!hasCurve(data)) {
            m_glyphs.insert(c.unicode(), polylines);
        }
    }
    for (QListEx<QPointF> &polyline : polylines) {
        for (QPointF &point : polyline) {
            point = (point - middle) * height / em;
        }
    }
    return polylines;
}

double FontTable::charHeight(double fontSize)
{
    return fontSize * cmPerPoint * lineFactor;
}

double FontTable::charWidth(const QChar &c, double fontSize)
{
    return isHalfWidth(c) ? charHeight(fontSize) / 2 : charHeight(fontSize);
}

double FontTable::textLineWidth(const QString &text, double fontSize)
{
    double width = 0;
    for (const QChar c : text) {
        width += charWidth(c, fontSize);
    }
    return width;
}

} // namespace KivSystem
