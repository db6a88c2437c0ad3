// CutProgram: what a cut file makes a machine do, step by step, whatever dialect it is written in.
#ifndef KIVHOST_CUTPROGRAM_H
#define KIVHOST_CUTPROGRAM_H

#include "Picture.h"

#include <QPointF>
#include <QString>

#include <vector>

namespace KivSystem {

enum class CutAction : unsigned char
{
    Idle,    ///< all tools up
    Cut,     ///< knife down
    Notch,   ///< knife down, told to be a notch
    Pen,     ///< pen down
    Drill,   ///< at `to`, which is `from`
    Label,   ///< at `to`; the next of CutProgram::labels
    Advance, ///< the conveyor moves on, behind `to`
};

/// One thing that the machine does, in centimetres. A step starts where the one before ended.
struct CutStep
{
    CutAction action = CutAction::Idle;
    unsigned char tool = 0;      ///< of a drill: its place in CutProgram::drillTools
    unsigned char percent = 100; ///< of the full speed
    unsigned char plunges = 0;   ///< how often the knife goes down in front of it
    int part = 0;                ///< its place in CutProgram::parts
    QPointF from;
    QPointF to;
};

/// What the file has a number for: a piece, a waste cut, or a hole outside of the pieces.
struct CutPart
{
    int number = 0;     ///< in the file
    bool isCut = false; ///< or notched, or written on by the pen
    bool isDrilled = false;

    /// Such a number stands for no piece.
    bool isLooseHole() const { return isDrilled && !isCut; }
};

/// cm; no cloth is ten kilometres long, and no file goes farther.
constexpr double kFarthest = 1e6;

struct CutProgram
{
    QString dialect; ///< "ANSI", "Eastman"
    QString unit;    ///< of the numbers in the file, as in "1/100 inch"
    QString name;    ///< of the marker, as the file tells it; empty for none
    std::vector<CutStep> steps;
    std::vector<QString> labels;
    std::vector<QString> drillTools;       ///< "M43", "PUNCH"
    std::vector<CutPart> parts{CutPart()}; ///< the first one is what stands in front of all numbers
    double occupied = 0; ///< cm, the length that the file states at its end; 0 for none

    /// The steps that are added from here on belong to a new part.
    void startPart(int number);
    /// Puts a step behind the others, as one of the part that was started last.
    void add(CutStep step);
};

/// A file with more steps, or with more parts, is none: reading stops with a fault.
constexpr std::size_t kMostCutSteps = 3000000;

/// Lengths in cm, counts, and how long it takes.
struct CutSums
{
    double cut = 0; ///< notches included
    double notch = 0;
    double idle = 0;
    double pen = 0;
    int notches = 0; ///< strokes of notches
    int drills = 0;
    int plunges = 0;
    int pieces = 0;     ///< and waste cuts
    int looseHoles = 0; ///< numbers of the file with drills alone
    int labels = 0;
    int advances = 0;
    int toolChanges = 0; ///< from knife, pen or one drill to another
};

CutSums sumOf(const CutProgram &program);

/// How fast a machine is: speeds in metres a minute, above 0, and seconds for what takes no way.
struct CutPace
{
    double knife = 30; ///< and pen
    double idle = 60;
    double plunge = 0.3; ///< knife down and up again
    double drill = 1;
    double advance = 10; ///< of the conveyor, by a frame
};

/// The way of the head from the first step to the last, by length and by time.
class CutWay
{
public:
    /// The program outlives the way.
    explicit CutWay(const CutProgram &program, const CutPace &pace = {});

    double length() const;   ///< cm
    double duration() const; ///< seconds

    struct Place
    {
        QPointF point;
        std::size_t step = 0; ///< that is under way, or the number of steps at the end
        double done = 0;      ///< cm of the step that lie behind
    };

    /// Where the head is behind that many cm; below 0 at the start, past the end at the end.
    Place at(double way) const;
    /// How long it takes to there, in seconds, with all that is done on the spot; the reverse gives
    /// the way in cm.
    double timeAt(double way) const;
    double wayAt(double seconds) const;
    /// cm in front of a step; length() for one past the end.
    double wayTo(std::size_t step) const;

private:
    const CutProgram &m_program;
    const CutPace m_pace;
    std::vector<double> m_ways;  // up to the start of each step, and to the end
    std::vector<double> m_times; // likewise
};

/// One stroke for each run of steps of a kind.
Picture pictureOf(const CutProgram &program);

} // namespace KivSystem

#endif
