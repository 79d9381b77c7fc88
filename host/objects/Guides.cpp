#include "host/objects/Guides.h"

#include <utility>

namespace host {

Guides::Guides(Backend& backend, HostStatus& status, Orders& orders, Transcript& transcript, HostLog& log)
    : backend_(backend), status_(status), orders_(orders), transcript_(transcript), log_(log)
{
    connect(&backend_, &Backend::machineChanged, this, [this] {
        if (guide_)
            Q_EMIT lossChanged();
    });
}

void Guides::open(Guide guide)
{
    Q_EMIT opening();
    removeRejected(guide);
    if (guide.work)
        removeWithoutConsent(guide.title, guide.work);
    guide_ = std::move(guide);
    const QString summary = guide_->summary.english();
    log_.write(QStringLiteral("guide opened: ") + guide_->title.english() +
               (summary.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(summary)));
    record(QStringLiteral("opened"));
    Q_EMIT changed();
    if (startsGuides_)
        start();
}

// Without the reason, the user of a real disk could not know why the guide cannot start.
void Guides::removeRejected(Guide& guide)
{
    if (!guide.work)
        return;
    const QVariantMap params = guide.work->params;
    const Rejection rejection = backend_.taskRejection(static_cast<int>(guide.work->function), params);
    if (!rejection)
        return;
    guide.work.reset();
    if (!backend_.isReal())
        return;
    orders_.recordRejection(guide.title, describeParams(params), *rejection);
    guide.summary = *rejection;
}

void Guides::removeWithoutConsent(const Text& title, std::optional<GuidedWork>& work)
{
    const int function = static_cast<int>(work->function);
    if (const Rejection rejection = orders_.consentRejection(function, work->params)) {
        orders_.recordRejection(title, describeParams(work->params), *rejection);
        work.reset();
    }
}

// After a change of the machine, work that is rejected would fail without a change of the disk.
bool Guides::isAccepted() const
{
    return canStart() &&
           !backend_.taskRejection(static_cast<int>(guide_->work->function), guide_->work->params);
}

std::optional<DataLoss> Guides::loss() const
{
    if (!isAccepted())
        return std::nullopt;
    return dataLoss(*backend_.machine(), static_cast<int>(guide_->work->function), guide_->work->params);
}

WorkMarks Guides::marks() const
{
    if (!isAccepted())
        return {};
    return workMarks(*backend_.machine(), static_cast<int>(guide_->work->function), guide_->work->params);
}

void Guides::start()
{
    if (!canStart() || status_.isClosing())
        return;
    const GuidedWork work = *guide_->work;
    log_.write(QStringLiteral("guide started: ") + guide_->title.english());
    record(QStringLiteral("started"));
    orders_.add(static_cast<int>(work.function), work.params);
    close();
}

bool Guides::close()
{
    if (!guide_)
        return false;
    log_.write(QStringLiteral("guide closed: ") + guide_->title.english());
    record(QStringLiteral("closed"));
    guide_.reset();
    Q_EMIT changed();
    return true;
}

void Guides::record(const QString& action)
{
    transcript_.add(QStringLiteral("guide"), {{QStringLiteral("action"), action},
                                              {QStringLiteral("title"), guide_->title.english()},
                                              {QStringLiteral("text"), guide_->summary.english()},
                                              {QStringLiteral("canStart"), canStart()}});
}

} // namespace host
