#include "FileReaders.h"

#include "KivMarker/Text.h"
#include "TextLines.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <cmath>

namespace KivSystem {

namespace {

constexpr double kCentimetresOfPoint = 1 / 28.35; // as the exports count
constexpr std::size_t kMostOperands = 100;
constexpr int kMostPoints = 3000000;
constexpr double kFarthest = 1e7; // points

// The numbers of letter sizes, 1 to 6, in points; sizes that have no number stand for themselves.
constexpr std::array<int, 6> kLetterSizes{10, 18, 24, 27, 30, 36};

// Four inks. An ink of more than 1, such as the 10 of black, is all of it.
QColor colourOfInks(const std::vector<double> &inks)
{
    const auto channel = [&inks](std::size_t ink) {
        const double covered = qBound(0.0, inks[ink], 1.0) + qBound(0.0, inks[3], 1.0);
        return 1 - std::min(covered, 1.0);
    };
    return QColor::fromRgbF(channel(0), channel(1), channel(2));
}

class IllustratorReader
{
public:
    explicit IllustratorReader(const QByteArray &bytes) : m_lines(bytes)
    {
        m_picture.layers.resize(1);
    }

    Picture read()
    {
        while (!m_ended && m_lines.next()) {
            const QByteArray &line = m_lines.line();
            if (m_lines.number() == 1 && !line.startsWith("%!PS-Adobe")) {
                m_lines.fail(QStringLiteral("the file does not start with %!PS-Adobe"));
            }
            if (line.startsWith('%')) {
                m_ended = line.trimmed() == "%%EOF";
            } else if (line.endsWith(")t")) {
                showText(line);
            } else {
                runLine(line);
            }
        }
        if (!m_ended) {
            m_lines.fail(QStringLiteral("the file ends without %%EOF, a part of it is missing"));
        }
        m_lines.requireEnd();
        if (m_groups != 0) {
            m_lines.fail(QStringLiteral("%1 groups are not closed").arg(m_groups));
        }
        return std::move(m_picture);
    }

private:
    // Words between blanks; an operator may stick to the bracket in front of it: "[]0 d", "...]e".
    void runLine(QByteArray line)
    {
        line.replace('[', ' ').replace(']', ' ');
        for (const QByteArray &word : line.simplified().split(' ')) {
            if (word.isEmpty() || word.startsWith('/')) { // the name of a font
                continue;
            }
            bool isNumber = false;
            const double number = word.toDouble(&isNumber);
            if (!isNumber) {
                run(word);
                m_operands.clear();
            } else if (!(std::abs(number) <= kFarthest)) {
                m_lines.fail(QStringLiteral("\"%1\" is out of range").arg(quoted(word)));
            } else if (m_operands.size() >= kMostOperands) {
                m_lines.fail(QStringLiteral("there are more than %1 numbers").arg(kMostOperands));
            } else {
                m_operands.push_back(number);
            }
        }
    }

    void run(const QByteArray &word)
    {
        const char name = word.size() == 1 ? word[0] : '\0';
        switch (name) {
        case 'm':
            need(2, word);
            startPart();
            break;
        case 'L':
        case 'l':
            need(2, word);
            addPoint();
            break;
        case 'S':
        case 's':
            stroke(name == 's');
            break;
        case 'k':
            need(4, word);
            m_fill = colourOfInks(m_operands);
            break;
        case 'K':
            need(4, word);
            m_line = colourOfInks(m_operands);
            break;
        case 'u':
            ++m_groups;
            break;
        case 'U':
            if (--m_groups < 0) {
                m_lines.fail(QStringLiteral("a group ends that has not begun"));
            }
            break;
        case 'z':
            need(4, word); // size, leading, kerning, alignment
            setLetterSize(m_operands[m_operands.size() - 4]);
            break;
        case 'e':
            need(6, word);
            m_textPlace = pointOf(4);
            break;
        case 'i': // how finely lines are drawn, their ends and widths: all here are alike
        case 'J':
        case 'j':
        case 'w':
        case 'M':
        case 'd':
        case 'T':
            break;
        default:
            m_lines.fail(QStringLiteral("\"%1\" is no operator").arg(quoted(word)));
        }
    }

    void need(std::size_t count, const QByteArray &word) const
    {
        if (m_operands.size() < count) {
            m_lines.fail(QStringLiteral("%1 has %2 numbers in front of it, not %3")
                             .arg(quoted(word))
                             .arg(m_operands.size())
                             .arg(count));
        }
    }

    // The file's points become centimetres.
    QPointF pointOf(std::size_t first) const
    {
        return QPointF(m_operands[first], m_operands[first + 1]) * kCentimetresOfPoint;
    }

    void addPoint()
    {
        if (m_path.isEmpty()) {
            m_lines.fail(QStringLiteral("a line has no point to start from"));
        }
        if (++m_points > kMostPoints) {
            m_lines.fail(QStringLiteral("there are more than %1 points").arg(kMostPoints));
        }
        m_path.append(pointOf(0));
    }

    // A path may have several parts, which are drawn together.
    void startPart()
    {
        if (m_path.size() > 1) {
            m_openParts.push_back(m_path);
        }
        m_path = {pointOf(0)};
    }

    // Only the last part can be closed.
    void stroke(bool closed)
    {
        if (m_path.isEmpty()) {
            m_lines.fail(QStringLiteral("there is no path to draw"));
        }
        for (const QVector<QPointF> &part : m_openParts) {
            m_picture.layers[0].strokes.push_back({StrokeKind::Cut, part, false, m_line, {}});
        }
        m_openParts.clear();
        m_picture.layers[0].strokes.push_back({StrokeKind::Cut, m_path, closed, m_line, {}});
        m_path.clear();
    }

    void setLetterSize(double size)
    {
        const auto number = static_cast<std::size_t>(qBound(0.0, size, 1000.0));
        const bool isNumber = number >= 1 && number <= kLetterSizes.size();
        const int points = isNumber ? kLetterSizes[number - 1] : static_cast<int>(number);
        m_letterHeight = points * CDbTextObject::LetterHeight;
    }

    // "9 (12 Paired)t": nothing in the text is escaped.
    void showText(const QByteArray &line)
    {
        const int open = line.indexOf('(');
        bool isCount = false;
        const int count = open < 0 ? 0 : line.left(open).trimmed().toInt(&isCount);
        const QString text = QString::fromUtf8(line.mid(open + 1, line.size() - open - 3));
        if (!isCount || count < 0) {
            m_lines.fail(QStringLiteral("the text \"%1\" has no count").arg(quoted(line)));
        }
        if (!text.isEmpty()) {
            m_picture.layers[0].texts.push_back(
                {m_textPlace, text, m_letterHeight, 0, true, m_fill, 0});
        }
        m_textPlace.ry() -= 1.2 * m_letterHeight;
    }

    TextLines m_lines;
    Picture m_picture;
    std::vector<double> m_operands;
    QVector<QPointF> m_path;
    std::vector<QVector<QPointF>> m_openParts; // in front of it
    QColor m_fill = Qt::black;
    QColor m_line = Qt::black;
    QPointF m_textPlace;
    double m_letterHeight = CDbTextObject::DefaultLetterSize * CDbTextObject::LetterHeight;
    int m_groups = 0;
    int m_points = 0;
    bool m_ended = false;
};

} // namespace

Picture readIllustratorFile(const QByteArray &bytes)
{
    return IllustratorReader(bytes).read();
}

} // namespace KivSystem
