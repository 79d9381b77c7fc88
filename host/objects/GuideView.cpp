#include "host/objects/GuideView.h"

#include "host/objects/HostCore.h"

#include <utility>

namespace host {

GuideView::GuideView(HostCore& core) : core_(core)
{
    click_.setSingleShot(true);
    connect(&core_, &HostCore::guideChanged, this, &GuideView::follow);
    connect(&click_, &QTimer::timeout, &core_, &HostCore::dismissGuide);
}

void GuideView::prepare(std::function<GuidePage()> page)
{
    next_ = std::move(page);
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

void GuideView::follow()
{
    open_ = !core_.guideTitle().isEmpty();
    make_ = std::exchange(next_, nullptr);
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
    title_ = core_.guideTitle().translated();
    page_ = make_ ? make_() : GuidePage();
    if (!make_)
        page_.text = core_.guideText().translated();
}

} // namespace host
