#include "FileReaders.h"

#include "TextLines.h"

#include <QByteArray>
#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <map>

namespace KivSystem {

namespace {

constexpr int kLongestBlock = 200; // bytes; texts on the console are the longest
constexpr double kInch = 2.54;     // cm
constexpr std::size_t kNoStep = std::numeric_limits<std::size_t>::max();

// What a block says: letters, each with a whole number.
struct Block
{
    std::map<char, int> words;

    bool has(char letter) const { return words.count(letter) != 0; }
    int operator[](char letter) const { return words.at(letter); }
};

class AnsiReader
{
public:
    explicit AnsiReader(const QByteArray &bytes) : m_bytes(bytes) { m_program.dialect = "ANSI"; }

    CutProgram read()
    {
        setUnit(kInch / 100, QStringLiteral("1/100 inch"));
        while (!m_ended) {
            const QByteArray text = nextText();
            if (!text.isEmpty()) { // two stars in a row say nothing
                run(parse(text));
            }
        }
        requireEnd();
        if (m_program.steps.empty()) {
            throw ReadFault(QStringLiteral("the file moves nothing"));
        }
        m_program.drillTools = m_drillNames;
        return std::move(m_program);
    }

private:
    [[noreturn]] void fail(const QString &reason) const
    {
        throw ReadFault(
            QStringLiteral("block %1 (byte %2): %3").arg(m_block).arg(m_blockStart).arg(reason));
    }

    // Behind the end of the file the machine reads nothing: more of it would not be cut.
    void requireEnd()
    {
        m_blockStart = somethingBehind(m_bytes, m_position);
        if (m_blockStart >= 0) {
            ++m_block;
            fail(behindTheEnd());
        }
    }

    // What stands up to the next star, without line breaks and blanks around.
    QByteArray nextText()
    {
        ++m_block;
        m_blockStart = m_position;
        const int end = m_bytes.indexOf('*', m_position);
        if (end < 0 || end - m_position > kLongestBlock) {
            const bool long_ = m_bytes.size() - m_position > kLongestBlock;
            fail(long_ ? QStringLiteral("there is no * within %1 bytes").arg(kLongestBlock)
                       : QStringLiteral("the file ends without M0, a part of it is missing"));
        }
        const QByteArray text = m_bytes.mid(m_position, end - m_position).trimmed();
        m_position = end + 1;
        return text;
    }

    Block parse(const QByteArray &text) const
    {
        Block block;
        int at = text.startsWith('%') ? 1 : 0; // a mark of rewinding in front of the first
        while (at < text.size()) {
            const char letter = text[at++];
            int end = at;
            while (end < text.size() && (isDigit(text[end]) || (end == at && text[end] == '-'))) {
                ++end;
            }
            if (letter == 'Q') { // of the light spot, which an X tells
                block.words['Q'] = 0;
                continue;
            }
            bool number = false;
            const int value = text.mid(at, end - at).toInt(&number);
            if (!QByteArray("HNMGDXYF").contains(letter) || !number || end - at > 9) {
                fail(QStringLiteral("\"%1\" is no command").arg(quoted(text)));
            }
            if (!block.words.emplace(letter, value).second) {
                fail(QStringLiteral("\"%1\" says %2 twice").arg(quoted(text)).arg(letter));
            }
            at = end;
        }
        return block;
    }

    static bool isDigit(char character) { return character >= '0' && character <= '9'; }

    // A command is obeyed before the move of its own block.
    void run(const Block &block)
    {
        if (block.has('N')) {
            startPart(block['N']);
            m_notch = false;
            m_firstLeg = kNoStep;
            m_percent = 100;
        }
        if (block.has('G')) {
            runUnit(block['G']);
        }
        if (block.has('D')) {
            if (block['D'] != 1 && block['D'] != 2) {
                fail(QStringLiteral("there is no tool D%1").arg(block['D']));
            }
            m_pen = block['D'] == 1;
        }
        if (block.has('M') && !runCommand(block)) {
            return;
        }
        if (block.has('X') || block.has('Y')) {
            const QPointF to = placeOf(block);
            if (block.has('Q')) {
                m_program.occupied = to.x();
            } else {
                move(to);
            }
        }
    }

    void runUnit(int code)
    {
        if ((code == 70 || code == 71) && m_placed) {
            fail(QStringLiteral("the unit changes behind the first place"));
        }
        if (code == 70) {
            setUnit(kInch / 1000, QStringLiteral("1/1000 inch"));
        } else if (code == 71) {
            setUnit(0.01, QStringLiteral("1/10 mm"));
        }
    }

    // False when the place of the block is used up.
    bool runCommand(const Block &block)
    {
        const int code = block['M'];
        if (code == 14) {
            m_plunges += !m_knife;
            m_knife = true;
            m_notch = false;
            m_isLeg = m_firstLeg != kNoStep;
        } else if (code == 15) {
            m_knife = false;
        } else if (code == 19) {
            m_notch = true;
        } else if (code == 0) {
            m_ended = true;
        } else if (code == 26) {
            m_percent = 100;
        } else if (code >= 60 && code <= 67) {
            m_percent = 95 - 5 * (code - 60);
        } else if (code == 20) {
            readMessage(nextText());
        } else if (code == 31) {
            runLabel(block);
            return false;
        } else if (code == 43 || code == 44) {
            if (block.has('X') || block.has('Y')) {
                move(placeOf(block));
            }
            add(CutAction::Drill, m_at, drillTool(code));
            return false;
        } else if (code == 69) {
            add(CutAction::Advance, m_at);
        } // the others change nothing that is seen
        return true;
    }

    void runLabel(const Block &block)
    {
        const Block place = block.has('X') ? block : parse(nextText());
        if (!place.has('X') || !place.has('Y')) {
            fail(QStringLiteral("the label has no place"));
        }
        const QString text = QString::fromUtf8(nextText());
        move(placeOf(place));
        add(CutAction::Label, m_at);
        m_program.labels.push_back(text);
    }

    // NAME/L=LENGTH/W=WIDTH
    void readMessage(const QByteArray &bytes)
    {
        static const QRegularExpression name(QStringLiteral("^(.*?)(?:/L=|$)"));
        m_program.name = name.match(QString::fromUtf8(bytes)).captured(1);
    }

    QPointF placeOf(const Block &block)
    {
        m_placed = true;
        // A coordinate that does not change need not be told.
        const QPointF place(block.has('X') ? block['X'] * m_unit : m_at.x(),
            block.has('Y') ? block['Y'] * m_unit : m_at.y());
        if (std::max(std::abs(place.x()), std::abs(place.y())) > kFarthest) {
            fail(QStringLiteral("the place is too far away"));
        }
        return place;
    }

    void startPart(int number)
    {
        if (m_program.parts.size() > kMostCutSteps) {
            fail(QStringLiteral("there are more than %1 numbers").arg(kMostCutSteps));
        }
        m_program.startPart(number);
    }

    void move(const QPointF &to)
    {
        if (!m_knife) {
            m_firstLeg = kNoStep;
        }
        if (to == m_at) {
            return;
        }
        if (m_knife && m_pen) {
            fail(QStringLiteral("knife and pen are both down"));
        }
        add(m_knife ? cutAction() : (m_pen ? CutAction::Pen : CutAction::Idle), to);
        m_at = to;
    }

    // A notch may have more legs than the stroke under M19, such as the cross bar of a T: the knife
    // is put down again where the stroke has ended, for one line each. Where a line without M14
    // goes on from there, those were no legs but the start of a cut.
    CutAction cutAction()
    {
        std::vector<CutStep> &steps = m_program.steps;
        if (m_notch || m_isLeg) {
            m_firstLeg = m_notch ? steps.size() + 1 : m_firstLeg;
            m_isLeg = false;
            return CutAction::Notch;
        }
        for (std::size_t leg = m_firstLeg; leg < steps.size(); ++leg) {
            steps[leg].action =
                steps[leg].action == CutAction::Notch ? CutAction::Cut : steps[leg].action;
        }
        m_firstLeg = kNoStep;
        return CutAction::Cut;
    }

    void add(CutAction action, const QPointF &to, unsigned char tool = 0)
    {
        if (m_program.steps.size() >= kMostCutSteps) {
            fail(QStringLiteral("there are more than %1 moves").arg(kMostCutSteps));
        }
        m_program.add({action, tool, static_cast<unsigned char>(m_percent),
            static_cast<unsigned char>(std::min(m_plunges, 255)), 0, m_at, to});
        m_plunges = 0;
    }

    unsigned char drillTool(int code)
    {
        const QString name = QStringLiteral("M%1").arg(code);
        std::size_t tool = 0;
        while (tool < m_drillNames.size() && m_drillNames[tool] != name) {
            ++tool;
        }
        if (tool == m_drillNames.size()) {
            m_drillNames.push_back(name);
        }
        return static_cast<unsigned char>(tool);
    }

    void setUnit(double centimetres, const QString &name)
    {
        m_unit = centimetres;
        m_program.unit = name;
    }

    const QByteArray &m_bytes;
    CutProgram m_program;
    std::vector<QString> m_drillNames;
    QPointF m_at;
    double m_unit = 0; // cm
    int m_position = 0;
    int m_block = 0;
    int m_blockStart = 0;
    int m_plunges = 0; // since the last step
    int m_percent = 100;
    std::size_t m_firstLeg = kNoStep; // of the notch that the knife stands at the end of
    bool m_isLeg = false;             // what is cut next
    bool m_knife = false;
    bool m_notch = false;
    bool m_pen = false;
    bool m_placed = false;
    bool m_ended = false;
};

} // namespace

CutProgram readAnsiCutFile(const QByteArray &bytes)
{
    return AnsiReader(bytes).read();
}

} // namespace KivSystem
