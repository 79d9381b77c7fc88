// The component of the manager's tests. Tests copy the library under various names; the component takes its
// name from its file and prints each call to standard output.
#include "plugin/ComponentBase.h"

#include <QtCore/QFileInfo>
#include <QtQml/QQmlApplicationEngine>

#include <cstdio>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

void print(const QString& text)
{
    std::puts(text.toUtf8().constData());
}

QString ownFile()
{
    static const int anchor = 0;
#ifdef Q_OS_WIN
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&anchor), &self);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(self, path, MAX_PATH);
    return QString::fromWCharArray(path);
#else
    Dl_info info{};
    dladdr(&anchor, &info);
    return QString::fromLocal8Bit(info.dli_fname);
#endif
}

QString ownName()
{
    return QFileInfo(ownFile()).completeBaseName();
}

class TestComponent : public CComponentBase
{
public:
    TestComponent() : name_(ownName()) { print(QStringLiteral("created ") + name_); }
    ~TestComponent() override { print(QStringLiteral("destroyed ") + name_); }

    QString name() const override { return name_; }
    QString displayName() const override { return QStringLiteral("Name of ") + name_; }
    QVariantMap resProperty() const override { return {{QStringLiteral("of"), name_}}; }
    void setEngine(QQmlApplicationEngine* engine) override
    {
        CComponentBase::setEngine(engine);
        print(QStringLiteral("engine ") + name_ + QLatin1String(engine == nullptr ? " null" : " set"));
    }
    void init() override { print(QStringLiteral("init ") + name_); }

protected:
    void Release() override
    {
        print(QStringLiteral("release ") + name_);
        if (name_ == QLatin1String("Deleter")) {
            const QString address = qEnvironmentVariable("TEST_DELETE_ON_RELEASE");
            const auto* other = reinterpret_cast<QObject*>(address.toULongLong());
            delete other;
        }
    }
    void retranslate() override { print(QStringLiteral("translate ") + name_); }

private:
    QString name_;
};

} // namespace

extern "C" Q_DECL_EXPORT CComponentBase* getInstance()
{
    return new TestComponent;
}
