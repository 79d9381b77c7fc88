#include "tests/recscan/ReferralRegistry.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace {

const std::string kKey = "SOFTWARE\\TARVEX\\ZOR\\PackParam";

} // namespace

// The machine's branch is redirected to a key of this process, so that concurrent tests and an installed
// product are not affected.
struct ReferralRegistry::Redirection
{
    Redirection()
    {
        path = L"Software\\AIBridgeTest" + std::to_wstring(GetCurrentProcessId());
        RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
        if (RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                            nullptr, &key, nullptr) != ERROR_SUCCESS ||
            RegOverridePredefKey(HKEY_LOCAL_MACHINE, key) != ERROR_SUCCESS)
            throw std::runtime_error("cannot redirect the registry");
    }
    ~Redirection()
    {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegCloseKey(key);
        RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
    }
    std::wstring path;
    HKEY key = nullptr;
};

ReferralRegistry::ReferralRegistry() : redirection_(std::make_unique<Redirection>()) {}
ReferralRegistry::~ReferralRegistry() = default;

void ReferralRegistry::set(const QByteArray& name, const QByteArray& text, const QByteArray& below)
{
    const std::string path = below.isEmpty() ? kKey : kKey + ("\\" + below.toStdString());
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_SET_VALUE,
                        nullptr, &key, nullptr) != ERROR_SUCCESS ||
        RegSetValueExA(key, name.constData(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.constData()),
                       static_cast<DWORD>(text.size() + 1)) != ERROR_SUCCESS)
        throw std::runtime_error("cannot write the registry");
    RegCloseKey(key);
}
