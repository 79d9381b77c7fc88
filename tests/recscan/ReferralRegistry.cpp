#include "tests/recscan/ReferralRegistry.h"

#include "tests/support/UniqueComment.h"

#include <QtCore/QFile>

#include <stdexcept>

namespace {

const char* const kKeyFile = "HKEY_LOCAL_MACHINE\\SOFTWARE\\TARVEX\\ZOR\\PackParam";

} // namespace

struct ReferralRegistry::Redirection
{
};

ReferralRegistry::ReferralRegistry() = default;
ReferralRegistry::~ReferralRegistry() = default;

void ReferralRegistry::set(const QByteArray& name, const QByteArray& text, const QByteArray& below)
{
    const QByteArray content =
        '[' + (below.isEmpty() ? "General" : below) + "]\n" + name + '=' + text + '\n' + uniqueComment();
    QFile file(QString::fromLatin1(kKeyFile));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("cannot write the registry's file");
}
