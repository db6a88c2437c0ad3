#include "TextLines.h"

#include "Console.h"
#include "FileReaders.h"

namespace KivSystem {

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
    m_position = end + 1;
    return true;
}

void TextLines::fail(const QString &reason) const
{
    throw ReadFault(QStringLiteral("line %1: %2").arg(m_number).arg(reason));
}

QString quoted(const QByteArray &bytes)
{
    constexpr int most = 40;
    const QString text = onOneLine(QString::fromUtf8(bytes.left(4 * most)));
    return text.size() > most ? text.left(most) + QStringLiteral("...") : text;
}

} // namespace KivSystem
