#include "CutProgram.h"

#include <QLineF>

#include <algorithm>

namespace KivSystem {

namespace {

double lengthOf(const CutStep &step)
{
    return QLineF(step.from, step.to).length();
}

bool moves(CutAction action)
{
    return action == CutAction::Idle || action == CutAction::Cut || action == CutAction::Notch ||
           action == CutAction::Pen;
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

// Seconds for a step.
double timeOf(const CutStep &step, const CutSpeeds &speeds)
{
    constexpr double centimetresASecond = 100.0 / 60;
    const bool idle = step.action == CutAction::Idle;
    const double speed = idle ? speeds.idle : speeds.knife * step.percent / 100;
    return speed > 0 ? lengthOf(step) / (speed * centimetresASecond) : 0;
}

// Where `value` lies in an ascending row: the last entry that is not behind it.
std::size_t placeIn(const std::vector<double> &row, double value)
{
    const auto behind = std::upper_bound(row.begin(), row.end(), value);
    return behind == row.begin() ? 0 : static_cast<std::size_t>(behind - row.begin()) - 1;
}

// The value of `to` at the place that `value` has in `from`.
double matched(const std::vector<double> &from, const std::vector<double> &to, double value)
{
    if (value <= from.front()) {
        return to.front();
    }
    if (value >= from.back()) {
        return to.back();
    }
    const std::size_t step = placeIn(from, value);
    const double size = from[step + 1] - from[step];
    return to[step] + (to[step + 1] - to[step]) * (value - from[step]) / size;
}

} // namespace

CutSums sumOf(const CutProgram &program)
{
    CutSums sums;
    int tool = -1;
    for (const CutStep &step : program.steps) {
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

CutWay::CutWay(const CutProgram &program, const CutSpeeds &speeds) : m_program(program)
{
    m_ways.reserve(program.steps.size() + 1);
    m_times.reserve(program.steps.size() + 1);
    double way = 0;
    double time = 0;
    for (const CutStep &step : program.steps) {
        m_ways.push_back(way);
        m_times.push_back(time);
        if (moves(step.action)) {
            way += lengthOf(step);
            time += timeOf(step, speeds);
        }
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
    return matched(m_ways, m_times, way);
}

double CutWay::wayAt(double seconds) const
{
    return matched(m_times, m_ways, seconds);
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
