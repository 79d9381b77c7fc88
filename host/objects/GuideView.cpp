#include "host/objects/GuideView.h"

#include "host/objects/DiskText.h"

namespace host {

GuideView::GuideView(Guides& guides, HostStatus& status) : guides_(guides), status_(status)
{
    click_.setSingleShot(true);
    connect(&guides_, &Guides::changed, this, &GuideView::showGuide);
    connect(&guides_, &Guides::lossChanged, this, &GuideView::showLoss);
    connect(&click_, &QTimer::timeout, this, &GuideView::dismiss);
}

void GuideView::retranslate()
{
    if (!open_)
        return;
    build();
    Q_EMIT changed();
}

void GuideView::setClickAfter(int milliseconds)
{
    clickAfter_ = milliseconds;
}

void GuideView::showGuide()
{
    open_ = guides_.current() != nullptr;
    if (open_)
        build();
    loss_ = guides_.loss();
    status_.setPageOpen(isDialog());
    click_.stop();
    if (isDialog() && clickAfter_ >= 0)
        click_.start(clickAfter_);
    Q_EMIT changed();
    if (open_)
        Q_EMIT opened();
}

void GuideView::showLoss()
{
    loss_ = guides_.loss();
    Q_EMIT changed();
}

QStringList GuideView::losses() const
{
    return loss_ ? lossLines(*loss_) : QStringList();
}

void GuideView::build()
{
    const Guide& guide = *guides_.current();
    title_ = guide.title.translated();
    page_ = guide.page ? guide.page() : GuidePage();
    if (!guide.page)
        page_.text = guide.summary.translated();
}

} // namespace host
