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
    int part = 0; ///< number in the file of the piece or waste cut; 0 before the first
    QPointF from;
    QPointF to;
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
    std::vector<QString> drillTools; ///< "M43", "PUNCH"
    int parts = 0;                   ///< pieces and waste cuts that have a number
    int plunges = 0;                 ///< how often the knife goes down
    double occupied = 0;             ///< cm, the length that the file states at its end; 0 for none
};

/// More than this many steps in a file are none: reading stops with a fault.
constexpr std::size_t kMostCutSteps = 3000000;

/// Lengths in cm, counts, and how long it takes.
struct CutSums
{
    double cut = 0; ///< notches included
    double notch = 0;
    double idle = 0;
    double pen = 0;
    int notches = 0; ///< strokes under the notch command
    int drills = 0;
    int labels = 0;
    int advances = 0;
    int toolChanges = 0; ///< from knife, pen or one drill to another
};

CutSums sumOf(const CutProgram &program);

/// Speeds in metres a minute, above 0.
struct CutSpeeds
{
    double knife = 30; ///< and pen
    double idle = 60;
};

/// The way of the head from the first step to the last, by length and by time.
class CutWay
{
public:
    /// The program outlives the way.
    explicit CutWay(const CutProgram &program, const CutSpeeds &speeds = {});

    double length() const; ///< cm
    /// Seconds for the moves alone: plunges, drills and advances take none.
    double duration() const;

    struct Place
    {
        QPointF point;
        std::size_t step = 0; ///< that is under way, or the number of steps at the end
        double done = 0;      ///< cm of the step that lie behind
    };

    /// Where the head is behind that many cm; below 0 at the start, past the end at the end.
    Place at(double way) const;
    /// How long it takes to there, in seconds; the reverse gives the way in cm.
    double timeAt(double way) const;
    double wayAt(double seconds) const;
    /// cm in front of a step; length() for one past the end.
    double wayTo(std::size_t step) const;

private:
    const CutProgram &m_program;
    std::vector<double> m_ways;  // up to the start of each step, and to the end
    std::vector<double> m_times; // likewise
};

/// One stroke for each run of steps of a kind.
Picture pictureOf(const CutProgram &program);

} // namespace KivSystem

#endif
