#include "FileReaders.h"

#include "TextLines.h"

#include <QByteArray>
#include <QTextCodec>

#include <algorithm>

namespace KivSystem {

namespace {

constexpr int kMostCells = 4000000;
constexpr int kMostShownColumns = 10000;
constexpr int kShownRows = 100;
constexpr int kShownLetters = 40;

// As text, or a fault: a character that no report holds.
QString decoded(const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars != 0 || state.remainingChars != 0) {
        text = QString::fromLatin1(bytes.constData(), bytes.size()); // also behind a zero byte
    }
    int line = 1;
    for (const QChar &character : qAsConst(text)) {
        line += character == QLatin1Char('\n');
        const ushort code = character.unicode();
        const bool inReports = code == '\t' || code == '\n' || code == '\r' || code == 0x0b ||
                               code == 0x1d; // line break and separator inside of a field
        if ((code < 0x20 && !inReports) || (code >= 0x7f && code < 0xa0)) {
            throw ReadFault(QStringLiteral("line %1: the byte 0x%2 is no text")
                                .arg(line)
                                .arg(code, 2, 16, QLatin1Char('0')));
        }
    }
    return text;
}

// The most frequent of three in the first line: another may stand between repeated values of a
// field.
QChar separatorOf(const QString &text)
{
    // What stands between quotes separates nothing.
    bool isQuoted = false;
    QString found;
    for (const QChar &character : text) {
        if (character == QLatin1Char('\n') && !isQuoted) {
            break;
        }
        isQuoted = isQuoted != (character == QLatin1Char('"'));
        if (!isQuoted || character == QLatin1Char('\t')) {
            found += character;
        }
    }
    QChar separator;
    int most = 0;
    for (const char candidate : {'\t', ';', ','}) {
        const int count = found.count(QLatin1Char(candidate));
        if (count > most) {
            most = count;
            separator = QLatin1Char(candidate);
        }
    }
    return separator;
}

class TableReader
{
public:
    explicit TableReader(const QString &text) : m_text(text)
    {
        m_table.separator = separatorOf(text);
        // Beside tabs, and where there is one field, a quote is a letter like any other.
        m_quotes = !m_table.separator.isNull() && m_table.separator != QLatin1Char('\t');
    }

    TableFile read()
    {
        for (m_at = 0; m_at < m_text.size(); ++m_at) {
            take(m_text[m_at]);
        }
        if (m_quoted) {
            throw ReadFault(
                QStringLiteral("line %1: the quote that opens here is never closed").arg(m_opened));
        }
        if (!m_field.isEmpty() || !m_row.isEmpty()) {
            endRow();
        }
        return std::move(m_table);
    }

private:
    void take(QChar character)
    {
        m_line += character == QLatin1Char('\n');
        if (m_quoted) {
            if (character != QLatin1Char('"')) {
                m_field += character;
            } else if (m_at + 1 < m_text.size() && m_text[m_at + 1] == character) {
                m_field += character;
                ++m_at;
            } else {
                m_quoted = false;
            }
        } else if (m_quotes && m_field.isEmpty() && character == QLatin1Char('"')) {
            m_quoted = true;
            m_opened = m_line;
        } else if (!m_table.separator.isNull() && character == m_table.separator) {
            endField();
        } else if (character == QLatin1Char('\n')) {
            endRow();
        } else if (character != QLatin1Char('\r')) {
            m_field += character;
        }
    }

    void endField()
    {
        if (++m_cells > kMostCells) {
            throw ReadFault(QStringLiteral("line %1: there are more than %2 fields")
                                .arg(m_line)
                                .arg(kMostCells));
        }
        m_row.append(m_field);
        m_field.clear();
    }

    void endRow()
    {
        endField();
        m_table.columns = std::max(m_table.columns, m_row.size());
        m_table.rows.push_back(m_row);
        m_row.clear();
    }

    const QString m_text;
    TableFile m_table;
    QStringList m_row;
    QString m_field;
    int m_at = 0;
    int m_line = 1;
    int m_opened = 0;
    int m_cells = 0;
    bool m_quotes = false;
    bool m_quoted = false;
};

QString shown(const QString &field)
{
    QString text = field;
    text.replace(QLatin1Char('\x0b'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    text.replace(QLatin1Char('\x1d'), QStringLiteral(" | "));
    return text.size() > kShownLetters ? text.left(kShownLetters - 1) + QChar(0x2026) : text;
}

} // namespace

TableFile readTableFile(const QByteArray &bytes)
{
    const TableFile table = TableReader(decoded(bytes)).read();
    if (table.rows.empty()) {
        throw ReadFault(QStringLiteral("the file is empty"));
    }
    return table;
}

Picture pictureOf(const TableFile &table)
{
    constexpr double lineHeight = 0.6;
    constexpr double letter = 0.31; // width
    const int rows = std::min(static_cast<int>(table.rows.size()), kShownRows);
    std::vector<double> edges{0};
    for (int column = 0; column < std::min(table.columns, kMostShownColumns); ++column) {
        int longest = 2;
        for (int row = 0; row < rows; ++row) {
            longest = std::max(
                longest, shown(table.rows[static_cast<std::size_t>(row)].value(column)).size());
        }
        edges.push_back(edges.back() + letter * (longest + 2));
    }
    PictureLayer layer;
    const auto line = [&layer](double x1, double y1, double x2, double y2) {
        layer.strokes.push_back({StrokeKind::Frame, {{x1, y1}, {x2, y2}}, false, {}, {}});
    };
    for (int row = 0; row <= rows; ++row) {
        line(0, -row * lineHeight, edges.back(), -row * lineHeight);
    }
    for (const double edge : edges) {
        line(edge, 0, edge, -rows * lineHeight);
    }
    for (int row = 0; row < rows; ++row) {
        const QStringList &fields = table.rows[static_cast<std::size_t>(row)];
        for (int column = 0;
             column < fields.size() && static_cast<std::size_t>(column) + 1 < edges.size();
             ++column) {
            const auto at = static_cast<std::size_t>(column);
            layer.texts.push_back({{edges[at] + letter, -(row + 0.7) * lineHeight},
                shown(fields[column]), 0.36, 0, false, {}, edges[at + 1] - edges[at] - letter});
        }
    }
    Picture picture;
    picture.layers.push_back(std::move(layer));
    if (static_cast<int>(table.rows.size()) > rows) {
        picture.layers[0].texts.push_back({{letter, -(rows + 0.7) * lineHeight},
            QStringLiteral("... %1 more lines").arg(static_cast<int>(table.rows.size()) - rows),
            0.36, 0, false, {}, 0});
    }
    return picture;
}

} // namespace KivSystem
