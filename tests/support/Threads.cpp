#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace {

constexpr int kLimitMs = 30000;

} // namespace

void runOnOtherThread(const std::function<void()>& work)
{
    std::atomic<bool> done{false};
    std::thread thread([&] {
        work();
        done = true;
    });
    if (!pumpUntil([&] { return done.load(); }, kLimitMs)) {
        std::cerr << "the other thread did not come back within " << kLimitMs << " ms" << std::endl;
        std::abort();
    }
    thread.join();
}

bool pumpUntil(const std::function<bool()>& condition, int limitMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > limitMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        std::this_thread::yield();
    }
    return true;
}
