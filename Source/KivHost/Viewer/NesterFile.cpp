#include "FileReaders.h"

#include "TextLines.h"

#include <QByteArray>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr std::size_t kMostBlocks = 100000;
constexpr int kMostPoints = 3000000;

// Reals follow the locale of the program that wrote them: 1,234.5000 or 1.234,5000. The last sign
// that is no digit is the decimal one.
double realOf(QString text, bool *isReal)
{
    text = text.trimmed();
    int decimal = -1;
    for (int i = 1; i < text.size(); ++i) {
        if (!text[i].isDigit()) {
            decimal = i;
        }
    }
    if (decimal >= 0 && (text[decimal] == QLatin1Char(',') || text[decimal].unicode() > 127)) {
        text[decimal] = QLatin1Char('.');
    }
    for (int i = decimal - 1; i > 0; --i) {
        if (!text[i].isDigit() && text[i].toLower() != QLatin1Char('e')) {
            text.remove(i, 1);
        }
    }
    return text.toDouble(isReal);
}

class NesterReader
{
public:
    explicit NesterReader(const QByteArray &bytes) : m_lines(bytes) {}

    NesterFile read()
    {
        while (!m_ended && nextGroup()) {
            if (m_code == 0) {
                finishEntity();
                startEntity();
            } else {
                readGroup();
            }
        }
        if (!m_ended) {
            m_lines.fail(QStringLiteral("the file ends without EOF, a part of it is missing"));
        }
        m_lines.requireEnd();
        countInstances();
        return std::move(m_file);
    }

private:
    struct Insert
    {
        QString name;
        int line = 0; // of the name, or of the entity that has none
    };

    // The blocks need not stand in front of their inserts.
    void countInstances()
    {
        for (const Insert &insert : m_inserts) {
            const auto block = m_byName.constFind(insert.name);
            if (block == m_byName.cend()) {
                TextLines::failAt(insert.line,
                    QStringLiteral("the block \"%1\" is inserted, but there is none of that name")
                        .arg(quoted(insert.name.toUtf8())));
            }
            ++m_file.blocks[*block].instances;
        }
    }

    // A group is a line with its code and one with its value.
    bool nextGroup()
    {
        if (!m_lines.next()) {
            return false;
        }
        bool isCode = false;
        m_code = m_lines.line().trimmed().toInt(&isCode);
        if (!isCode || m_code < 0 || m_code > 9999) {
            m_lines.fail(QStringLiteral("\"%1\" is no group code").arg(quoted(m_lines.line())));
        }
        if (!m_lines.next()) {
            m_lines.fail(QStringLiteral("the group has no value"));
        }
        m_value = QString::fromUtf8(m_lines.line());
        return true;
    }

    void startEntity()
    {
        m_entity = m_value.trimmed();
        m_name.clear();
        m_nameLine = m_lines.number();
        m_x = 0;
        m_y = 0;
        m_text.clear();
        if (m_entity == QLatin1String("EOF")) {
            m_ended = true;
        } else if (m_entity == QLatin1String("BLOCK")) {
            if (m_file.blocks.size() >= kMostBlocks) {
                m_lines.fail(QStringLiteral("there are more than %1 blocks").arg(kMostBlocks));
            }
            m_file.blocks.emplace_back();
            m_inBlock = true;
        } else if (m_entity == QLatin1String("ENDBLK")) {
            m_inBlock = false;
        } else if (m_entity == QLatin1String("POLYLINE") && m_inBlock) {
            m_file.blocks.back().lines.emplace_back();
            m_inLine = true;
        } else if (m_entity == QLatin1String("SEQEND")) {
            m_inLine = false;
        }
    }

    void readGroup()
    {
        const bool isVertex = m_entity == QLatin1String("VERTEX"); // others may lie anywhere
        if (m_code == 10 && isVertex) {
            m_x = real();
        } else if (m_code == 20 && isVertex) {
            m_y = real();
        } else if (m_code == 2) {
            m_name = m_value;
            m_nameLine = m_lines.number();
        } else if (m_code == 1) {
            m_text = m_value;
        } else if (m_code == 70 && m_entity == QLatin1String("POLYLINE") && m_inLine) {
            m_file.blocks.back().lines.back().closed = (m_value.trimmed().toInt() & 1) != 0;
        }
    }

    double real() const
    {
        bool isReal = false;
        const double value = realOf(m_value, &isReal);
        if (!isReal || !(std::abs(value) < 1e9)) {
            m_lines.fail(QStringLiteral("\"%1\" is no coordinate").arg(quoted(m_lines.line())));
        }
        return value;
    }

    // All groups of the entity have been read.
    void finishEntity()
    {
        if (m_entity == QLatin1String("BLOCK")) {
            m_file.blocks.back().name = m_name;
            m_byName.insert(m_name, m_file.blocks.size() - 1);
        } else if (m_entity == QLatin1String("VERTEX") && m_inBlock && m_inLine) {
            if (++m_points > kMostPoints) {
                m_lines.fail(QStringLiteral("there are more than %1 points").arg(kMostPoints));
            }
            m_file.blocks.back().lines.back().points.append(QPointF(m_x, m_y));
        } else if (m_entity == QLatin1String("TEXT")) {
            (m_inBlock ? m_file.blocks.back().keywords : m_file.keywords).append(m_text);
        } else if (m_entity == QLatin1String("INSERT") && !m_inBlock) {
            m_inserts.push_back({m_name, m_nameLine});
        }
    }

    TextLines m_lines;
    NesterFile m_file;
    QHash<QString, std::size_t> m_byName;
    std::vector<Insert> m_inserts;
    int m_code = 0;
    QString m_value;
    QString m_entity;
    QString m_name;
    int m_nameLine = 0;
    QString m_text;
    double m_x = 0;
    double m_y = 0;
    int m_points = 0;
    bool m_inBlock = false;
    bool m_inLine = false;
    bool m_ended = false;
};

QRectF boundsOf(const NesterBlock &block)
{
    Picture picture;
    picture.layers.resize(1);
    for (const NesterPolyline &line : block.lines) {
        picture.layers[0].strokes.push_back({StrokeKind::Cut, line.points, line.closed, {}, {}});
    }
    return picture.bounds();
}

QString keyword(const NesterBlock &block, const char *key)
{
    const QString start = QLatin1String(key) + QLatin1Char(':');
    for (const QString &text : block.keywords) {
        if (text.startsWith(start)) {
            return text.mid(start.size());
        }
    }
    return {};
}

// What stands under a block: its name, and the size and number of pieces to be placed.
QString captionOf(const NesterBlock &block)
{
    const QString size = keyword(block, "SIZE");
    return QStringLiteral("%1%2  x%3")
        .arg(block.name, size.isEmpty() ? QString() : QStringLiteral("  (size %1)").arg(size))
        .arg(block.instances);
}

// Of a marker with nothing left to place.
Picture keywordPicture(const NesterFile &file)
{
    PictureLayer layer;
    for (int i = 0; i < file.keywords.size(); ++i) {
        layer.texts.push_back({{0, -1.6 * i}, file.keywords[i], 1, 0, false, {}, 0});
    }
    return {{layer}};
}

} // namespace

NesterFile readNesterFile(const QByteArray &bytes)
{
    NesterFile file = NesterReader(bytes).read();
    if (file.blocks.empty() && file.keywords.isEmpty()) {
        throw ReadFault(QStringLiteral("there are neither blocks nor keywords in the file"));
    }
    return file;
}

Picture pictureOf(const NesterFile &file)
{
    std::vector<QRectF> bounds;
    double area = 0;
    double widest = 0;
    double highest = 0;
    for (const NesterBlock &block : file.blocks) {
        bounds.push_back(boundsOf(block));
        widest = std::max(widest, bounds.back().width());
        highest = std::max(highest, bounds.back().height());
        area += bounds.back().width() * bounds.back().height();
    }
    if (file.blocks.empty()) {
        return keywordPicture(file);
    }
    // Rows half as long again as all of them are high. Captions keep their size in all blocks.
    const double letters = std::max(std::sqrt(area) / 60, highest / 40);
    const double space = 3 * letters;
    const double rowLength = std::max(widest, 1.5 * std::sqrt(area));
    Picture picture;
    double x = 0;
    double y = 0;
    double rowHeight = 0;
    for (std::size_t i = 0; i < file.blocks.size(); ++i) {
        const NesterBlock &block = file.blocks[i];
        const QRectF &box = bounds[i];
        if (x > 0 && x + box.width() > rowLength) {
            y -= rowHeight + 2 * space;
            x = 0;
            rowHeight = 0;
        }
        PictureLayer layer;
        layer.name = block.name;
        const QPointF shift(x - box.left(), y - box.bottom()); // bottom() is the largest y
        for (const NesterPolyline &line : block.lines) {
            const QColor fill = line.closed ? QColor(0xe8, 0xee, 0xf6) : QColor();
            layer.strokes.push_back(
                {StrokeKind::Cut, line.points.translated(shift), line.closed, {}, fill});
        }
        layer.texts.push_back({{x, y - box.height() - 1.5 * letters}, captionOf(block), letters, 0,
            false, {}, std::max(box.width(), 8 * letters)});
        picture.layers.push_back(std::move(layer));
        x += std::max(box.width(), 8 * letters) + space;
        rowHeight = std::max(rowHeight, box.height());
    }
    return picture;
}

} // namespace KivSystem
