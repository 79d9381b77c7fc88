#include "host/udisks/BlockWorker.h"

#include <utility>

namespace host {

namespace {

constexpr int kProgressMs = 100;

} // namespace

BlockWorker::BlockWorker(Work work)
    : thread_(QThread::create([this, work = std::move(work)] { error_ = work(control_); }))
{
    progressTimer_.setInterval(kProgressMs);
    connect(&progressTimer_, &QTimer::timeout, this, &BlockWorker::progressed);
    connect(thread_.get(), &QThread::finished, this, [this] {
        // The signal is emitted before the thread has ended.
        thread_->wait();
        progressTimer_.stop();
        Q_EMIT finished(error_);
    });
}

BlockWorker::~BlockWorker()
{
    cancel();
    thread_->wait();
}

void BlockWorker::start()
{
    progressTimer_.start();
    thread_->start();
}

} // namespace host
