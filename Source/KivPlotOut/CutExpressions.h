// The expressions of a cut configuration's attributes `x` and `y`: a value is changed word by word,
// from left to right, without precedence and without brackets. An operator holds until the next
// one:
//
//     calcExpression("* scaleX / 100", 20)   half of it when CutScaleX is 50: 10
//     calcExpression("* 2 3 + 0.5 long", 1)  6, from 6.5 cut toward zero

#ifndef KIVPLOTOUT_CUTEXPRESSIONS_H
#define KIVPLOTOUT_CUTEXPRESSIONS_H

#include <QString>

#include <vector>

namespace KivSystem {
namespace NC {

/// An expression whose words are read once. The scales of the cut settings are those of the moment
/// of the computation.
class CutExpression
{
public:
    CutExpression() = default;
    /// A word that is nothing known is the number 0.
    explicit CutExpression(const QString &text);

    const QString &text() const { return m_text; }
    /// Division by zero leaves the value as it is.
    double applied(double value) const;

private:
    enum class Operation
    {
        None,
        Divide,
        Multiply,
        Add,
        Subtract,
        Truncate
    };
    enum class Operand
    {
        Constant,
        ScaleX,
        ScaleY
    };
    struct Step
    {
        Operation operation = Operation::None;
        Operand operand = Operand::Constant;
        double constant = 0;
    };

    static Operation operationOf(const QString &word);

    QString m_text;
    std::vector<Step> m_steps;
};

double calcExpression(const QString &expression, double value);

/// Appends the whole numbers of a text, which white space separates; a word that is none gives 0.
void parseNumbers(const QString &text, std::vector<int> &numbers);

} // namespace NC
} // namespace KivSystem

#endif
