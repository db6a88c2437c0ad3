// TextLines: the lines of a file, one at a time, with what a message about one needs.
#ifndef KIVHOST_TEXTLINES_H
#define KIVHOST_TEXTLINES_H

#include <QByteArray>
#include <QString>

namespace KivSystem {

class TextLines
{
public:
    /// No format has longer lines; a longer one ends the reading with a fault.
    static constexpr int Longest = 100000;

    explicit TextLines(const QByteArray &bytes) : m_bytes(bytes) {}

    /// Goes to the next line; false behind the last. Lines end with LF or CR LF.
    bool next();
    /// Without its end.
    const QByteArray &line() const { return m_line; }
    int number() const { return m_number; } ///< from 1; 0 before the first

    /// Throws ReadFault: "line 3: " and the reason.
    [[noreturn]] void fail(const QString &reason) const { failAt(m_number, reason); }
    [[noreturn]] static void failAt(int number, const QString &reason);
    /// Throws ReadFault when something stands behind the line.
    void requireEnd() const;

private:
    QByteArray m_bytes;
    QByteArray m_line;
    int m_position = 0;
    int m_number = 0;
};

/// The first byte from `position` on that is neither a blank, nor of a line break, nor 0x1A, an old
/// mark of a file's end; -1 when there is none.
int somethingBehind(const QByteArray &bytes, int position);

/// Why a file with such a byte behind its end is refused.
QString behindTheEnd();

} // namespace KivSystem

#endif
