#include "CutProgram.h"

#include <QLineF>

#include <algorithm>

namespace KivSystem {

namespace {

double lengthOf(const CutStep &step)
{
    return QLineF(step.from, step.to).length();
}

// -1 for what needs no tool.
int toolOf(const CutStep &step)
{
    switch (step.action) {
    case CutAction::Cut:
    case CutAction::Notch:
        return 0;
    case CutAction::Pen:
        return 1;
    case CutAction::Drill:
        return 2 + step.tool;
    case CutAction::Idle:
    case CutAction::Label:
    case CutAction::Advance:
        break;
    }
    return -1;
}

StrokeKind kindOf(CutAction action)
{
    switch (action) {
    case CutAction::Cut:
        return StrokeKind::Cut;
    case CutAction::Notch:
        return StrokeKind::Notch;
    case CutAction::Pen:
        return StrokeKind::Pen;
    case CutAction::Drill:
        return StrokeKind::Drill;
    case CutAction::Idle:
    case CutAction::Label:
    case CutAction::Advance:
        break;
    }
    return StrokeKind::Idle;
}

// Seconds for a move.
double timeOfMove(const CutStep &step, const CutPace &pace)
{
    constexpr double centimetresASecond = 100.0 / 60;
    const bool idle = step.action == CutAction::Idle;
    const double speed = idle ? pace.idle : pace.knife * step.percent / 100;
    return speed > 0 ? lengthOf(step) / (speed * centimetresASecond) : 0;
}

// Seconds that a step takes on the spot, in front of its move.
double timeOnTheSpot(const CutStep &step, const CutPace &pace)
{
    // Labels are printed by a device of their own, while the head goes on.
    const double plunges = step.plunges * pace.plunge;
    return step.action == CutAction::Drill     ? plunges + pace.drill
           : step.action == CutAction::Advance ? plunges + pace.advance
                                               : plunges;
}

// Where `value` lies in an ascending row: the last entry that is not behind it.
std::size_t placeIn(const std::vector<double> &row, double value)
{
    const auto behind = std::upper_bound(row.begin(), row.end(), value);
    return behind == row.begin() ? 0 : static_cast<std::size_t>(behind - row.begin()) - 1;
}

} // namespace

void CutProgram::startPart(int number)
{
    CutPart part;
    part.number = number;
    parts.push_back(part);
}

void CutProgram::add(CutStep step)
{
    const CutAction action = step.action;
    CutPart &part = parts.back();
    part.isDrilled = part.isDrilled || action == CutAction::Drill;
    part.isCut = part.isCut || action == CutAction::Cut || action == CutAction::Notch ||
                 action == CutAction::Pen;
    step.part = static_cast<int>(parts.size()) - 1;
    steps.push_back(step);
}

CutSums sumOf(const CutProgram &program)
{
    CutSums sums;
    for (std::size_t part = 1; part < program.parts.size(); ++part) {
        sums.pieces += program.parts[part].isCut;
        sums.looseHoles += program.parts[part].isLooseHole();
    }
    int tool = -1;
    for (const CutStep &step : program.steps) {
        sums.plunges += step.plunges;
        const double length = lengthOf(step);
        switch (step.action) {
        case CutAction::Idle:
            sums.idle += length;
            break;
        case CutAction::Notch:
            ++sums.notches;
            sums.notch += length;
            sums.cut += length;
            break;
        case CutAction::Cut:
            sums.cut += length;
            break;
        case CutAction::Pen:
            sums.pen += length;
            break;
        case CutAction::Drill:
            ++sums.drills;
            break;
        case CutAction::Label:
            ++sums.labels;
            break;
        case CutAction::Advance:
            ++sums.advances;
            break;
        }
        const int used = toolOf(step);
        if (used >= 0) {
            sums.toolChanges += tool >= 0 && used != tool;
            tool = used;
        }
    }
    return sums;
}

CutWay::CutWay(const CutProgram &program, const CutPace &pace) : m_program(program), m_pace(pace)
{
    m_ways.reserve(program.steps.size() + 1);
    m_times.reserve(program.steps.size() + 1);
    double way = 0;
    double time = 0;
    for (const CutStep &step : program.steps) {
        m_ways.push_back(way);
        m_times.push_back(time);
        way += lengthOf(step);
        time += timeOnTheSpot(step, pace) + timeOfMove(step, pace);
    }
    m_ways.push_back(way);
    m_times.push_back(time);
}

double CutWay::length() const
{
    return m_ways.back();
}

double CutWay::duration() const
{
    return m_times.back();
}

CutWay::Place CutWay::at(double way) const
{
    Place place;
    const std::vector<CutStep> &steps = m_program.steps;
    if (steps.empty()) {
        return place;
    }
    if (way >= length()) {
        place.point = steps.back().to;
        place.step = steps.size();
        return place;
    }
    place.step = way <= 0 ? 0 : placeIn(m_ways, way);
    const CutStep &step = steps[place.step];
    place.done = std::max(way, 0.0) - m_ways[place.step];
    const double size = lengthOf(step);
    place.point = size > 0 ? step.from + (step.to - step.from) * (place.done / size) : step.from;
    return place;
}

double CutWay::timeAt(double way) const
{
    if (way <= 0 || way >= length()) {
        return way <= 0 ? 0 : duration();
    }
    const std::size_t number = placeIn(m_ways, way);
    const CutStep &step = m_program.steps[number];
    const double done = (way - m_ways[number]) / lengthOf(step);
    return m_times[number] + timeOnTheSpot(step, m_pace) + done * timeOfMove(step, m_pace);
}

double CutWay::wayAt(double seconds) const
{
    if (seconds <= 0 || seconds >= duration()) {
        return seconds <= 0 ? 0 : length();
    }
    const std::size_t number = placeIn(m_times, seconds);
    const CutStep &step = m_program.steps[number];
    const double moving = seconds - m_times[number] - timeOnTheSpot(step, m_pace);
    const double whole = timeOfMove(step, m_pace);
    return m_ways[number] + (moving > 0 && whole > 0 ? lengthOf(step) * moving / whole : 0);
}

double CutWay::wayTo(std::size_t step) const
{
    return m_ways[std::min(step, m_ways.size() - 1)];
}

Picture pictureOf(const CutProgram &program)
{
    // Idle ways first and what is small last: an outline hides no notch.
    PictureLayer idle;
    PictureLayer lines;
    PictureLayer marks;
    const CutStep *last = nullptr;
    std::size_t label = 0;
    for (const CutStep &step : program.steps) {
        const bool isSmall = step.action == CutAction::Notch || step.action == CutAction::Drill;
        PictureLayer &layer = step.action == CutAction::Idle ? idle : (isSmall ? marks : lines);
        if (step.action == CutAction::Label) {
            marks.texts.push_back({step.to, program.labels[label++], 1.5, 0, true, {}, 0});
        } else if (step.action == CutAction::Advance) {
            marks.texts.push_back(
                {step.to, QStringLiteral("M69"), 1.5, 0, false, colourOf(StrokeKind::Frame), 0});
        } else if (step.action == CutAction::Drill) {
            layer.strokes.push_back({StrokeKind::Drill, {step.to}, false, {}, {}});
        } else if (last != nullptr && last->action == step.action && last->part == step.part) {
            layer.strokes.back().points.append(step.to);
        } else {
            layer.strokes.push_back({kindOf(step.action), {step.from, step.to}, false, {}, {}});
        }
        last = &step;
    }
    Picture picture;
    picture.layers = {std::move(idle), std::move(lines), std::move(marks)};
    return picture;
}

} // namespace KivSystem
