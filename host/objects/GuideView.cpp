#include "host/objects/GuideView.h"

#include "host/objects/HostCore.h"

namespace host {

GuideView::GuideView(HostCore& core) : core_(core)
{
    click_.setSingleShot(true);
    connect(&core_, &HostCore::guideChanged, this, &GuideView::follow);
    connect(&click_, &QTimer::timeout, &core_, &HostCore::dismissGuide);
}

void GuideView::prepare(const GuidePage& page)
{
    next_ = page;
    prepared_ = true;
}

void GuideView::setClickAfter(int milliseconds)
{
    clickAfter_ = milliseconds;
}

void GuideView::follow()
{
    open_ = !core_.guideTitle().isEmpty();
    if (open_) {
        page_ = prepared_ ? next_ : GuidePage();
        page_.title = core_.guideTitle();
        if (!prepared_)
            page_.text = core_.guideText();
    }
    prepared_ = false;
    core_.setPageOpen(isDialog());
    click_.stop();
    if (isDialog() && clickAfter_ >= 0)
        click_.start(clickAfter_);
    Q_EMIT changed();
}

} // namespace host
