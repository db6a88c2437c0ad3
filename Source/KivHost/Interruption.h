// Interruption: what is done before SIGINT, SIGTERM or SIGHUP ends the program. An export may be
// busy in the plug-in for long, so a thread of its own waits for the signals, runs the pending
// clean-ups and lets the signal have its way.
//
//     const Interruption::Cleanup cleanup([&] { QDir(staging).removeRecursively(); });
//     const auto hold = Interruption::hold(); // an interruption waits until this is gone
#ifndef KIVHOST_INTERRUPTION_H
#define KIVHOST_INTERRUPTION_H

#include <functional>
#include <mutex>

namespace KivSystem {

namespace Interruption {

/// Called once by main(), before any thread is started. A signal that the program was told to
/// ignore stays ignored.
void install();

/// As long as one lives its action runs on an interruption, the latest first. The action runs on
/// another thread while the main thread goes on, and must not throw.
class Cleanup
{
public:
    explicit Cleanup(std::function<void()> action);
    ~Cleanup();
    Cleanup(const Cleanup &) = delete;
    Cleanup &operator=(const Cleanup &) = delete;

private:
    friend void runCleanups();

    std::function<void()> m_action;
    Cleanup *m_next;
};

/// Runs all pending actions; what an interruption does before it ends the program.
void runCleanups();

/// While it is held an interruption waits: for steps that are done together or not at all.
std::unique_lock<std::mutex> hold();

} // namespace Interruption
} // namespace KivSystem

#endif
