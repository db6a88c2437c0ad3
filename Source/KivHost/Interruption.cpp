#include "Interruption.h"

#include <csignal>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace KivSystem {
namespace Interruption {

namespace {

// Plain objects without destructors: the waiting thread may look at them while the program exits.
std::mutex cleanupMutex;
Cleanup *latestCleanup = nullptr;

sigset_t signalsToTake()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            sigaddset(&signals, signal);
        }
    }
    return signals;
}

void waitForSignal(sigset_t signals)
{
    int signal = 0;
    if (sigwait(&signals, &signal) != 0) {
        return;
    }
    const auto lock = hold();
    runCleanups();
    // This thread alone lets the signal through, and dies of it with the whole program.
    std::signal(signal, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    kill(getpid(), signal);
}

} // namespace

void install()
{
    const sigset_t signals = signalsToTake();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread(waitForSignal, signals).detach();
}

Cleanup::Cleanup(std::function<void()> action) : m_action(std::move(action))
{
    const auto lock = hold();
    m_next = latestCleanup;
    latestCleanup = this;
}

Cleanup::~Cleanup()
{
    const auto lock = hold();
    Cleanup **link = &latestCleanup;
    while (*link != this) {
        link = &(*link)->m_next;
    }
    *link = m_next;
}

void runCleanups()
{
    for (const Cleanup *cleanup = latestCleanup; cleanup != nullptr; cleanup = cleanup->m_next) {
        cleanup->m_action();
    }
}

std::unique_lock<std::mutex> hold()
{
    return std::unique_lock<std::mutex>(cleanupMutex);
}

} // namespace Interruption
} // namespace KivSystem
