#include "FileReaders.h"

#include "TextLines.h"

#include <QByteArray>
#include <QTextCodec>

#include <algorithm>
#include <array>
#include <limits>

namespace KivSystem {

namespace {

constexpr int kMostCells = 4000000;
constexpr int kMostShownColumns = 10000;
constexpr int kShownRows = 100;
constexpr int kShownLetters = 40;

// For finding out what separates the fields of a table.
constexpr int kTriedRows = 50;
constexpr int kTriedLetters = 100000;
// Beside the tab; others are too often parts of a text, of a date or of a time.
const std::array<const char *, 8> kSeparators{";", ",", "|", "~", "^", "#", "\x1f", "\x1e"};

// Line ends of all kinds become line feeds.
QString decoded(const QByteArray &bytes, bool *isSingleByte)
{
    QTextCodec::ConverterState state;
    QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    *isSingleByte = state.invalidChars != 0 || state.remainingChars != 0;
    if (*isSingleByte) {
        text = QTextCodec::codecForName("Windows-1252")->toUnicode(bytes);
    }
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

// Throws for a character that no report holds.
void requireText(const QString &text)
{
    int line = 1;
    for (const QChar &character : qAsConst(text)) {
        line += character == QLatin1Char('\n');
        const ushort code = character.unicode();
        const bool inReports = code == '\t' || code == '\n' ||
                               code == 0x0b ||                 // a field's line break
                               (code >= 0x1c && code <= 0x1f); // separators
        if ((code < 0x20 && !inReports) || (code >= 0x7f && code < 0xa0)) {
            throw ReadFault(QStringLiteral("line %1: the byte 0x%2 is no text")
                                .arg(line)
                                .arg(code, 2, 16, QLatin1Char('0')));
        }
    }
}

class TableReader
{
public:
    TableReader(const QString &text, const QString &separator) : m_text(text)
    {
        m_table.separator = separator;
        // Beside tabs, and where there is one field, a quote is a letter like any other.
        m_quotes = !separator.isEmpty() && separator != QLatin1String("\t");
    }

    TableFile read(std::size_t mostRows = std::numeric_limits<std::size_t>::max())
    {
        for (m_at = 0; m_at < m_text.size() && m_table.rows.size() < mostRows; ++m_at) {
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
        } else if (isSeparator(character)) {
            m_at += m_table.separator.size() - 1;
            endField();
        } else if (character == QLatin1Char('\n')) {
            endRow();
        } else {
            m_field += character;
        }
    }

    bool isSeparator(QChar character) const
    {
        const QString &separator = m_table.separator;
        return !separator.isEmpty() && character == separator[0] &&
               m_text.midRef(m_at, separator.size()) == separator;
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

// How many fields all rows of the text have; 0 when they differ, or have one each.
int evenColumns(const QString &text, const QString &separator)
{
    try {
        const TableFile table = TableReader(text, separator).read(kTriedRows);
        const bool isEven = std::all_of(table.rows.begin(), table.rows.end(), [&](const auto &row) {
            return row.size() == table.columns || row == QStringList(QString()); // a blank line
        });
        return isEven && table.columns > 1 ? table.columns : 0;
    } catch (const ReadFault &) { // a quote that is none beside this separator
        return 0;
    }
}

// The candidate for which `count` gives most, the first one of equals; empty when all give 0.
template <class Count>
QString separatorWithMost(Count count)
{
    QString found;
    int most = 0;
    for (const char *separator : kSeparators) {
        const int value = count(QLatin1String(separator));
        if (value > most) {
            most = value;
            found = QLatin1String(separator);
        }
    }
    return found;
}

QString doubledWhereAllAre(const QString &separator, const QString &text)
{
    const QString doubled = separator + separator;
    const bool areAll = !QString(text).remove(doubled).contains(separator);
    return areAll && evenColumns(text, doubled) > 0 ? doubled : separator;
}

// What stands between quotes separates nothing.
QString firstLineOutsideOfQuotes(const QString &text)
{
    bool isQuoted = false;
    QString found;
    for (const QChar &character : text) {
        if (character == QLatin1Char('\n') && !isQuoted) {
            break;
        }
        isQuoted = isQuoted != (character == QLatin1Char('"'));
        if (!isQuoted) {
            found += character;
        }
    }
    return found;
}

// A tab stands in a text of its own so seldom that it outweighs the others.
QString separatorOf(const QString &whole, const QString &usual)
{
    QString text = whole.left(kTriedLetters);
    if (text.size() < whole.size() && text.contains(QLatin1Char('\n'))) {
        text.truncate(text.lastIndexOf(QLatin1Char('\n')) + 1);
    }
    const QString tab = QStringLiteral("\t");
    const bool hasTab = text.section(QLatin1Char('\n'), 0, 0).contains(tab);
    if (evenColumns(text, usual) > (hasTab ? evenColumns(text, tab) : 0)) {
        return usual;
    }
    if (hasTab) {
        return tab;
    }
    const QString even = separatorWithMost(
        [&text](const QString &separator) { return evenColumns(text, separator); });
    if (!even.isEmpty()) {
        return doubledWhereAllAre(even, text);
    }
    // Rows may be of different lengths: the export leaves some unfinished.
    const QString line = firstLineOutsideOfQuotes(text);
    return line.contains(usual) ? usual : separatorWithMost([&line](const QString &separator) {
        return line.count(separator);
    });
}

QString shown(const QString &field)
{
    QString text = field;
    text.replace(QLatin1Char('\x0b'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    text.replace(QLatin1Char('\x1d'), QStringLiteral(" | "));
    return text.size() > kShownLetters ? text.left(kShownLetters - 1) + QChar(0x2026) : text;
}

// A guess must not keep the file from being read.
TableFile readWithAnySeparator(const QString &text, const QString &usual)
{
    try {
        return TableReader(text, separatorOf(text, usual)).read();
    } catch (const ReadFault &fault) {
        TableFile table = TableReader(text, QString()).read();
        table.doubt = QString::fromUtf8(fault.what());
        return table;
    }
}

} // namespace

TableFile readTableFile(const QByteArray &bytes, const TableForm &form)
{
    bool isSingleByte = false;
    const QString text = decoded(bytes, &isSingleByte);
    if (text.isEmpty()) {
        throw ReadFault(QStringLiteral("the file is empty"));
    }
    requireText(text);
    TableFile table = form.separator ? TableReader(text, *form.separator).read()
                                     : readWithAnySeparator(text, form.usual);
    table.isSingleByte = isSingleByte;
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
    for (std::size_t column = 0; column + 1 < edges.size(); ++column) { // numbers of the columns
        layer.texts.push_back({{edges[column] + letter, 0.3 * lineHeight}, QString::number(column),
            0.36, 0, false, {}, edges[column + 1] - edges[column] - letter});
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
