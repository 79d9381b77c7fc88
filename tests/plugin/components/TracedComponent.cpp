// A component that prints each step of its loading to standard output, including the loading of its library
// and the connections to its signals.
#include "plugin/ComponentBase.h"

#include <QtCore/QMetaMethod>

#include <cstdio>

namespace {

const struct Library
{
    Library() { std::puts("library"); }
} library;

class TracedComponent : public CComponentBase
{
public:
    QString name() const override { return QStringLiteral("Traced"); }
    void setEngine(QQmlApplicationEngine* engine) override
    {
        std::puts("setEngine");
        CComponentBase::setEngine(engine);
    }
    void init() override { std::puts("init"); }

protected:
    void connectNotify(const QMetaMethod& signal) override
    {
        if (signal.name() == "destroyed")
            std::puts("destroyed connected");
    }
    void retranslate() override { std::puts("translated"); }
};

} // namespace

extern "C" Q_DECL_EXPORT CComponentBase* getInstance()
{
    std::puts("getInstance");
    return new TracedComponent;
}
