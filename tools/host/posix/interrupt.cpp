#include "tools/host/interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <thread>

namespace {

constexpr int SIGNALS[] = {SIGHUP,  SIGINT,  SIGQUIT,   SIGTERM, SIGALRM,
                           SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGXCPU};

[[noreturn]] void waitForSignal(sigset_t awaited) {
    int number = SIGTERM;
    ::sigwait(&awaited, &number);
    removeLeftovers();
    // Ends by the signal itself, so that a shell script that called the program ends too.
    ::signal(number, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &awaited, nullptr);
    ::raise(number);
    ::_exit(128 + number);
}

}  // namespace

void watchForInterrupts() {
    // A write to a closed pipe is an error like any other.
    ::signal(SIGPIPE, SIG_IGN);
    sigset_t awaited;
    ::sigemptyset(&awaited);
    for (const int number : SIGNALS) {
        struct sigaction action {};
        // nohup has a signal ignored.
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            ::sigaddset(&awaited, number);
    }
    ::pthread_sigmask(SIG_BLOCK, &awaited, nullptr);
    std::thread(waitForSignal, awaited).detach();
}
