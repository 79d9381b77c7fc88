// A component for the tests of the manager: it notes that it was initialised and does nothing else.
#include "plugin/ComponentBase.h"

namespace {

class FixtureComponent : public CComponentBase
{
public:
    QString name() const override { return QStringLiteral("Fixture"); }
    void init() override { setObjectName(QStringLiteral("initialised")); }
};

} // namespace

extern "C" Q_DECL_EXPORT CComponentBase* getInstance()
{
    return new FixtureComponent;
}
