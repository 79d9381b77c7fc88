#include "platform/windows/WmiQuery.h"

#include <windows.h>

#include <wbemidl.h>

#include <string>

namespace {

// Owns one COM object.
template <class Interface> class ComPtr
{
public:
    ComPtr() = default;
    ~ComPtr()
    {
        if (pointer_ != nullptr)
            pointer_->Release();
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;

    Interface** place() { return &pointer_; }
    Interface* operator->() const { return pointer_; }
    Interface* get() const { return pointer_; }

private:
    Interface* pointer_ = nullptr;
};

// Owns a BSTR.
class ComText
{
public:
    explicit ComText(const QString& text) : text_(SysAllocString(text.toStdWString().c_str())) {}
    ~ComText() { SysFreeString(text_); }
    ComText(const ComText&) = delete;
    ComText& operator=(const ComText&) = delete;

    operator BSTR() const { return text_; }

private:
    BSTR text_;
};

// Initialises COM for the calling thread. Results are ignored: queries also work on a thread that is already
// initialised and in a process whose security is already set.
class ComSession
{
public:
    ComSession()
    {
        CoInitializeEx(nullptr, 0);
        CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                             RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
    }
    ~ComSession() { CoUninitialize(); }
    ComSession(const ComSession&) = delete;
    ComSession& operator=(const ComSession&) = delete;
};

bool connectTo(const QString& nameSpace, ComPtr<IWbemServices>& services)
{
    ComPtr<IWbemLocator> locator;
    if (FAILED(CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                                reinterpret_cast<void**>(locator.place()))))
        return false;
    if (FAILED(locator->ConnectServer(ComText(nameSpace), nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                                      services.place())))
        return false;
    return SUCCEEDED(CoSetProxyBlanket(services.get(), RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                       RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr,
                                       EOAC_NONE));
}

// Numbers are read as 32 bits and truth values as 16 bits, regardless of the declared type.
QVariant fromComVariant(const VARIANT& value)
{
    switch (value.vt) {
    case VT_BSTR:
        return value.bstrVal == nullptr ? QString() : QString::fromWCharArray(value.bstrVal);
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE;
    case VT_I4:
    case VT_UI4:
        return static_cast<int>(value.lVal);
    case VT_I2:
    case VT_UI2:
        return static_cast<int>(value.iVal);
    case VT_UI1:
        return static_cast<int>(value.bVal);
    default:
        return QVariant();
    }
}

QVariant readProperty(IWbemClassObject* row, const QString& name)
{
    VARIANT value;
    VariantInit(&value);
    QVariant result;
    if (SUCCEEDED(row->Get(name.toStdWString().c_str(), 0, &value, nullptr, nullptr)))
        result = fromComVariant(value);
    VariantClear(&value);
    return result;
}

QVariantMap readRow(IWbemClassObject* row, const QStringList& properties)
{
    QVariantMap values;
    for (const QString& name : properties)
        values.insert(name, readProperty(row, name));
    return values;
}

std::vector<QVariantMap> readRows(IWbemServices* services, const QString& query,
                                  const QStringList& properties)
{
    std::vector<QVariantMap> rows;
    ComPtr<IEnumWbemClassObject> cursor;
    if (FAILED(services->ExecQuery(ComText(QStringLiteral("WQL")), ComText(query),
                                   WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr,
                                   cursor.place())))
        return rows;
    for (;;) {
        ComPtr<IWbemClassObject> row;
        ULONG count = 0;
        if (FAILED(cursor->Next(static_cast<LONG>(WBEM_INFINITE), 1, row.place(), &count)) || count == 0)
            return rows;
        rows.push_back(readRow(row.get(), properties));
    }
}

} // namespace

std::vector<QVariantMap> runWmiQuery(const QString& nameSpace, const QString& query,
                                     const QStringList& properties)
{
    // All COM objects must be released before COM is uninitialised.
    const ComSession session;
    ComPtr<IWbemServices> services;
    if (!connectTo(nameSpace, services))
        return {};
    return readRows(services.get(), query, properties);
}
