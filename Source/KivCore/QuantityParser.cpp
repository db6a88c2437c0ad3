#include "QuantityParser.h"

#include <QByteArray>
#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace KivSystem {

namespace {

constexpr QChar kMinus(0x2212);

QString translated(const char *text)
{
    return QCoreApplication::translate("KivSystem::KivLocale", text);
}

QString withoutDirectionMarks(const QString &text)
{
    QString clean;
    std::copy_if(text.begin(), text.end(), std::back_inserter(clean),
        [](QChar c) { return c.category() != QChar::Other_Format; });
    return clean;
}

/// The number at the head of a text, rewritten in ASCII.
class NumberScanner
{
public:
    NumberScanner(const QString &text, const QLocale &locale) : m_text(text), m_locale(locale)
    {
        scanSign();
        m_digits = scanDigits();
        if (!atEnd() && m_text.at(m_position) == m_locale.decimalPoint()) {
            ++m_position;
            m_ascii += '.';
            const int decimals = scanDigits();
            m_digits += decimals;
            m_endsInDecimalSign = decimals == 0;
        }
    }

    bool atEnd() const { return m_position >= m_text.size(); }
    bool isComplete() const { return m_digits > 0 && !m_endsInDecimalSign; }
    QString rest() const { return m_text.mid(m_position).trimmed(); }

    /// Infinity when the number is too large.
    double value() const
    {
        // Tiny numbers come back as 0 and not ok: they are 0 to the user as well.
        return m_ascii.toDouble();
    }

private:
    void scanSign()
    {
        if (atEnd()) {
            return;
        }
        const QChar c = m_text.at(m_position);
        if (c == QLatin1Char('-') || c == kMinus || c == m_locale.negativeSign()) {
            m_ascii += '-';
            ++m_position;
        } else if (c == QLatin1Char('+') || c == m_locale.positiveSign()) {
            ++m_position;
        }
    }

    int scanDigits()
    {
        int count = 0;
        for (; !atEnd(); ++m_position, ++count) {
            const int ascii = m_text.at(m_position).unicode() - '0';
            const int native = m_text.at(m_position).unicode() - m_locale.zeroDigit().unicode();
            if (ascii >= 0 && ascii <= 9) {
                m_ascii += static_cast<char>('0' + ascii);
            } else if (native >= 0 && native <= 9) {
                m_ascii += static_cast<char>('0' + native);
            } else {
                break;
            }
        }
        return count;
    }

    const QString &m_text;
    const QLocale &m_locale;
    QByteArray m_ascii;
    int m_position = 0;
    int m_digits = 0;
    bool m_endsInDecimalSign = false;
};

KivParse incomplete()
{
    return {true, false, 0.0,
        translated(QT_TRANSLATE_NOOP("KivSystem::KivLocale", "The value is not complete."))};
}

KivParse refused(const QString &text, const QLocale &locale, const QString &units)
{
    return {false, false, 0.0,
        translated(QT_TRANSLATE_NOOP("KivSystem::KivLocale",
                       "\"%1\" is not a value. Write digits with \"%2\" as decimal sign, without "
                       "group separators; the unit can be %3."))
            .arg(text, QString(locale.decimalPoint()), units)};
}

KivParse accepted(double value)
{
    if (!std::isfinite(value)) {
        return {false, false, 0.0,
            translated(QT_TRANSLATE_NOOP("KivSystem::KivLocale", "The value is too large."))};
    }
    return {true, true, value, QString()};
}

} // namespace

KivParse parseQuantity(const QString &text, const QLocale &locale, double (*bare)(double),
    const std::vector<UnitWord> &words, const QString &units)
{
    const QString clean = withoutDirectionMarks(text).trimmed();
    const NumberScanner number(clean, locale);
    if (!number.isComplete()) {
        return number.atEnd() ? incomplete() : refused(text, locale, units);
    }
    const QString unit = number.rest();
    if (unit.isEmpty()) {
        return accepted(bare(number.value()));
    }
    bool isPrefix = false;
    for (const UnitWord &word : words) {
        if (word.text.compare(unit, Qt::CaseInsensitive) == 0) {
            return accepted(word.toInside(number.value()));
        }
        isPrefix = isPrefix || word.text.startsWith(unit, Qt::CaseInsensitive);
    }
    return isPrefix ? incomplete() : refused(text, locale, units);
}

} // namespace KivSystem
