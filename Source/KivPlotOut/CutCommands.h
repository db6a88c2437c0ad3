// CutCommands: the text of a cut command, made from a format and a point. The result is that of
// QString::arg(), letter for letter; a format is taken apart once and not at each point.
//
//     commands.clear();
//     commands.appendFilled("X%1Y%2*", 12.5, -3, {1, 0});   X12.5Y-3.0*
//     commands.append(u"\r\n");
//     stream << commands.text();

#ifndef KIVPLOTOUT_CUTCOMMANDS_H
#define KIVPLOTOUT_CUTCOMMANDS_H

#include <QString>
#include <QStringView>

#include <vector>

namespace KivSystem {
namespace NC {

/// How coordinates are written: fixed notation, filled up with blanks on the left.
struct CutNumberForm
{
    int precision = 0; ///< decimals
    int width = 0;     ///< least number of characters
};

class CutCommands
{
public:
    void clear() { m_size = 0; }
    void append(QStringView text);
    /// The number as QString::arg(value, width, 'f', precision, ' ') writes it.
    void appendNumber(double value, const CutNumberForm &form);
    /// `format` with its markers filled: the lowest with x, the next with y, the one after with
    /// `third` unless that is null. A value without a marker is left out.
    void appendFilled(const QString &format, double x, double y, const CutNumberForm &form,
        const QString *third = nullptr);

    /// All since clear(), until the next change.
    QStringView text() const { return {m_text.data(), m_size}; }

private:
    // A run of the format's text, or a marker with the rank of its number: 0 for x.
    struct Part
    {
        static constexpr int kText = -1;
        int rank = kText;
        int start = 0;
        int length = 0;
    };
    struct Format
    {
        QString text;
        bool isPlain = false; // the parts tell all
        std::vector<Part> parts;
    };

    static Format compiled(const QString &text);
    const Format &format(const QString &text);

    /// Room for so many characters at the end, which count as written.
    QChar *more(int count);

    std::vector<QChar> m_text; // longer than what is written
    int m_size = 0;
    std::vector<Format> m_formats;
    std::size_t m_current = 0; // the format of the last command
};

} // namespace NC
} // namespace KivSystem

#endif
