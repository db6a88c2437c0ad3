// KivInit: the run-once registry. Static initialisers of any library register code here; the host
// runs it at the stage of its start-up that the code asked for.
//
//     const bool registered = (KivInit::instance()->registerRunOnce(
//         &registerTypes, KivInit::StageAfterQt, 0), true);
#ifndef KIVCORE_INIT_H
#define KIVCORE_INIT_H

#include "KivCore/Export.h"

#include <boost/function.hpp>

#include <vector>

namespace KivSystem {

/// Main thread only.
class KIVCORE_EXPORT KivInit
{
public:
    enum RunStage
    {
        StageAfterQt = 0,       ///< the application object of Qt stands, no window yet
        StagePluginsLoaded = 1, ///< all plug-ins are loaded
    };

    /// Never null; made on first use, so that static initialisers may call it in any order.
    static KivInit *instance();

    KivInit(const KivInit &) = delete;
    KivInit &operator=(const KivInit &) = delete;

    /// Keeps `code` until the next run() of `stage`. Empty code is ignored. A library that can be
    /// unloaded must not go before its code has run.
    void registerRunOnce(boost::function<void()> code, RunStage stage, int priority);

    /// Runs what is pending for `stage`, each once: lowest priority value first, equal priorities
    /// in the order of registration. Code that is registered meanwhile, or later by a plug-in,
    /// waits for the next call. When code throws, the exception passes; that code counts as run and
    /// what stands behind it stays pending.
    void run(RunStage stage);

private:
    struct Entry
    {
        boost::function<void()> code;
        RunStage stage;
        int priority;
    };

    KivInit() = default;
    ~KivInit() = default;

    std::vector<Entry> m_pending; ///< in order of registration
};

} // namespace KivSystem

#endif
