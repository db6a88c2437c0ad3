#include "CutCommands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace KivSystem {
namespace NC {
namespace {

constexpr int kMostDecimals = 9;
constexpr std::array<double, kMostDecimals + 1> kPowersOfTen = {
    1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// A configuration has a few dozen formats. More than these are texts that some caller composes.
constexpr std::size_t kMostFormats = 64;

using Digits = std::array<char, 32>;

// The digits of a number in fixed notation, exact halves rounded away from zero. Returns 0 for a
// number that is too large.
std::size_t fixedDigits(double value, int precision, Digits &digits)
{
    constexpr double tooLarge = 4503599627370496.0; // 2^52: below it there is room for a half
    if (precision < 0 || precision > kMostDecimals) {
        return 0;
    }
    const double power = kPowersOfTen[static_cast<std::size_t>(precision)];
    const double size = std::abs(value);
    const double scaled = size * power;
    if (!(scaled < tooLarge)) { // nor is NaN
        return 0;
    }
    // The product is rounded, which matters only where it seems to be a half: there the part that
    // was lost decides.
    auto units = static_cast<qint64>(scaled);
    const double aboveHalf = scaled - static_cast<double>(units) - 0.5;
    if (aboveHalf > 0 || (aboveHalf == 0 && std::fma(size, power, -scaled) >= 0)) {
        ++units;
    }

    char *place = digits.data();
    if (value < 0) { // so that -0.0 has no sign, while a number that is rounded to zero keeps it
        *place++ = '-';
    }
    char *end = digits.data() + digits.size();
    if (precision == 0) {
        place = std::to_chars(place, end, units).ptr;
    } else {
        const auto unitsOfOne = static_cast<qint64>(power);
        place = std::to_chars(place, end, units / unitsOfOne).ptr;
        *place = '.';
        qint64 decimals = units % unitsOfOne;
        for (int index = precision; index > 0; --index) {
            place[index] = static_cast<char>('0' + decimals % 10);
            decimals /= 10;
        }
        place += precision + 1;
    }
    return static_cast<std::size_t>(place - digits.data());
}

} // namespace

void CutCommands::append(QStringView text)
{
    const int size = static_cast<int>(text.size());
    std::copy(text.begin(), text.end(), more(size));
}

void CutCommands::appendNumber(double value, const CutNumberForm &form)
{
    Digits digits;
    const std::size_t length = fixedDigits(value, form.precision, digits);
    if (length == 0) {
        append(QStringLiteral("%1").arg(value, form.width, 'f', form.precision, QLatin1Char(' ')));
        return;
    }
    const int blanks = std::max(form.width - static_cast<int>(length), 0);
    QChar *place = more(blanks + static_cast<int>(length));
    place = std::fill_n(place, blanks, QLatin1Char(' '));
    for (std::size_t index = 0; index < length; ++index) {
        place[index] = QLatin1Char(digits[index]);
    }
}

QChar *CutCommands::more(int count)
{
    const auto start = static_cast<std::size_t>(m_size);
    m_size += count;
    if (m_text.size() < static_cast<std::size_t>(m_size)) {
        m_text.resize(2 * static_cast<std::size_t>(m_size));
    }
    return m_text.data() + start;
}

void CutCommands::appendFilled(
    const QString &format, double x, double y, const CutNumberForm &form, const QString *third)
{
    const Format &known = this->format(format);
    if (!known.isPlain) {
        const QLatin1Char blank(' ');
        const QString text = format.arg(x, form.width, 'f', form.precision, blank)
                                 .arg(y, form.width, 'f', form.precision, blank);
        append(third == nullptr ? text : text.arg(*third));
        return;
    }
    for (const Part &part : known.parts) {
        if (part.rank == 0) {
            appendNumber(x, form);
        } else if (part.rank == 1) {
            appendNumber(y, form);
        } else if (part.rank == 2 && third != nullptr) {
            append(*third);
        } else {
            append(QStringView(known.text).mid(part.start, part.length));
        }
    }
}

// A format is plain when filling it marker by marker, as QString::arg() does, is the same as
// filling all at once: each "%" begins a marker of one digit, and no text that is filled in can
// make one longer ("%2%1" becomes "%25" when x is 5).
CutCommands::Format CutCommands::compiled(const QString &text)
{
    Format format;
    format.text = text;
    const auto digitAt = [&text](int place) {
        return place < text.size() ? text[place].digitValue() : -1;
    };
    std::vector<int> numbers;
    int written = 0;
    int place = text.indexOf(QLatin1Char('%'));
    for (; place >= 0; place = text.indexOf(QLatin1Char('%'), written)) {
        const int number = digitAt(place + 1);
        const bool isFollowed = place + 2 < text.size() && text[place + 2] == QLatin1Char('%');
        if (number < 1 || digitAt(place + 2) >= 0 || (isFollowed && digitAt(place + 3) < number)) {
            return format;
        }
        format.parts.push_back({Part::kText, written, place - written});
        format.parts.push_back({number, place, 2});
        numbers.push_back(number);
        written = place + 2;
    }
    format.parts.push_back({Part::kText, written, text.size() - written});

    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    for (Part &part : format.parts) {
        if (part.rank != Part::kText) {
            const auto found = std::lower_bound(numbers.begin(), numbers.end(), part.rank);
            part.rank = static_cast<int>(found - numbers.begin());
        }
    }
    format.isPlain = true;
    return format;
}

const CutCommands::Format &CutCommands::format(const QString &text)
{
    const auto isSame = [&text](const Format &known) { return known.text == text; };
    if (m_current < m_formats.size() && isSame(m_formats[m_current])) {
        return m_formats[m_current];
    }
    const auto known = std::find_if(m_formats.begin(), m_formats.end(), isSame);
    m_current = static_cast<std::size_t>(known - m_formats.begin());
    if (known == m_formats.end()) {
        if (m_formats.size() >= kMostFormats) {
            m_formats.clear();
        }
        m_current = m_formats.size();
        m_formats.push_back(compiled(text));
    }
    return m_formats[m_current];
}

} // namespace NC
} // namespace KivSystem
