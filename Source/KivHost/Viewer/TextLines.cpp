#include "TextLines.h"

#include "FileReaders.h"

#include <QTextCodec>

#include <algorithm>
#include <cstring>

namespace KivSystem {

namespace {

bool isInvisible(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format: // such as a byte-order mark
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return character == QChar::Nbsp;
    }
}

} // namespace

bool TextLines::next()
{
    if (m_position >= m_bytes.size()) {
        return false;
    }
    ++m_number;
    int end = m_bytes.indexOf('\n', m_position);
    if (end < 0) {
        end = m_bytes.size();
    }
    if (end - m_position > Longest) {
        fail(QStringLiteral("longer than %1 bytes").arg(Longest));
    }
    m_line = m_bytes.mid(m_position, end - m_position);
    if (m_line.endsWith('\r')) {
        m_line.chop(1);
    }
    m_position = std::min(end + 1, m_bytes.size());
    return true;
}

void TextLines::failAt(int number, const QString &reason)
{
    throw ReadFault(QStringLiteral("line %1: %2").arg(number).arg(reason));
}

void TextLines::requireEnd() const
{
    const int more = somethingBehind(m_bytes, m_position);
    if (more >= 0) {
        const auto from = m_bytes.cbegin() + m_position;
        const auto breaks = std::count(from, m_bytes.cbegin() + more, '\n');
        throw ReadFault(QStringLiteral("line %1 (byte %2): %3")
                            .arg(m_number + 1 + static_cast<int>(breaks))
                            .arg(more)
                            .arg(behindTheEnd()));
    }
}

int somethingBehind(const QByteArray &bytes, int position)
{
    const auto found = std::find_if(bytes.cbegin() + position, bytes.cend(),
        [](char byte) { return std::strchr(" \t\r\n\v\f\x1a", byte) == nullptr || byte == '\0'; });
    return found == bytes.cend() ? -1 : static_cast<int>(found - bytes.cbegin());
}

QString behindTheEnd()
{
    return QStringLiteral("something follows the end of the file");
}

QString quoted(const QByteArray &bytes)
{
    constexpr int most = 40;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader); // which would not be seen
    const QByteArray start = bytes.left(4 * most);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(start.constData(), start.size(), &state);
    QString shown;
    for (const QChar &character : text.left(most)) {
        shown += isInvisible(character)
                     ? QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'))
                     : QString(character);
    }
    return text.size() > most ? shown + QStringLiteral("...") : shown;
}

} // namespace KivSystem
