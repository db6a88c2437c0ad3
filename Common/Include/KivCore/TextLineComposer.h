// TextLineComposer: composes lines of words with single blanks between them and hands each to a
// sink. TextLine, the temporary that the operators return, ends the line with the statement:
//
//     composer << "cannot open font table file:" << fileName; // one line, two items
#ifndef KIVCORE_TEXTLINECOMPOSER_H
#define KIVCORE_TEXTLINECOMPOSER_H

#include "KivCore/Export.h"

#include <ios>
#include <iosfwd>
#include <sstream>
#include <string>

class QString;

namespace KivSystem {

namespace Private {

/// Writes `text` in UTF-8. Quoted, it stands between double quotes, with a backslash before a
/// double quote or a backslash and with control characters escaped (\n, \t, \x1b): one item and one
/// line whatever is in it. Otherwise it is written as it is.
KIVCORE_EXPORT void printQString(std::ostream &stream, const QString &text, bool quoted);

} // namespace Private

template <class Char>
class TextLine;

template <class Char>
class KIVCORE_EXPORT TextLineComposer
{
public:
    explicit TextLineComposer(bool enabled = true) : m_enabled(enabled) {}
    TextLineComposer(const TextLineComposer &) = delete;
    TextLineComposer &operator=(const TextLineComposer &) = delete;
    virtual ~TextLineComposer() = default;

    /// A composer that is not enabled takes nothing and writes nothing.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

    /// Whether the line could not take an item, such as a null text. Items behind it are lost; the
    /// next flush() clears the state.
    bool fail() const { return m_stream.fail(); }

    /// Begins a line with `item`: a text, a QString, or what a stream can write.
    template <class Item>
    TextLine<Char> operator<<(const Item &item)
    {
        add(item);
        return TextLine<Char>(*this);
    }

    /// Appends an item to the line: a blank unless at the start, then the text.
    void add(const Char *text)
    {
        if (beginItem()) {
            if (text) {
                m_stream << text;
            } else {
                m_stream.setstate(std::ios_base::failbit);
            }
        }
    }
    void add(Char *text) { add(static_cast<const Char *>(text)); }
    void add(const QString &text)
    {
        if (beginItem()) {
            Private::printQString(m_stream, text, false);
        }
    }
    template <class Item>
    void add(const Item &item)
    {
        if (beginItem()) {
            m_stream << item;
        }
    }

    /// Passes the line to the sink and begins a new one.
    void flush()
    {
        if (m_enabled) {
            const std::basic_string<Char> line = m_stream.str();
            m_stream.clear();
            m_stream.str(std::basic_string<Char>());
            m_atStart = true;
            writeLine(line);
        }
    }

protected:
    /// The sink. `line` has no line end.
    virtual void writeLine(const std::basic_string<Char> &line) = 0;

private:
    bool beginItem()
    {
        if (m_enabled && !m_atStart) {
            m_stream << Char(' ');
        }
        m_atStart = m_atStart && !m_enabled;
        return m_enabled;
    }

    bool m_enabled;
    bool m_atStart = true;
    std::basic_ostringstream<Char> m_stream;
};

/// A line under way. Its end flushes the composer.
template <class Char>
class TextLine
{
public:
    explicit TextLine(TextLineComposer<Char> &composer) : m_composer(composer) {}
    TextLine(const TextLine &) = delete;
    TextLine &operator=(const TextLine &) = delete;
    ~TextLine() { m_composer.flush(); }

    template <class Item>
    TextLine &operator<<(const Item &item)
    {
        m_composer.add(item);
        return *this;
    }

private:
    TextLineComposer<Char> &m_composer;
};

} // namespace KivSystem

#endif
