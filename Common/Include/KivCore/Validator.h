// Validators of the line edits in the option dialogs: lengths, angles and percentages, typed with
// or without their unit. While the user types nothing is refused and no bound is looked at; the
// dialog asks for validAndInRange() when it is accepted.
//
//     edit->setValidator(new KivLengthValidator(0.0, 5000.0, false, edit)); // 0 to 5000 cm
#ifndef KIVCORE_VALIDATOR_H
#define KIVCORE_VALIDATOR_H

#include "KivCore/Export.h"
#include "KivCore/Locale.h"

#include <QString>
#include <QValidator>

#include <cmath>
#include <limits>
#include <utility>

namespace KivSystem {

class KIVCORE_EXPORT KivValidatorBase : public QValidator
{
    Q_OBJECT

public:
    ~KivValidatorBase() override;

    /// {the text is a value, the value is within the bounds}. For an empty text both tell whether
    /// an empty text is acceptable.
    virtual std::pair<bool, bool> validAndInRange(const QString &text) const = 0;

    /// The bounds as a text field shows them, with the unit.
    virtual std::pair<QString, QString> valueRangeStr() const = 0;

    /// The bounds, in the unit of the program: cm, degrees or a factor.
    virtual std::pair<double, double> valueRange() const = 0;

    /// The bounds as the user can type them: as valueRangeStr(), but rounded inwards.
    virtual std::pair<QString, QString> typableRangeStr() const = 0;

protected:
    KivValidatorBase(bool acceptsEmpty, double lowest, double highest, QObject *parent);

    const bool m_acceptsEmpty;
    const double m_lowest;
    const double m_highest;
};

/// `Parse` and `Format` are operations of KivLocale; Lowest and Highest are the widest bounds of
/// the kind, to which the bounds of an instance are clamped. Texts are read in the validator's
/// own locale().
template <KivParse (KivLocale::*Parse)(const QString &) const,
    QString (KivLocale::*Format)(double, KivLocale::Options) const, int Lowest, int Highest>
class KivValidator final : public KivValidatorBase
{
public:
    KivValidator(
        double lowest, double highest, bool acceptsEmpty = false, QObject *parent = nullptr)
        // fmax and fmin pass over a NaN, which so becomes the widest bound.
        : KivValidatorBase(acceptsEmpty, std::fmin(std::fmax(lowest, Lowest), Highest),
              std::fmax(std::fmin(highest, Highest), Lowest), parent)
    {}

    State validate(QString &text, int &) const override
    {
        const QString trimmed = text.trimmed();
        if (trimmed.isEmpty()) {
            return m_acceptsEmpty ? Acceptable : Intermediate;
        }
        const KivParse parsed = parse(trimmed);
        return parsed.canBecomeValid && parsed.valid ? Acceptable : Intermediate;
    }

    void fixup(QString &text) const override
    {
        for (QString rest = text.trimmed(); !rest.isEmpty(); rest.chop(1)) {
            const KivParse parsed = parse(rest);
            if (parsed.canBecomeValid && parsed.valid) {
                text = format(parsed.value);
                return;
            }
        }
    }

    std::pair<bool, bool> validAndInRange(const QString &text) const override
    {
        const QString trimmed = text.trimmed();
        if (trimmed.isEmpty()) {
            return {m_acceptsEmpty, m_acceptsEmpty};
        }
        const KivParse parsed = parse(trimmed);
        if (!parsed.canBecomeValid || !parsed.valid) {
            return {false, false};
        }
        const bool below = parsed.value < m_lowest - kTolerance;
        const bool above = parsed.value > m_highest + kTolerance;
        return {true, !below && !above};
    }

    std::pair<QString, QString> valueRangeStr() const override
    {
        return {format(m_lowest), format(m_highest)};
    }

    std::pair<double, double> valueRange() const override { return {m_lowest, m_highest}; }

    std::pair<QString, QString> typableRangeStr() const override
    {
        return {inwards(m_lowest, -1), inwards(m_highest, 1)};
    }

private:
    // What the user typed was rounded to decimals and may have gone through a unit.
    static constexpr double kTolerance = 1e-12;

    // The text that is nearest to the bound and not beyond it. The shift, which doubles, never
    // reaches the text after the nearest one: the first text is beyond by half a step at the most.
    QString inwards(double bound, int outwards) const
    {
        QString text = format(bound);
        double beyond = outwards * (parse(text).value - bound);
        for (double shift = beyond; beyond > kTolerance; shift *= 2) {
            text = format(bound - outwards * shift);
            beyond = outwards * (parse(text).value - bound);
        }
        return text;
    }

    KivParse parse(const QString &text) const { return (KivLocale(locale()).*Parse)(text); }
    QString format(double value) const
    {
        return (KivLocale(locale()).*Format)(value, KivLocale::WithUnit);
    }
};

/// Lengths in centimetres.
using KivLengthValidator = KivValidator<&KivLocale::parseLength, &KivLocale::formatLength,
    std::numeric_limits<int>::min(), std::numeric_limits<int>::max()>;
/// Angles in degrees.
using KivAngleValidator = KivValidator<&KivLocale::parseAngle, &KivLocale::formatAngle, -360, 360>;
/// Percentages as factors: the bound 1 is 100 percent.
using KivPercentageValidator = KivValidator<&KivLocale::parsePercentage,
    &KivLocale::formatPercentage, 0, std::numeric_limits<int>::max()>;

} // namespace KivSystem

#endif
