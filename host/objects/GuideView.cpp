#include "host/objects/GuideView.h"

#include "host/objects/HostCore.h"

namespace host {

GuideView::GuideView(HostCore& core) : core_(core)
{
    click_.setSingleShot(true);
    connect(&core_, &HostCore::guideChanged, this, &GuideView::showGuide);
    connect(&click_, &QTimer::timeout, &core_, &HostCore::dismissGuide);
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
    open_ = core_.guide() != nullptr;
    if (open_)
        build();
    core_.setPageOpen(isDialog());
    click_.stop();
    if (isDialog() && clickAfter_ >= 0)
        click_.start(clickAfter_);
    Q_EMIT changed();
}

void GuideView::build()
{
    const Guide& guide = *core_.guide();
    title_ = guide.title.translated();
    page_ = guide.page ? guide.page() : GuidePage();
    if (!guide.page)
        page_.text = guide.summary.translated();
}

} // namespace host
