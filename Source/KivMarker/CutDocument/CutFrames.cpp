#include "CutDocument/CutFrames.h"

#include "CutDocument/CutRequest.h"

#include <algorithm>

namespace KivSystem {
namespace {

// Rounding of a product of scales does not make a piece too long.
constexpr double kSlack = 1e-6; // cm

struct Span
{
    std::size_t object;
    double start;
    double end;
};

// The objects along the length, in order of their starts.
std::vector<Span> spansOf(const std::vector<CutObject> &objects, const CutSettings &settings)
{
    std::vector<Span> spans;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const GeoRectangle reach = objects[i].reach(settings);
        spans.push_back({i, reach.left(), reach.right()});
    }
    std::stable_sort(
        spans.begin(), spans.end(), [](const Span &a, const Span &b) { return a.start < b.start; });
    return spans;
}

bool checkReach(const std::vector<CutObject> &objects, const std::vector<Span> &spans,
    double frameLength, QStringList &messages)
{
    bool fits = true;
    const auto refuse = [&](const QString &fault) {
        messages.append(fault);
        fits = false;
    };
    for (const Span &span : spans) {
        const QString &name = objects[span.object].name;
        if (span.end - span.start > frameLength) {
            refuse(QStringLiteral("%1 is %2 cm long; the cutter reaches %3 cm")
                       .arg(name, QString::number(span.end - span.start, 'f', 3),
                           QString::number(frameLength, 'f', 3)));
        } else if (span.start < -kSlack) {
            refuse(QStringLiteral("%1 begins %2 cm before the first frame")
                       .arg(name, QString::number(-span.start, 'f', 3)));
        }
    }
    return fits;
}

} // namespace

bool assignFrames(CutPlan &plan, const CutRequest &request, QStringList &messages)
{
    // The cutter counts in its own scale, the plan in the cloth's.
    const double length = request.settings.cutLength / request.machineScaleX + kSlack;
    const double threshold = request.settings.cutThresholdAdvance / request.machineScaleX + kSlack;
    std::vector<Span> waiting = spansOf(plan.objects, request.settings);
    if (!checkReach(plan.objects, waiting, length, messages)) {
        return false;
    }
    double start = 0;
    const auto fits = [&](const Span &span) {
        return span.end - start <= length && span.start - start <= threshold;
    };
    plan.frames.push_back({0, length});
    if (!waiting.empty() && !fits(waiting.front())) {
        // The conveyor can move only behind an object: one of which nothing is cut.
        plan.objects.emplace_back();
    }
    while (!waiting.empty()) {
        if (!fits(waiting.front())) {
            start = waiting.front().start;
            plan.frames.push_back({start, start + length});
        }
        const int frame = static_cast<int>(plan.frames.size()) - 1;
        const auto taken = std::stable_partition(
            waiting.begin() + 1, waiting.end(), [&](const Span &span) { return !fits(span); });
        plan.objects[waiting.front().object].frame = frame;
        for (auto span = taken; span != waiting.end(); ++span) {
            plan.objects[span->object].frame = frame;
        }
        waiting.erase(taken, waiting.end());
        waiting.erase(waiting.begin());
    }
    std::stable_sort(plan.objects.begin(), plan.objects.end(),
        [](const CutObject &a, const CutObject &b) { return a.frame < b.frame; });
    return true;
}

void markAdvances(CutPlan &plan, QStringList &messages)
{
    if (plan.frames.empty()) {
        return; // the conveyor stands still
    }
    for (std::size_t i = 0; i + 1 < plan.objects.size(); ++i) {
        plan.objects[i].advanceBehind = plan.objects[i].frame != plan.objects[i + 1].frame;
    }
    const auto beyond = [](const CutFrame &frame) {
        return [&frame](double x) { return x < frame.start - kSlack || x > frame.end + kSlack; };
    };
    const auto isUnreached = beyond(plan.frames.front());
    const auto firstHole = std::remove_if(plan.holes.begin(), plan.holes.end(),
        [&](const GeoPoint2D &hole) { return isUnreached(hole.x); });
    const auto isGone = beyond(plan.frames.back());
    const auto firstCut = std::remove_if(plan.wasteCuts.begin(), plan.wasteCuts.end(),
        [&](const WasteCut &cut) { return isGone(cut.x); });
    const auto leftOut = [&messages](std::ptrdiff_t count, const char *what) {
        if (count > 0) {
            messages.append(QStringLiteral("%1 %2 left out").arg(count).arg(QLatin1String(what)));
        }
    };
    leftOut(plan.holes.end() - firstHole,
        "punch holes outside of the pieces lie beyond the first frame and are");
    leftOut(plan.wasteCuts.end() - firstCut, "waste cuts lie before the last frame and are");
    plan.holes.erase(firstHole, plan.holes.end());
    plan.wasteCuts.erase(firstCut, plan.wasteCuts.end());
}

} // namespace KivSystem
