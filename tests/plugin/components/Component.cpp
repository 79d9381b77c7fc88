// The small component of the manager's tests. The file is copied under the names that a test needs, and the
// component is called as its file is; it says on standard output what happens to it.
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

void say(const QString& text)
{
    std::puts(text.toUtf8().constData());
}

// The file that this code was loaded from.
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
    TestComponent() : name_(ownName()) { say(QStringLiteral("made ") + name_); }
    ~TestComponent() override { say(QStringLiteral("destroyed ") + name_); }

    QString name() const override { return name_; }
    QString displayName() const override { return QStringLiteral("Name of ") + name_; }
    QVariantMap resProperty() const override { return {{QStringLiteral("of"), name_}}; }
    void setEngine(QQmlApplicationEngine* engine) override
    {
        CComponentBase::setEngine(engine);
        say(QStringLiteral("engine ") + name_ + QLatin1String(engine == nullptr ? " none" : " given"));
    }
    void init() override { say(QStringLiteral("init ") + name_); }

protected:
    void Release() override
    {
        say(QStringLiteral("release ") + name_);
        // A component of this name takes others with it when it goes.
        if (name_ == QLatin1String("Killer")) {
            const QString victim = qEnvironmentVariable("TEST_VICTIM");
            const auto* other = reinterpret_cast<QObject*>(victim.toULongLong());
            delete other;
        }
    }
    void retranslate() override { say(QStringLiteral("translate ") + name_); }

private:
    QString name_;
};

} // namespace

extern "C" Q_DECL_EXPORT CComponentBase* getInstance()
{
    return new TestComponent;
}
