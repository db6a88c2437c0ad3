#include "FileReaders.h"

#include "TextLines.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

constexpr int kWordColumns = 6;
constexpr int kNumberColumns = 10;

class EastmanReader
{
public:
    explicit EastmanReader(const QByteArray &bytes) : m_lines(bytes)
    {
        m_program.dialect = QStringLiteral("Eastman");
        m_program.unit = QStringLiteral("cm");
    }

    CutProgram read()
    {
        while (!m_ended && m_lines.next()) {
            if (!m_lines.line().trimmed().isEmpty()) {
                run(m_lines.line());
            }
        }
        if (!m_ended) {
            fail(QStringLiteral("the file ends without END, a part of it is missing"));
        }
        m_lines.requireEnd();
        if (m_program.steps.empty()) {
            throw ReadFault(QStringLiteral("the file moves nothing"));
        }
        return std::move(m_program);
    }

private:
    [[noreturn]] void fail(const QString &reason) const { m_lines.fail(reason); }

    void run(const QByteArray &line)
    {
        const QByteArray word = line.left(kWordColumns).trimmed();
        const QByteArray rest = line.mid(kWordColumns);
        if (word == "MOVE") {
            lift();
            move(CutAction::Idle, rest);
        } else if (word == "CUT" || word == "NOTCH") {
            m_plunges += !m_knife;
            m_knife = true;
            move(word == "CUT" ? CutAction::Cut : CutAction::Notch, rest);
        } else if (word == "PEN") {
            move(m_pen ? CutAction::Pen : CutAction::Idle, rest);
        } else if (word == "PENUP" || word == "PENDN") {
            lift();
            m_pen = word == "PENDN";
        } else if (word == "HOLE" || word == "BURN") {
            runHole(rest);
        } else if (isHoleTool(word)) {
            setHoleTool(word);
        } else {
            runHeadLine(word, rest);
        }
    }

    void runHeadLine(const QByteArray &word, const QByteArray &rest)
    {
        if (word == "PIECE" || word == "WASTE") {
            lift();
            startPart(wholeNumber(rest, 0, 100000000));
            m_percent = 100;
        } else if (word == "SPEED") {
            m_percent = wholeNumber(rest, 1, 100);
        } else if (word == "NAME") {
            m_program.name = QString::fromUtf8(rest.trimmed());
        } else if (word == "UNIT") {
            if (rest.trimmed() != "CM") {
                fail(QStringLiteral("the unit \"%1\" is unknown").arg(quoted(rest.trimmed())));
            }
        } else if (word == "END" && rest.trimmed().isEmpty()) {
            m_ended = true;
        } else {
            fail(QStringLiteral("\"%1\" is no record").arg(quoted(m_lines.line())));
        }
    }

    static bool isHoleTool(const QByteArray &word)
    {
        return word == "PUNCH" || word == "DRILL" || word == "VNCH" || word == "SLIT" ||
               word == "LASER";
    }

    void startPart(int number)
    {
        if (m_program.parts.size() > kMostCutSteps) {
            fail(QStringLiteral("there are more than %1 numbers").arg(kMostCutSteps));
        }
        m_program.startPart(number);
    }

    void lift()
    {
        m_knife = false;
        m_pen = false;
    }

    // The tool acts where it is when the record has no numbers.
    void move(CutAction action, const QByteArray &numbers)
    {
        if (numbers.trimmed().isEmpty()) {
            return;
        }
        const QPointF to = placeOf(numbers);
        if (to != m_at) {
            add(action, to);
            m_at = to;
        }
    }

    // "X Y ANGLE" in columns, or "X Y TOOL N".
    void runHole(const QByteArray &rest)
    {
        lift();
        const int tool = rest.indexOf("TOOL");
        move(CutAction::Idle, tool < 0 ? rest : rest.left(tool));
        add(CutAction::Drill, m_at);
        if (tool >= 0) {
            setHoleTool(rest.mid(tool).simplified());
        }
    }

    // Behind its hole.
    void setHoleTool(const QByteArray &bytes)
    {
        if (m_program.steps.empty() || m_program.steps.back().action != CutAction::Drill) {
            fail(QStringLiteral("%1 stands behind no hole").arg(quoted(bytes)));
        }
        std::vector<QString> &tools = m_program.drillTools;
        const QString name = QString::fromUtf8(bytes);
        const auto found = std::find(tools.begin(), tools.end(), name);
        const auto place = static_cast<std::size_t>(found - tools.begin());
        if (found == tools.end()) {
            if (tools.size() >= 100) {
                fail(QStringLiteral("there are more than 100 tools"));
            }
            tools.push_back(name);
        }
        m_program.steps.back().tool = static_cast<unsigned char>(place);
    }

    // In columns of ten; numbers too long for them, or set by hand, stand between blanks.
    QPointF placeOf(const QByteArray &text) const
    {
        bool isX = false;
        bool isY = false;
        double x = text.left(kNumberColumns).toDouble(&isX);
        double y = text.mid(kNumberColumns, kNumberColumns).toDouble(&isY);
        if (!isX || !isY) {
            const QList<QByteArray> words = text.simplified().split(' ');
            x = words.value(0).toDouble(&isX);
            y = words.value(1).toDouble(&isY);
        }
        if (!isX || !isY || !(std::abs(x) <= kFarthest) || !(std::abs(y) <= kFarthest)) {
            fail(QStringLiteral("\"%1\" has no place in columns").arg(quoted(m_lines.line())));
        }
        return {x, y};
    }

    int wholeNumber(const QByteArray &text, int least, int most) const
    {
        bool isNumber = false;
        const int number = text.trimmed().toInt(&isNumber);
        if (!isNumber || number < least || number > most) {
            fail(QStringLiteral("\"%1\" has no number from %2 to %3")
                     .arg(quoted(m_lines.line()))
                     .arg(least)
                     .arg(most));
        }
        return number;
    }

    void add(CutAction action, const QPointF &to)
    {
        if (m_program.steps.size() >= kMostCutSteps) {
            fail(QStringLiteral("there are more than %1 moves").arg(kMostCutSteps));
        }
        m_program.add({action, 0, static_cast<unsigned char>(m_percent),
            static_cast<unsigned char>(std::min(m_plunges, 255)), 0, m_at, to});
        m_plunges = 0;
    }

    TextLines m_lines;
    CutProgram m_program;
    QPointF m_at;
    int m_plunges = 0; // since the last step
    int m_percent = 100;
    bool m_knife = false;
    bool m_pen = false;
    bool m_ended = false;
};

} // namespace

CutProgram readEastmanCutFile(const QByteArray &bytes)
{
    return EastmanReader(bytes).read();
}

} // namespace KivSystem
