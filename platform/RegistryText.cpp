#include "platform/RegistryText.h"

QString registryText(const std::wstring& data)
{
    std::wstring text = data;
    if (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return QString::fromStdWString(text);
}
