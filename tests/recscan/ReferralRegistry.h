#pragma once

#include <QtCore/QByteArray>

#include <memory>

/// The registry branch that the product's installer writes, initially empty and private to this process.
/// On systems without a registry, the file in the working directory that replaces it.
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
