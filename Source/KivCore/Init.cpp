#include "KivCore/Init.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace KivSystem {

KivInit *KivInit::instance()
{
    static KivInit registry;
    return &registry;
}

void KivInit::registerRunOnce(boost::function<void()> code, RunStage stage, int priority)
{
    if (code) {
        m_pending.push_back({std::move(code), stage, priority});
    }
}

void KivInit::run(RunStage stage)
{
    // What is due leaves the registry first: the code may register more, or run a stage itself.
    const auto firstDue = std::stable_partition(m_pending.begin(), m_pending.end(),
        [stage](const Entry &entry) { return entry.stage != stage; });
    std::vector<Entry> due(
        std::make_move_iterator(firstDue), std::make_move_iterator(m_pending.end()));
    m_pending.erase(firstDue, m_pending.end());
    std::stable_sort(due.begin(), due.end(),
        [](const Entry &left, const Entry &right) { return left.priority < right.priority; });

    for (auto entry = due.begin(); entry != due.end(); ++entry) {
        try {
            entry->code();
        } catch (...) {
            m_pending.insert(m_pending.begin(), std::make_move_iterator(std::next(entry)),
                std::make_move_iterator(due.end()));
            throw;
        }
    }
}

} // namespace KivSystem
