#pragma once

#include <QtCore/QByteArray>

#include <memory>

/// The branch of the registry that the product's installer writes, empty at first and this process's own.
/// Where there is no registry, the file in the working directory that stands in for it.
class ReferralRegistry
{
public:
    ReferralRegistry();
    ~ReferralRegistry();

    /// Sets the value of that name in the key of the referral number, or in one of that name below it.
    void set(const QByteArray& name, const QByteArray& text, const QByteArray& below = {});

private:
    struct Redirection;
    std::unique_ptr<Redirection> redirection_;
};
