#include "CutExpressions.h"

#include "KivMarker/ShareGlobales.h"

#include <QRegularExpression>
#include <QStringList>

#include <limits>

namespace KivSystem {
namespace NC {
namespace {

QStringList words(const QString &text)
{
    static const QRegularExpression blank(QStringLiteral("\\s"));
    return text.split(blank, Qt::SkipEmptyParts);
}

double towardZero(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (value >= -limit && value < limit) {
        return static_cast<double>(static_cast<qint64>(value));
    }
    // What the processor's own conversion yields for a number that does not fit, or is none.
    return static_cast<double>(std::numeric_limits<qint64>::min());
}

} // namespace

CutExpression::Operation CutExpression::operationOf(const QString &word)
{
    if (word.size() != 1) {
        return Operation::None;
    }
    switch (word[0].unicode()) {
    case '/':
        return Operation::Divide;
    case '*':
        return Operation::Multiply;
    case '+':
        return Operation::Add;
    case '-':
        return Operation::Subtract;
    default:
        return Operation::None;
    }
}

CutExpression::CutExpression(const QString &text) : m_text(text)
{
    Operation current = Operation::None;
    for (const QString &word : words(text)) {
        const Operation operation = operationOf(word);
        if (operation != Operation::None) {
            current = operation;
        } else if (word == QLatin1String("long")) {
            m_steps.push_back({Operation::Truncate, Operand::Constant, 0});
        } else if (word == QLatin1String("scaleX")) {
            m_steps.push_back({current, Operand::ScaleX, 0});
        } else if (word == QLatin1String("scaleY")) {
            m_steps.push_back({current, Operand::ScaleY, 0});
        } else {
            m_steps.push_back({current, Operand::Constant, word.toDouble()});
        }
    }
}

double CutExpression::applied(double value) const
{
    for (const Step &step : m_steps) {
        double operand = step.constant;
        if (step.operand == Operand::ScaleX) {
            operand = CDbMarkerShareGlobales::instance()->getCutScaleX();
        } else if (step.operand == Operand::ScaleY) {
            operand = CDbMarkerShareGlobales::instance()->getCutScaleY();
        }
        switch (step.operation) {
        case Operation::None: // an operand in front of the first operator
            break;
        case Operation::Divide:
            value = operand == 0 ? value : value / operand;
            break;
        case Operation::Multiply:
            value *= operand;
            break;
        case Operation::Add:
            value += operand;
            break;
        case Operation::Subtract:
            value -= operand;
            break;
        case Operation::Truncate:
            value = towardZero(value);
            break;
        }
    }
    return value;
}

double calcExpression(const QString &expression, double value)
{
    return CutExpression(expression).applied(value);
}

void parseNumbers(const QString &text, std::vector<int> &numbers)
{
    for (const QString &word : words(text)) {
        numbers.push_back(word.toInt());
    }
}

} // namespace NC
} // namespace KivSystem
