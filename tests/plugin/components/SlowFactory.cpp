// A component whose factory takes longer than the threshold of the manager's timer, 100 ms.
#include "plugin/ComponentBase.h"

#include <QtCore/QThread>

namespace {

class SlowComponent : public CComponentBase
{
public:
    QString name() const override { return QStringLiteral("Slow"); }
    void init() override {}
};

} // namespace

extern "C" Q_DECL_EXPORT CComponentBase* getInstance()
{
    QThread::msleep(150);
    return new SlowComponent;
}
